# SPDX-License-Identifier: Apache-2.0
# Configures and builds the host project with the tree, checks which files were built, and runs the host.
file(REMOVE_RECURSE "${BUILD}")
execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S ${HOST} -B ${BUILD} -DKV_SOURCE=${SOURCE}
        -DBUILD_TESTING=OFF -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0
    COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)

file(GLOB_RECURSE libraries RELATIVE "${BUILD}" "${BUILD}/*.so")
list(TRANSFORM libraries REPLACE ".*/" "")
list(SORT libraries)
if(NOT libraries STREQUAL "libKV3DViewer.so;libKVCoreCommon.so;libKVVelmoraFramework.so")
    message(SEND_ERROR "built libraries: ${libraries}")
endif()
file(GLOB_RECURSE programs "${BUILD}/*kvgamut" "${BUILD}/*test_*")
list(FILTER programs EXCLUDE REGEX "/CMakeFiles/")
if(programs)
    message(SEND_ERROR "built in addition to the libraries: ${programs}")
endif()

set(ENV{QT_QPA_PLATFORM} offscreen)
execute_process(COMMAND ${BUILD}/bin/host COMMAND_ERROR_IS_FATAL ANY)
