# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What ./run, ./test and tools/install share: the packages, how they are installed, how a preset is built. Sourced, from
# bash with `set -euo pipefail`; leaves the caller in the root of the repository.

cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." || exit

# Debian 12 packages, one list a purpose.
declare -A packages=(
  [build]="g++ cmake ninja-build ccache libicu-dev libsqlitecpp-dev libsqlite3-dev nlohmann-json3-dev libcli11-dev \
libboost-locale-dev gettext pkg-config libsystemd-dev tzdata"
  [window]="qt6-base-dev qt6-declarative-dev qt6-svg-dev qml6-module-qtquick qml6-module-qtqml-models \
qml6-module-qtqml-workerscript qml6-module-qtquick-templates qml6-module-qtquick-layouts qml6-module-qtquick-window \
qt6-declarative-dev-tools fonts-inter"
  [test]="qml6-module-qtqml libgtest-dev librapidcheck-dev dbus-daemon dbus-bin dunst xvfb systemd man-db \
desktop-file-utils appstream zsh fish"
  [package]="dpkg-dev file lintian"
  [try]="debootstrap"
  [lint]="clang-format clang-tidy"
  [bench]="libbenchmark-dev libical-dev kalarm xvfb dbus-daemon libxcb1-dev libxcb-damage0-dev"
  [fuzz]="clang libclang-rt-dev"
  [pictures]="pngquant fonts-noto-core fonts-noto-cjk"
)

# Compiled objects are kept in the person's ccache, or beside the build where there is no home folder.
if [[ -z ${CCACHE_DIR:-} && ! -w ${HOME:-} ]]; then export CCACHE_DIR="$PWD/build/ccache"; fi

say() { printf '\n==> %s\n' "$*" >&2; }

fail() {
  printf '\n%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# have COMMAND…: whether all of them are there.
have() {
  local command
  for command in "$@"; do command -v "$command" >/dev/null || return 1; done
}

# free_megabytes FOLDER
free_megabytes() { df -Pk "$1" 2>/dev/null | awk 'NR == 2 { print int($4 / 1024) }'; }

# need_space MEGABYTES FOLDER: ends the script when the disk is too full for what comes next.
need_space() {
  local free
  free=$(free_megabytes "$2")
  if ((free < $1)); then fail "the disk is too full: $2 has $free MB left, and about $1 MB are needed. Make room, then run $0 again."; fi
}

# missing_packages PACKAGE…: those that are not installed, one a line.
missing_packages() {
  local package
  for package in "$@"; do
    case $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true) in
      installed*) ;;
      *) echo "$package" ;;
    esac
  done
}

# apt_get ARGUMENTS…: apt-get as root, without questions, waiting for another package manager to end.
apt_get() {
  local -a root=()
  if ((EUID != 0)); then root=(sudo); fi
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C \
    apt-get -q -y -o DPkg::Lock::Timeout=120 -o Acquire::Retries=3 -o Dpkg::Use-Pty=0 "$@"
}

# update_lists: apt-get update, which neither waits for a lock nor fails without a network by itself. What goes wrong in
# a source that Pillora may not need is shown and passed over.
update_lists() {
  local answer
  for _ in {1..24}; do
    if answer=$(apt_get -o APT::Update::Error-Mode=any update 2>&1); then return 0; fi
    if [[ $answer != *"Could not get lock"* ]]; then break; fi
    echo "Another program is using the package lists; waiting." >&2
    sleep 5
  done
  grep -E '^(W|E|sudo): ' <<<"$answer" >&2 || echo "$answer" >&2
  [[ ! $answer =~ Could\ not|resolving|unreachable|timed\ out|sudoers|sudo:\ [a0-9] ]]
}

# ensure_packages PURPOSE…: installs what is missing of the lists of these purposes.
ensure_packages() {
  local purpose wanted="" missing
  for purpose in "$@"; do wanted+=" ${packages[$purpose]}"; done
  if ! have apt-get dpkg-query; then
    have cmake ninja ccache c++ ||
      fail "packages are installed by apt-get, which this system does not have. Install what its own package manager" \
        "calls these Debian packages, then run $0 again:$wanted"
    say "No apt-get here: going on with what is installed. Needed are, by their Debian names:$wanted"
    return
  fi
  # shellcheck disable=SC2086
  missing=$(missing_packages $wanted)
  if [[ -z $missing ]]; then return; fi
  missing=${missing//$'\n'/ }
  if ((EUID != 0)) && ! have sudo; then
    fail "these packages are missing: $missing. Only root can install them and there is no sudo. As root run" \
      "\"apt-get update && apt-get install --no-install-recommends $missing\", then run $0 again."
  fi
  need_space 700 /
  say "Installing Debian packages: $missing"
  update_lists || fail "the list of packages could not be brought up to date; apt-get says why above. Is the network" \
    "there, and may you use sudo? Then run $0 again."
  # shellcheck disable=SC2086
  apt_get install --no-install-recommends $missing ||
    fail "not all packages could be installed; apt-get says why above. The usual reasons: no network, a full disk" \
      "($(free_megabytes /) MB left on /), no right to use sudo, a system other than Debian 12. Then run $0 again."
}

# configure_preset PRESET: prepares build/PRESET.
configure_preset() {
  mkdir -p "build/$1" || fail "cannot write into $PWD/build."
  [[ -e build/$1/build.ninja ]] || need_space 500 build
  if ! cmake --preset "$1" >"build/$1/configure.log" 2>&1; then
    cat "build/$1/configure.log" >&2
    fail "CMake could not prepare the build; it says why above. If a library is missing or too old: Debian 12 is the" \
      "oldest system that has them all. If this folder was moved or copied: delete build/$1, then run $0 again."
  fi
}

# build_preset PRESET [TARGET...]: configures and builds build/PRESET, all of it or these targets; a second or two when
# nothing changed.
build_preset() {
  say "Building (preset $1, in build/$1)"
  configure_preset "$1"
  cmake --build --preset "$1" ${2:+--target "${@:2}"} ||
    fail "the build failed; the first error above says where ($(free_megabytes build) MB are left on the disk)."
}
