# SPDX-License-Identifier: Apache-2.0
# The comparison of exported symbols reports an additional name and a missing one.
cmake_minimum_required(VERSION 3.25)
file(STRINGS "${LIST}" names)
list(GET names 0 first)
set(more "${names}" "KVNobody::nothing()")
set(less "${names}")
list(REMOVE_AT less 0)

function(expect_difference names reported)
    list(JOIN names "\n" text)
    file(WRITE "${WORK}/list.txt" "${text}\n")
    execute_process(COMMAND ${CMAKE_COMMAND} -DNM=${NM} -DLIBRARY=${LIBRARY} "-DEXPECTED=${WORK}/list.txt" -P ${SCRIPT}
        RESULT_VARIABLE result ERROR_VARIABLE output)
    string(FIND "${output}" "${reported}" found)
    if(result EQUAL 0 OR found LESS 0)
        message(SEND_ERROR "not reported: ${reported} (${result})\n${output}")
    endif()
endfunction()

expect_difference("${more}" "- KVNobody::nothing()")
expect_difference("${less}" "+ ${first}")
