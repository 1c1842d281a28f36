# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the build BUILD_DIR into a folder of its own under WORK_DIR. The manual, the completion and the documents are
# there, and each of the broadcast files can be used. The program beside this file is built against the library; it is
# not run: linked with the real bcm2835 library, it would reach for a board's registers.
function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()
file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)

set(share ${WORK_DIR}/prefix/share)
set(completions ${share}/bash-completion/completions)
set(broadcasts default village faults)
list(TRANSFORM broadcasts PREPEND ${share}/doc/kelvo/examples/)
list(TRANSFORM broadcasts APPEND .json)
foreach(file ${share}/man/man1/kelvo.1 ${share}/man/man1/kelvo-sim.1 ${share}/man/man5/kelvo-scan.5
        ${completions}/kelvo ${completions}/kelvo-sim ${share}/doc/kelvo/README.md ${share}/doc/kelvo/CHANGELOG.md
        ${share}/doc/kelvo/LICENSE ${share}/doc/kelvo/docs/simulator.md ${broadcasts})
  if(NOT EXISTS ${file})
    message(FATAL_ERROR "Not installed: ${file}")
  endif()
endforeach()
set(ENV{KELVO_SIM_STATE} ${WORK_DIR}/board.json)
foreach(broadcast ${broadcasts})
  execute_process(COMMAND ${CMAKE_COMMAND} -E env KELVO_SIM_BROADCAST=${broadcast}
    ${EMULATOR} ${WORK_DIR}/prefix/bin/kelvo-sim -b D -f 33 OUTPUT_VARIABLE output)
  if(NOT output MATCHES "Tuned.")
    message(FATAL_ERROR "${broadcast}: ${output}")
  endif()
endforeach()

run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK_DIR}/build -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS} -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
