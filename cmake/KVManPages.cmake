# SPDX-License-Identifier: Apache-2.0
# kv_man_pages(TARGET COMMANDS names...)
#
# Generates man pages of a program and of each of its commands from the output of --help with help2man:
# man/<program>.1 and man/<program>-<command>.1 in the build folder. They are installed with the program. Without
# help2man there are no man pages.

find_program(HELP2MAN help2man)

function(kv_man_pages target)
    cmake_parse_arguments(ARG "" "" "COMMANDS" ${ARGN})
    if(NOT HELP2MAN OR CMAKE_CROSSCOMPILING)
        return() # the program must run to print its help
    endif()
    set(folder "${PROJECT_BINARY_DIR}/man")
    file(MAKE_DIRECTORY "${folder}")
    set(pages)
    foreach(command IN ITEMS "" ${ARG_COMMANDS})
        if(command STREQUAL "")
            set(page "${target}")
            set(help --help)
            set(name "${PROJECT_DESCRIPTION}")
        else()
            set(page "${target}-${command}")
            set(help "${command} --help")
            set(name "the command '${command}' of ${target}")
        endif()
        add_custom_command(OUTPUT "${folder}/${page}.1"
            COMMAND "${CMAKE_COMMAND}" -E env LC_ALL=C.UTF-8
                "${HELP2MAN}" --no-info --help-option "${help}" --name "${name}"
                --version-string "${page} ${PROJECT_VERSION}" --output "${folder}/${page}.1"
                "$<TARGET_FILE:${target}>"
            DEPENDS ${target} VERBATIM)
        list(APPEND pages "${folder}/${page}.1")
    endforeach()
    add_custom_target(${target}_man ALL DEPENDS ${pages})
    if(KV3DVIEWER_INSTALL)
        install(FILES ${pages} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT Tools)
    endif()
endfunction()
