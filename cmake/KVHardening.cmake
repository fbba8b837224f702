# SPDX-License-Identifier: Apache-2.0
# Options of the compiler and the linker with which a defect ends the program instead of giving an attacker
# control of it. tests/packaging checks the files that are built.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

option(KV3DVIEWER_HARDENING "Build with checks against the abuse of defects" ON)

set(kv_hardening_options -fstack-protector-strong)
foreach(option IN ITEMS -fstack-clash-protection -fcf-protection) # not on every processor
    string(MAKE_C_IDENTIFIER "KV3DVIEWER_HAS${option}" has)
    check_cxx_compiler_flag(${option} ${has})
    if(${has})
        list(APPEND kv_hardening_options ${option})
    endif()
endforeach()
if(NOT KV3DVIEWER_SANITIZE) # sanitizers have checks of their own in the same functions
    # needs optimisation
    list(APPEND kv_hardening_options
        $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=3>)
endif()
check_pie_supported(LANGUAGES CXX) # programs are linked as position-independent executables

function(kv_harden target)
    if(NOT KV3DVIEWER_HARDENING)
        return()
    endif()
    target_compile_options(${target} PRIVATE ${kv_hardening_options})
    target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
    target_link_options(${target} PRIVATE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
endfunction()
