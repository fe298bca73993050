# SPDX-License-Identifier: MIT
# Checks the agent's user unit with systemd-analyze, the agent standing where it was built. A key that systemd does not
# know only makes it speak, so silence is wanted as well as success.
file(READ "${UNIT}" text)
string(REGEX REPLACE "ExecStart=[^\n]*" "ExecStart=${AGENT}" text "${text}")
file(MAKE_DIRECTORY "${FOLDER}/runtime")
file(WRITE "${FOLDER}/pillora-agent.service" "${text}")
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env "XDG_RUNTIME_DIR=${FOLDER}/runtime" "${ANALYZE}" verify --user
          "${FOLDER}/pillora-agent.service"
  RESULT_VARIABLE result OUTPUT_VARIABLE said ERROR_VARIABLE said)
if(NOT result EQUAL 0 OR NOT said STREQUAL "")
  message(FATAL_ERROR "systemd-analyze verify: ${result}\n${said}")
endif()
