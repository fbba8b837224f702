# SPDX-License-Identifier: Apache-2.0
# Part of the package for hosts, both installed and with add_subdirectory.

set(KV3DViewer_CMAKE_DIR "${CMAKE_CURRENT_LIST_DIR}" CACHE INTERNAL "")
set(KV3DViewer_RESOURCES_DIR "${KV3DViewer_RESOURCES_DIR}" CACHE INTERNAL "")

# Copies the viewer's shaders and its image to ../Resources, relative to the folder of TARGET's binary. There they
# replace those that are compiled into the library. Every build of TARGET updates them.
#
# Works with the policies of CMake 3.16. There a custom command depends on each target of which it uses the folder,
# and TARGET depends on this command; so the folder is written to a file first.
function(kv3dviewer_place_resources target)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS "${KV3DViewer_RESOURCES_DIR}/*")
    set(name "${CMAKE_CURRENT_BINARY_DIR}/${target}_resources")
    file(GENERATE OUTPUT "${name}_$<CONFIG>.cmake" CONTENT
"set(FROM [==[${KV3DViewer_RESOURCES_DIR}]==])
set(TO [==[$<TARGET_FILE_DIR:${target}>/../Resources]==])
set(LOCK [==[${CMAKE_BINARY_DIR}/kv3dviewer_resources.lock]==])
")
    set(copy ${CMAKE_COMMAND} "-DPLACES=${name}_$<CONFIG>.cmake" -P "${KV3DViewer_CMAKE_DIR}/KV3DViewerCopyResources.cmake")
    set(comment "Placing the resources of KV3DViewer for ${target}")
    get_property(multi_config GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
    if(multi_config) # each configuration has its own folder, so one stamp is not enough
        add_custom_target(${target}_resources ALL COMMAND ${copy} COMMENT "${comment}" VERBATIM)
    else()
        add_custom_command(OUTPUT "${name}.stamp"
            COMMAND ${copy} COMMAND ${CMAKE_COMMAND} -E touch "${name}.stamp"
            DEPENDS ${files} "${KV3DViewer_CMAKE_DIR}/KV3DViewerCopyResources.cmake"
            COMMENT "${comment}" VERBATIM)
        add_custom_target(${target}_resources ALL DEPENDS "${name}.stamp")
    endif()
    add_dependencies(${target} ${target}_resources)
endfunction()
