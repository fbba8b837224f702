# SPDX-License-Identifier: Apache-2.0
# Compares the symbols that LIBRARY exports with the list in the file EXPECTED. With -DACCEPT=ON it writes the list.
#
# The list has sorted, demangled names. Instances of templates of the standard library and of Qt are left out, since
# they depend on the compiler, and so are symbols of the linker.
cmake_minimum_required(VERSION 3.25)
set(foreign "^(_init|_fini|_edata|_end|__bss_start|__(asan|tsan|ubsan|odr_asan|start_asan|stop_asan).*|([^(]* )?(std|__gnu_cxx|QtPrivate)::.*|Q[A-Z].*)$")

function(symbols variable)
    execute_process(COMMAND ${NM} -D --defined-only -p -C "${LIBRARY}"
        OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "[;[]|]" "_" output "${output}") # characters that are special in CMake lists
    string(REGEX REPLACE "[0-9a-f]+ [A-Za-z] ([^\n]*)\n" "\\1;" names "${output}")
    list(FILTER names EXCLUDE REGEX "${foreign}")
    list(FILTER names EXCLUDE REGEX "^$")
    list(REMOVE_DUPLICATES names) # constructors and destructors have several symbols
    list(SORT names)
    set(${variable} "${names}" PARENT_SCOPE)
endfunction()

symbols(present)
if(ACCEPT)
    list(JOIN present "\n" text)
    file(WRITE "${EXPECTED}" "${text}\n")
    return()
endif()

file(STRINGS "${EXPECTED}" expected)
set(added ${present})
list(REMOVE_ITEM added ${expected})
set(removed ${expected})
list(REMOVE_ITEM removed ${present})
if(NOT added AND NOT removed)
    return()
endif()

foreach(name IN LISTS removed)
    message("- ${name}")
endforeach()
foreach(name IN LISTS added)
    message("+ ${name}")
endforeach()
message(FATAL_ERROR "
The exported symbols of ${LIBRARY} differ from ${EXPECTED}.
A name with + that hosts should not see must be hidden: remove the export macro of its class.
If the interface changed on purpose:
  1. cmake --build <build folder> --target accept_symbols, and commit the changed list with the change;
  2. tell hosts in CHANGELOG.md;
  3. where a name with - or a changed meaning breaks built hosts, raise the version in CMakeLists.txt (the
     minor one before 1.0, later the major one): the SOVERSION is derived from it.
")
