# SPDX-License-Identifier: MIT
# The Debian package; see tools/package. The paths of the programs in the service files are those of the prefix that was
# configured, so this is for a build with the prefix /usr.
pillora_gzip("${CMAKE_CURRENT_SOURCE_DIR}/debian/changelog")
add_custom_target(pillora_debian ALL DEPENDS ${generated}/changelog.gz)
install(FILES ${generated}/changelog.gz debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES ${generated}/pilloractl.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions
  RENAME _pilloractl COMPONENT debian EXCLUDE_FROM_ALL)
# preinst links it into /etc/xdg/autostart: as a file of the package there it would outlive the package.
install(FILES ${generated}/org.pillora.Pillora.Agent.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/pillora/autostart
  COMPONENT debian EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL Unspecified debian)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)

set(CPACK_PACKAGE_NAME pillora)
set(CPACK_PACKAGE_VENDOR Pillora)
set(CPACK_PACKAGE_CONTACT "The Pillora authors <pillora@users.noreply.example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "know which medicine is due, and what you took")
set(CPACK_PACKAGE_DESCRIPTION "Pillora keeps medicines on a phone or a computer: what to take, when it is due,
and what was taken. It reminds at the minute and once an hour after that until
the day ends, in a window, in a terminal, and by a small agent in the
background. Everything stays on the device.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  "${CMAKE_CURRENT_SOURCE_DIR}/debian/preinst;${CMAKE_CURRENT_SOURCE_DIR}/debian/postrm")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# Libraries are found by dpkg-shlibdeps; QML modules are loaded by name.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(needed qml6-module-qtquick qml6-module-qtquick-templates qml6-module-qtquick-layouts qml6-module-qtqml-workerscript
  "default-dbus-session-bus | dbus-session-bus" tzdata)
list(JOIN needed ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
set(recommended "notification-daemon | gnome-shell | phosh | plasma-workspace" polkitd fprintd qt6-wayland fonts-inter
  xdg-utils)
list(JOIN recommended ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
# Suggested only: a desktop in a language has a typeface for it, and these are large.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "feedbackd, fonts-noto-core, fonts-noto-cjk")
include(CPack)
