# SPDX-License-Identifier: Apache-2.0
# Configures the host project HOST, which fetches the tree SOURCE, and checks that the tree adds its libraries to it
# and nothing else.
file(REMOVE_RECURSE "${BUILD}")
execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S ${HOST} -B ${BUILD} -DKV_SOURCE=${SOURCE} -DCMAKE_BUILD_TYPE=Debug
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "configuring failed:\n${output}")
endif()

# Fails unless the list that the host wrote to FILE is EXPECTED.
function(expect_list file expected)
    file(READ "${BUILD}/${file}" found)
    list(FILTER found EXCLUDE REGEX "^(Continuous|Experimental|Nightly|NightlyMemoryCheck)") # of include(CTest)
    if(NOT found STREQUAL expected)
        message(SEND_ERROR "${file}: ${found}\nexpected: ${expected}")
    endif()
endfunction()

expect_list(targets.txt
    "KV3DViewer;KV3DViewerObjects;KVCoreCommon;KVVelmoraFramework;KVVelmoraObjects;host;host_resources")
expect_list(tests.txt "host")
expect_list(changed.txt "") # variables of CMake

# Nothing is installed, and nothing is placed beside the host's files.
file(GLOB_RECURSE scripts "${BUILD}/*cmake_install.cmake")
foreach(script IN LISTS scripts)
    file(STRINGS "${script}" rules REGEX "file\\(INSTALL")
    if(rules)
        message(SEND_ERROR "${script} installs files: ${rules}")
    endif()
endforeach()
if(EXISTS "${BUILD}/bin" OR EXISTS "${BUILD}/Resources")
    message(SEND_ERROR "the tree puts files into the build folder of the host")
endif()
file(REMOVE_RECURSE "${BUILD}")
