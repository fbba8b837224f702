# SPDX-License-Identifier: Apache-2.0
# Shaders and the image of the plane in ../Resources, relative to the folder of the application's binary, replace
# those that are compiled into the library.

set(KV3DViewer_RESOURCES_DIR "${CMAKE_CURRENT_SOURCE_DIR}/resources")
include(KV3DViewerPlaceResources)

# Copies the resources to DESTINATION in every build in which they changed.
function(kv_stage_resources destination)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE "${KV3DViewer_RESOURCES_DIR}"
        "${KV3DViewer_RESOURCES_DIR}/Shaders/*" "${KV3DViewer_RESOURCES_DIR}/Images/*")
    set(staged)
    foreach(file IN LISTS files)
        add_custom_command(OUTPUT "${destination}/${file}"
            COMMAND ${CMAKE_COMMAND} -E copy "${KV3DViewer_RESOURCES_DIR}/${file}" "${destination}/${file}"
            DEPENDS "${KV3DViewer_RESOURCES_DIR}/${file}" VERBATIM)
        list(APPEND staged "${destination}/${file}")
    endforeach()
    add_custom_target(KV3DViewerResources ALL DEPENDS ${staged})
endfunction()
