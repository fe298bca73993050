# SPDX-License-Identifier: MIT
# One static library per room under src/. Every room is compiled with the same warnings and sees src/ as its root, so
# that an include names the room it comes from.

find_package(Threads REQUIRED)

add_library(pillora_options INTERFACE)
target_compile_options(pillora_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  # What GCC 12 believes to see once it inlines: uninitialised members of std::variant and std::optional, overlapping
  # copies in std::string's operator+ (its bug 105651).
  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release,RelWithDebInfo>>:-Wno-restrict>
  $<$<BOOL:${PILLORA_WERROR}>:-Werror>)
if(PILLORA_SANITIZE)
  target_compile_options(pillora_options INTERFACE
    -fsanitize=${PILLORA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(pillora_options INTERFACE -fsanitize=${PILLORA_SANITIZE})
endif()

# pillora_room(NAME SOURCES file… [ROOMS room…] [LIBRARIES target…])
#   ROOMS: rooms whose headers this one uses in its own headers or sources. LIBRARIES: foreign libraries, kept private.
function(pillora_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;ROOMS;LIBRARIES;PUBLIC_LIBRARIES" ${ARGN})
  add_library(pillora_${name} STATIC ${ROOM_SOURCES})
  target_include_directories(pillora_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  list(TRANSFORM ROOM_ROOMS PREPEND pillora_)
  target_link_libraries(pillora_${name}
    PUBLIC ${ROOM_ROOMS} ${ROOM_PUBLIC_LIBRARIES}
    PRIVATE pillora_options ${ROOM_LIBRARIES})
endfunction()

# pillora_test(NAME SOURCES file… ROOMS room… [LIBRARIES target…])
#   A GoogleTest program whose cases CTest knows one by one, labelled with their folder's name. The target FOLDER_tests
#   builds all programs of the folder.
function(pillora_test name)
  cmake_parse_arguments(TEST "" "TIMEOUT" "SOURCES;ROOMS;LIBRARIES" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  list(TRANSFORM TEST_ROOMS PREPEND pillora_)
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PRIVATE ${TEST_ROOMS} ${TEST_LIBRARIES} pillora_options GTest::gtest_main)
  # Compiling the tests takes longer than running them, several times so under the sanitizers.
  target_compile_options(${name} PRIVATE -O0)
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 120)
  endif()
  get_filename_component(folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
  if(NOT TARGET ${folder}_tests)
    add_custom_target(${folder}_tests)
  endif()
  add_dependencies(${folder}_tests ${name})
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${TEST_TIMEOUT} LABELS ${folder})
endfunction()
