# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the build BUILD_DIR into a folder of its own under WORK_DIR and checks that the manual, the completion and the
# documents are installed and that each of the broadcast files can be used. Builds the project in program/ against the
# library: its program for the board must refuse a machine that is not a Raspberry Pi, the one over the kernel a machine
# without the device, and the example must find the simulated board in the state that kelvo-sim left.
function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()
file(REMOVE_RECURSE ${WORK_DIR})
# Each component leaves a manifest in BUILD_DIR; without a component it has the name of the one that a user's
# `sudo cmake --install` leaves there, which only root can replace.
foreach(component kelvo kelvo-remote libsi468x-dev)
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix --component ${component})
endforeach()

set(share ${WORK_DIR}/prefix/share)
set(remote_service ${WORK_DIR}/prefix/lib/systemd/system/kelvo-remote.service)
set(completions ${share}/bash-completion/completions)
set(broadcasts default suburb house village faults)
list(TRANSFORM broadcasts PREPEND ${share}/doc/kelvo/broadcasts/)
list(TRANSFORM broadcasts APPEND .json)
foreach(file ${share}/man/man1/kelvo.1 ${share}/man/man1/kelvo-spidev.1 ${share}/man/man1/kelvo-sim.1
        ${share}/man/man1/kelvo-survey.1 ${share}/man/man1/kelvo-watch.1 ${share}/man/man1/kelvo-watch-sim.1
        ${share}/man/man5/kelvo-scan.5
        ${completions}/kelvo ${completions}/kelvo-spidev ${completions}/kelvo-sim ${completions}/kelvo-survey
        ${completions}/kelvo-watch ${completions}/kelvo-watch-sim
        ${share}/man/man1/kelvo-remote.1 ${share}/man/man1/kelvo-remote-sim.1
        ${completions}/kelvo-remote ${completions}/kelvo-remote-sim ${remote_service}
        ${share}/doc/kelvo/systemd/kelvo.service ${share}/doc/kelvo/README.md ${share}/doc/kelvo/CHANGELOG.md
        ${share}/doc/libsi468x-dev/error-codes.md ${share}/doc/kelvo/LICENSE ${share}/doc/kelvo/docs/simulator.md ${broadcasts}
        ${share}/doc/libsi468x-dev/error-codes.md)
  if(NOT EXISTS ${file})
    message(FATAL_ERROR "Not installed: ${file}")
  endif()
endforeach()
file(READ ${share}/doc/kelvo/systemd/kelvo.service service)
if(NOT service MATCHES "ExecStop=${WORK_DIR}/prefix/bin/kelvo-spidev -k")
  message(FATAL_ERROR "kelvo.service does not start the installed program")
endif()
file(READ ${remote_service} service)
if(NOT service MATCHES "ExecStart=${WORK_DIR}/prefix/bin/kelvo-remote ")
  message(FATAL_ERROR "kelvo-remote.service does not start the installed program")
endif()
set(ENV{KELVO_SIM_STATE} ${WORK_DIR}/board.json)
foreach(broadcast ${broadcasts})
  execute_process(COMMAND ${CMAKE_COMMAND} -E env KELVO_SIM_BROADCAST=${broadcast}
    ${EMULATOR} ${WORK_DIR}/prefix/bin/kelvo-sim -b D -f 33 OUTPUT_VARIABLE output ERROR_VARIABLE warnings)
  if(NOT output MATCHES "Tuned.")
    message(FATAL_ERROR "${broadcast}: ${output}")
  endif()
endforeach()

run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/program -B ${WORK_DIR}/build -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix
    -DEXAMPLES=${share}/doc/libsi468x-dev/examples -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS} -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)

# user PROGRAM STATUS TEXT: runs a program of the other project and checks its exit status and output.
function(user program status text)
  execute_process(COMMAND ${EMULATOR} ${program} RESULT_VARIABLE found OUTPUT_VARIABLE output ERROR_VARIABLE output
    WORKING_DIRECTORY ${WORK_DIR})
  if(NOT found EQUAL status OR NOT output MATCHES "${text}")
    message(FATAL_ERROR "${program}: exit status ${found}: ${output}")
  endif()
endfunction()
user(${WORK_DIR}/build/user-sim 0 "Stadtbilder")  # the board that kelvo-sim left
if(NOT EXISTS /proc/device-tree)
  user(${WORK_DIR}/build/user 1 "^user: /proc/device-tree/compatible cannot be read")
endif()
if(NOT EXISTS /dev/spidev0.0)
  user(${WORK_DIR}/build/user-spidev 1 "^user-spidev: /dev/spidev0.0: No such file or directory")
endif()

# The same with pkg-config, where that is installed.
find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG AND NOT TOOLCHAIN)
  file(GLOB pkgconfig_dir ${WORK_DIR}/prefix/lib/pkgconfig ${WORK_DIR}/prefix/lib/*/pkgconfig)
  set(ENV{PKG_CONFIG_PATH} ${pkgconfig_dir})
  foreach(package libsi468x libsi468x-spidev libsi468x-simulator)
    execute_process(COMMAND ${PKG_CONFIG} --cflags --libs ${package} OUTPUT_VARIABLE flags COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(flags UNIX_COMMAND "${CXX_FLAGS} ${flags}")
    run(${CXX} -std=c++17 ${share}/doc/libsi468x-dev/examples/component_info.cpp -o ${WORK_DIR}/${package} ${flags})
  endforeach()
  user(${WORK_DIR}/libsi468x-simulator 0 "Stadtbilder")
endif()
