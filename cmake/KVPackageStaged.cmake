# SPDX-License-Identifier: Apache-2.0
# Run by CPack on the staged files.

# Libraries in the folders of the system are found without run paths.
set(usr "${CPACK_TEMPORARY_DIRECTORY}/*/usr")
file(GLOB_RECURSE binaries "${usr}/lib/*.so.*" "${usr}/lib/kv3dviewer/bin/*"
    "${usr}/lib/python3/*.so")
foreach(binary IN LISTS binaries)
    if(NOT IS_SYMLINK "${binary}")
        file(RPATH_REMOVE FILE "${binary}")
    endif()
endforeach()

# Debian policy: man pages are compressed.
file(GLOB_RECURSE pages "${usr}/share/man/*.1")
if(pages)
    execute_process(COMMAND gzip --best --no-name ${pages} COMMAND_ERROR_IS_FATAL ANY)
endif()
