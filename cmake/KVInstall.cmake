# SPDX-License-Identifier: Apache-2.0
# Rules of `cmake --install`: libraries, headers, packages for CMake and pkg-config, resources.
#
#   <prefix>/<libdir>/libKV3DViewer.so.0.1 ...          the three libraries       (component Library)
#   <prefix>/share/kv3dviewer-0.1/Resources/            shaders and plane image   (component Library)
#   <prefix>/<libdir>/libKV3DViewerWidgets.so.0.1       KVGamutGLWidget           (component Widgets)
#   <prefix>/<libdir>/libKV3DViewerQuick.so.0.1         KVGamutQuickView          (component Quick)
#   <prefix>/<libdir>/qt6/qml/KV3DViewer/Quick/         the module for QML        (component Qml)
#   <prefix>/include/KV3DViewer/                        headers                   (component Development)
#   <prefix>/<libdir>/{cmake/KV3DViewer,pkgconfig}/     packages                  (component Development)
#   <prefix>/lib/kv3dviewer/bin/kvgamut                 the program               (component Tools)
#   <prefix>/lib/kv3dviewer/Resources                   link to the resources     (component Tools)
#   <prefix>/bin/kvgamut                                link to the program       (component Tools)
#
# The viewer looks for changed shaders in ../Resources, relative to the folder of the application's binary. For a
# program in <prefix>/bin that would be <prefix>/Resources, which is not a standard folder for data. So the program
# has its own folder, with relative links that remain valid when the tree is moved. The resources belong to one
# version of the library's interface, so their path contains it, like the name of the library.

option(KV3DVIEWER_INSTALL "Install the libraries, the program and what hosts build with" "${PROJECT_IS_TOP_LEVEL}")
option(KV3DVIEWER_PACKAGES "Configure the target \"packages\", which makes Debian packages" OFF)

if(KV3DVIEWER_PACKAGES AND NOT DEFINED CMAKE_INSTALL_LIBDIR) # the folder of libraries in Debian
    set(CMAKE_INSTALL_LIBDIR "lib/${CMAKE_LIBRARY_ARCHITECTURE}" CACHE PATH "Folder of the libraries")
endif()
if(KV3DVIEWER_INSTALL) # a host that installs nothing of this tree keeps its own variables
    include(GNUInstallDirs)
    include(CMakePackageConfigHelpers)
endif()

# Until 1.0 every minor version may change the interface.
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(KV3DVIEWER_SOVERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
    set(KV3DVIEWER_COMPATIBILITY SameMinorVersion)
else()
    set(KV3DVIEWER_SOVERSION "${PROJECT_VERSION_MAJOR}")
    set(KV3DVIEWER_COMPATIBILITY SameMajorVersion)
endif()

set(KV3DVIEWER_INSTALL_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/KV3DViewer")
set(KV3DVIEWER_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/KV3DViewer")
set(KV3DVIEWER_INSTALL_RESOURCESDIR "${CMAKE_INSTALL_DATAROOTDIR}/kv3dviewer-${KV3DVIEWER_SOVERSION}/Resources")
set(KV3DVIEWER_INSTALL_PROGRAMDIR "lib/kv3dviewer")
set(kv_templates "${CMAKE_CURRENT_LIST_DIR}")

# The relative path from the installed folder FROM to the installed folder TO, for links and run paths.
function(kv_relative_install_path variable from to)
    cmake_path(ABSOLUTE_PATH from BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" NORMALIZE)
    cmake_path(ABSOLUTE_PATH to BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" NORMALIZE)
    cmake_path(RELATIVE_PATH to BASE_DIRECTORY "${from}")
    string(REGEX REPLACE "/$" "" to "${to}")
    set(${variable} "${to}" PARENT_SCOPE)
endfunction()

# The run path is the same in the build folder as installed. Otherwise CMake reserves room for the other one with
# empty elements, and an empty element means the current folder: the program would load libraries from there.
# A host that adds this tree may have its libraries in several folders, and keeps CMake's run paths.
function(kv_use_install_rpath target)
    if(PROJECT_IS_TOP_LEVEL)
        set_target_properties(${target} PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
    endif()
endfunction()

# kv_shared_library(TARGET COMPONENT name): a library with a version. Hosts link KV3DViewer::COMPONENT, with
# add_subdirectory as well as installed.
function(kv_shared_library target)
    cmake_parse_arguments(ARG "" "COMPONENT" "" ${ARGN})
    add_library(KV3DViewer::${ARG_COMPONENT} ALIAS ${target})
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${ARG_COMPONENT}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${KV3DVIEWER_SOVERSION}
        INSTALL_RPATH "$ORIGIN")
    kv_use_install_rpath(${target})
    if(KV3DVIEWER_INSTALL)
        target_include_directories(${target} INTERFACE "$<INSTALL_INTERFACE:${KV3DVIEWER_INSTALL_INCLUDEDIR}>")
    endif()
endfunction()

# kv_install_library(TARGET COMPONENT name DESCRIPTION text HEADERS files... [HEADERS_IN folder]
#                    REQUIRES modules... [INSTALL_COMPONENT name])
#
# INSTALL_COMPONENT: of the library file; "Library" by default.
# REQUIRES lists the pkg-config modules whose headers are included by public headers. Libraries that a shared
# library links itself are not needed by hosts.
function(kv_install_library target)
    cmake_parse_arguments(ARG "" "COMPONENT;DESCRIPTION;HEADERS_IN;INSTALL_COMPONENT" "HEADERS;REQUIRES" ${ARGN})
    if(NOT KV3DVIEWER_INSTALL)
        return()
    endif()
    if(NOT ARG_INSTALL_COMPONENT)
        set(ARG_INSTALL_COMPONENT Library)
    endif()
    install(TARGETS ${target} EXPORT KV3DViewer${ARG_COMPONENT}Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        COMPONENT ${ARG_INSTALL_COMPONENT} NAMELINK_COMPONENT Development)
    install(EXPORT KV3DViewer${ARG_COMPONENT}Targets NAMESPACE KV3DViewer::
        DESTINATION "${KV3DVIEWER_INSTALL_CMAKEDIR}" COMPONENT Development)
    install(FILES ${ARG_HEADERS}
        DESTINATION "${KV3DVIEWER_INSTALL_INCLUDEDIR}/${ARG_HEADERS_IN}" COMPONENT Development)
    kv_install_pkgconfig(${target} "${ARG_DESCRIPTION}" "${ARG_REQUIRES}")
endfunction()

function(kv_install_pkgconfig module description requires)
    set(pkgconfigdir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
    kv_relative_install_path(prefix "${pkgconfigdir}" .)
    list(JOIN requires ", " requires)
    configure_file("${kv_templates}/module.pc.in" "${PROJECT_BINARY_DIR}/install/${module}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/install/${module}.pc"
        DESTINATION "${pkgconfigdir}" COMPONENT Development)
endfunction()

# The package for CMake, and the resources, which all hosts share.
function(kv_install_package)
    if(NOT KV3DVIEWER_INSTALL)
        return()
    endif()
    set(package "${PROJECT_BINARY_DIR}/install/KV3DViewer")
    configure_package_config_file("${kv_templates}/KV3DViewerConfig.cmake.in" "${package}Config.cmake"
        INSTALL_DESTINATION "${KV3DVIEWER_INSTALL_CMAKEDIR}" PATH_VARS KV3DVIEWER_INSTALL_RESOURCESDIR)
    write_basic_package_version_file("${package}ConfigVersion.cmake"
        VERSION ${PROJECT_VERSION} COMPATIBILITY ${KV3DVIEWER_COMPATIBILITY})
    install(FILES "${package}Config.cmake" "${package}ConfigVersion.cmake"
            "${kv_templates}/KV3DViewerPlaceResources.cmake" "${kv_templates}/KV3DViewerCopyResources.cmake"
        DESTINATION "${KV3DVIEWER_INSTALL_CMAKEDIR}" COMPONENT Development)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/"
        DESTINATION "${KV3DVIEWER_INSTALL_RESOURCESDIR}" COMPONENT Library)
endfunction()

# kv_install_program(TARGET): installs it in its own folder beside the resources, with a link in bin/.
function(kv_install_program target)
    if(NOT KV3DVIEWER_INSTALL)
        return()
    endif()
    set(bindir "${KV3DVIEWER_INSTALL_PROGRAMDIR}/bin")
    kv_relative_install_path(libraries "${bindir}" "${CMAKE_INSTALL_LIBDIR}")
    set_target_properties(${target} PROPERTIES
        INSTALL_RPATH "$ORIGIN/../lib;$ORIGIN/${libraries}") # in the build folder; installed
    kv_use_install_rpath(${target})
    install(TARGETS ${target} RUNTIME DESTINATION "${bindir}" COMPONENT Tools)
    kv_install_link("${KV3DVIEWER_INSTALL_RESOURCESDIR}" "${KV3DVIEWER_INSTALL_PROGRAMDIR}" Resources)
    kv_install_link("${bindir}/${target}" "${CMAKE_INSTALL_BINDIR}" ${target})
endfunction()

# A relative link NAME in the installed folder FOLDER to the installed file or folder TO. The link is created in
# the build folder, where it is dangling.
function(kv_install_link to folder name)
    kv_relative_install_path(target "${folder}" "${to}")
    set(links "${PROJECT_BINARY_DIR}/install/links")
    file(MAKE_DIRECTORY "${links}")
    file(CREATE_LINK "${target}" "${links}/${name}" SYMBOLIC)
    install(FILES "${links}/${name}" DESTINATION "${folder}" COMPONENT Tools)
endfunction()
