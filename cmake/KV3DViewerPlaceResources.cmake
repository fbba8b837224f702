# SPDX-License-Identifier: Apache-2.0
# Part of the package for hosts, both installed and with add_subdirectory.

set(KV3DViewer_CMAKE_DIR "${CMAKE_CURRENT_LIST_DIR}" CACHE INTERNAL "")
set(KV3DViewer_RESOURCES_DIR "${KV3DViewer_RESOURCES_DIR}" CACHE INTERNAL "")

# Copies the viewer's shaders and its image to ../Resources, relative to the folder of TARGET's binary. There they
# replace those that are compiled into the library. Every build of TARGET updates them.
function(kv3dviewer_place_resources target)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS "${KV3DViewer_RESOURCES_DIR}/*")
    set(stamp "${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.stamp")
    add_custom_command(OUTPUT "${stamp}"
        COMMAND ${CMAKE_COMMAND} "-DFROM=${KV3DViewer_RESOURCES_DIR}"
            "-DTO=$<TARGET_FILE_DIR:${target}>/../Resources" "-DLOCK=${CMAKE_BINARY_DIR}/kv3dviewer_resources.lock"
            -P "${KV3DViewer_CMAKE_DIR}/KV3DViewerCopyResources.cmake"
        COMMAND ${CMAKE_COMMAND} -E touch "${stamp}"
        DEPENDS ${files} "${KV3DViewer_CMAKE_DIR}/KV3DViewerCopyResources.cmake"
        COMMENT "Placing the resources of KV3DViewer for ${target}" VERBATIM)
    add_custom_target(${target}_resources ALL DEPENDS "${stamp}")
    add_dependencies(${target} ${target}_resources)
endfunction()
