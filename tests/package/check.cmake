# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the build BUILD_DIR into a folder of its own under WORK_DIR and builds the program beside this file there.
# It is not run: linked with the real library, it would reach for a board's registers.
function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()
file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK_DIR}/build -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS} -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
