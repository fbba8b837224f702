# SPDX-License-Identifier: Apache-2.0
# Settings that every target of the tree shares: language level, warnings, Qt strictness, sanitizers, precompiled
# headers, and units.

function(kv_target_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS
        QT_NO_CAST_FROM_ASCII
        QT_NO_CAST_TO_ASCII
        QT_NO_FOREACH)
    if(KV3DVIEWER_STRICT)
        target_compile_options(${target} PRIVATE
            -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
        target_compile_definitions(${target} PRIVATE QT_FORCE_ASSERTS)
    endif()
    kv_harden(${target})
    if(KV3DVIEWER_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${KV3DVIEWER_SANITIZE}
            -fno-omit-frame-pointer -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${KV3DVIEWER_SANITIZE})
    endif()
endfunction()

# kv_precompile(TARGET headers ...): reads these headers, and common ones of Qt and the standard library, once instead
# of for each source. Only a few: all headers of Qt would take as long to load as those that a source needs. Sources
# still include what they use (tests/tree looks for what is missing): the presets "release" and "fuzz", the lanes tidy
# and clazy, and hosts that add this tree compile without precompiled headers.
function(kv_precompile target)
    if(PROJECT_IS_TOP_LEVEL)
        target_precompile_headers(${target} PRIVATE
            <algorithm> <cmath> <functional> <memory> <optional> <span> <string> <vector>
            <QtCore/QHash> <QtCore/QList> <QtCore/QObject> <QtCore/QString> <QtCore/QVariant> ${ARGN})
    endif()
endfunction()

# kv_unity(TARGET [MAX COUNT]): with KV3DVIEWER_UNITY, the sources of each folder are compiled together, which takes half
# the time. So a name in an anonymous namespace is used once in a folder. Sources named *_posix.cpp and *_windows.cpp are
# compiled alone, because headers of the system define many names. With MAX, at most COUNT sources of the target are
# compiled together, in whatever folders they are. To be called after the target's last source was added.
function(kv_unity target)
    cmake_parse_arguments(ARG "" "MAX" "" ${ARGN})
    if(NOT KV3DVIEWER_UNITY)
        return()
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU") # names of other sources are not shadowed
        target_compile_options(${target} PRIVATE -Wno-subobject-linkage -Wno-shadow
            $<$<BOOL:${KV3DVIEWER_STRICT}>:-Wshadow=local>)
    endif()
    if(ARG_MAX)
        set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE BATCH UNITY_BUILD_BATCH_SIZE ${ARG_MAX})
        return()
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        if(source MATCHES [[\.cpp$]] AND NOT source MATCHES [[(posix|windows)\.cpp$]])
            get_filename_component(folder "${source}" DIRECTORY)
            get_filename_component(folder "${folder}" NAME)
            set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${target}_${folder}")
        endif()
    endforeach()
endfunction()
