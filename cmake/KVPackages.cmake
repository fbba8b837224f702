# SPDX-License-Identifier: Apache-2.0
# Debian packages, by CPack:
#   cmake --preset package && cmake --build --preset package
#
#   libkv3dviewer0.1     the three libraries and the resources
#   libkv3dviewer-dev    headers, CMake and pkg-config packages
#   kvgamut              the program
#   python3-kvgamut      the Python module, with KV3DVIEWER_PYTHON

set(library_package "libkv3dviewer${KV3DVIEWER_SOVERSION}")
set(development_package "libkv3dviewer-dev")
set(tools_package "kvgamut")
set(python_package "python3-kvgamut")

# --- Licence and changelogs ----------------------------------------------------------------------------------
set(debian_version "${PROJECT_VERSION}-1")
file(STRINGS "${PROJECT_SOURCE_DIR}/packaging/debian/changelog" head LIMIT_COUNT 1)
if(NOT head MATCHES "\\(${debian_version}\\)")
    message(FATAL_ERROR "packaging/debian/changelog has no entry for ${debian_version}, but: ${head}")
endif()

function(kv_package_documents component package)
    set(folder "${PROJECT_BINARY_DIR}/install/${package}")
    file(MAKE_DIRECTORY "${folder}")
    foreach(file IN ITEMS debian/changelog=changelog.Debian.gz ../CHANGELOG.md=changelog.gz)
        string(REGEX MATCH "^(.*)=(.*)$" file "${file}")
        execute_process(COMMAND gzip --best --no-name --stdout "${PROJECT_SOURCE_DIR}/packaging/${CMAKE_MATCH_1}"
            OUTPUT_FILE "${folder}/${CMAKE_MATCH_2}" COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
    install(FILES "${PROJECT_SOURCE_DIR}/packaging/debian/copyright"
            "${folder}/changelog.Debian.gz" "${folder}/changelog.gz"
        DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}" COMPONENT ${component})
endfunction()

kv_package_documents(Library ${library_package})
install(DIRECTORY "${PROJECT_SOURCE_DIR}/LICENSES"
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${library_package}" COMPONENT Library)
kv_package_documents(Development ${development_package})
kv_package_documents(Tools ${tools_package})

# --- All packages ----------------------------------------------------------------------------------------
set(KV3DVIEWER_PACKAGE_CONTACT "KV3DViewer maintainers <maintainers@kv3dviewer.invalid>" CACHE STRING
    "The maintainer that the packages name")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kv3dviewer)
set(CPACK_PACKAGE_CONTACT "${KV3DVIEWER_PACKAGE_CONTACT}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/KVPackageStaged.cmake")
set(CPACK_COMPONENTS_ALL Library Development Tools)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own, in the first line of its description
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# --- The libraries -----------------------------------------------------------------------------------------
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "interactive 3D view of colour gamuts for Qt 6 applications
KV3DViewer shows the gamuts of ICC profiles as surfaces in CIE L*a*b*: lit,
translucent or as wireframes, with their outlines, primaries and sections,
among markers, points and segments of the application.

This package holds the viewer, its colour engine and the files that the
viewer reads at run time.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/debian/triggers")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
# the font that replaces Arial on the axes; Qt's plug-in for Wayland
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS "fonts-liberation, qt6-wayland")

# --- Development files -----------------------------------------------------------------------------
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${development_package})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "interactive 3D view of colour gamuts for Qt 6 (development files)
KV3DViewer shows the gamuts of ICC profiles as surfaces in CIE L*a*b*, in a
window that an application embeds.

This package holds the headers, and what CMake and pkg-config need to find
the library.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${library_package} (= ${debian_version}), qt6-base-dev (>= 6.4)")

# --- The program ---------------------------------------------------------------------------------------------
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ${tools_package})
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "gamuts of ICC profiles: pictures, numbers and a window
kvgamut draws the gamuts of ICC profiles as surfaces in CIE L*a*b*, measures
and compares them, on the command line and in a window.

Pictures need no display.")
# libvips is loaded when the first photo is read, and so is not found among the linked libraries
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${library_package} (= ${debian_version}), libvips42 | libvips42t64")
# a virtual display where drivers cannot draw without one; translations of Qt's own texts
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "libegl-mesa0, xvfb, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")

# --- The Python module ---------------------------------------------------------------------------------------
if(TARGET kvgamut_python)
    kv_package_documents(Python ${python_package})
    list(APPEND CPACK_COMPONENTS_ALL Python)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME ${python_package})
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
    set(CPACK_DEBIAN_PYTHON_DESCRIPTION "gamuts of ICC profiles, for Python
The module kvgamut computes the gamuts of ICC profiles and measured colours,
their volumes and comparisons, and draws them; in notebooks, too.

Colours are NumPy arrays. Pictures need no display.")
    # compile and remove the .pyc files
    set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
        "${PROJECT_SOURCE_DIR}/packaging/debian/python/postinst" "${PROJECT_SOURCE_DIR}/packaging/debian/python/prerm")
    # the module is compiled for one version of Python; the program draws the pictures
    math(EXPR next "${KV3DVIEWER_PYTHON_MINOR} + 1")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
        "kvgamut (= ${debian_version}), python3 (>= 3.${KV3DVIEWER_PYTHON_MINOR}), python3 (<< 3.${next}), python3-numpy")
endif()

include(CPack)
