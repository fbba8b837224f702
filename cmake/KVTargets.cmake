# SPDX-License-Identifier: Apache-2.0
# Settings that every target of the tree shares: language level, warnings, Qt strictness, sanitizers, and precompiled
# headers.

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
