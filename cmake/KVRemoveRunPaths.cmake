# SPDX-License-Identifier: Apache-2.0
# Run by debian/rules on the staged files of all packages: debian/<package> in the folder ROOT. Libraries in the folders
# of the system are found without run paths.
file(GLOB_RECURSE binaries "${ROOT}/*/usr/lib/*.so.*" "${ROOT}/*/usr/lib/kv3dviewer/bin/*")
foreach(binary IN LISTS binaries)
    if(NOT IS_SYMLINK "${binary}")
        file(RPATH_REMOVE FILE "${binary}")
    endif()
endforeach()
