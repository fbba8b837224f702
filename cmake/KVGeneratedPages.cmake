# SPDX-License-Identifier: Apache-2.0
# kv_generated_pages(TARGET COMMANDS names...)
#
# The program prints the man pages of itself and of each of its commands, and the completions for bash, zsh and fish,
# from its own options. They are made in man/ and completions/ of the build folder and installed with the program.

function(kv_generated_pages target)
    cmake_parse_arguments(ARG "" "" "COMMANDS" ${ARGN})
    if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
        message(FATAL_ERROR "Man pages and completions are printed by the program, which this machine cannot run. "
            "Please set CMAKE_CROSSCOMPILING_EMULATOR, such as qemu-aarch64-static.")
    endif()
    set(pages)
    foreach(command IN ITEMS "" ${ARG_COMMANDS})
        string(REGEX REPLACE "-$" "" page "${target}-${command}")
        kv_generated_page(${target} man/${page}.1 man ${command})
        list(APPEND pages "${PROJECT_BINARY_DIR}/man/${page}.1")
    endforeach()
    set(bash completions/${target})
    set(zsh completions/_${target})
    set(fish completions/${target}.fish)
    foreach(shell IN ITEMS bash zsh fish)
        kv_generated_page(${target} ${${shell}} ${shell})
        set(${shell} "${PROJECT_BINARY_DIR}/${${shell}}")
    endforeach()
    add_custom_target(${target}_pages ALL DEPENDS ${pages} ${bash} ${zsh} ${fish})
    if(NOT KV3DVIEWER_INSTALL)
        return()
    endif()
    install(FILES ${pages} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT Tools)
    install(FILES ${bash} DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions" COMPONENT Tools)
    install(FILES ${zsh} COMPONENT Tools
        DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/zsh/$<IF:$<BOOL:${KV3DVIEWER_PACKAGES}>,vendor-completions,site-functions>")
    install(FILES ${fish} DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/fish/vendor_completions.d" COMPONENT Tools)
endfunction()

# kv_generated_page(TARGET FILE words...): what the program prints for --generate with these words.
function(kv_generated_page target file)
    get_filename_component(folder "${PROJECT_BINARY_DIR}/${file}" DIRECTORY)
    file(MAKE_DIRECTORY "${folder}")
    add_custom_command(OUTPUT "${PROJECT_BINARY_DIR}/${file}"
        COMMAND ${target} --generate ${ARGN} > "${PROJECT_BINARY_DIR}/${file}"
        DEPENDS ${target} VERBATIM)
endfunction()
