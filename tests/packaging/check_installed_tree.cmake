# SPDX-License-Identifier: Apache-2.0
# Installs BUILD_DIR to a folder below WORK, moves the installed tree and uses it: the program, a host that is built
# with CMake and installed, and a host that is built with pkg-config. LIBDIR is the folder of the libraries,
# relative to the prefix.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE "${WORK}")
set(PREFIX "${WORK}/moved")
set(ENV{LC_ALL} C.UTF-8)

function(run what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${what} failed (${result}):\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# Fails unless PICTURE shows something. The file of a picture with a single colour is very small.
function(expect_picture picture)
    if(EXISTS "${picture}")
        file(SIZE "${picture}" size)
    endif()
    if(NOT size GREATER 10000)
        message(FATAL_ERROR "${picture} shows nothing (${size} bytes)")
    endif()
endfunction()

# --- Installed with DESTDIR, then moved: no file may contain the path of installation -------------------
set(ENV{DESTDIR} "${WORK}/stage")
run("staging" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix /opt/kv)
unset(ENV{DESTDIR})
file(RENAME "${WORK}/stage/opt/kv" "${PREFIX}")
file(GLOB left LIST_DIRECTORIES true "${WORK}/stage/*" "${WORK}/stage/opt/*")
if(NOT left STREQUAL "${WORK}/stage/opt")
    message(FATAL_ERROR "installed outside of the prefix: ${left}")
endif()
foreach(file IN ITEMS bin/kvgamut lib/kv3dviewer/Resources/Shaders/simple.vert
        include/KV3DViewer/KVGamut3DViewer.h include/KV3DViewer/KVGamutView.h
        include/KV3DViewer/KVGamutGLWidget.h include/KV3DViewer/KVGamutQuickView.h
        ${LIBDIR}/qt6/qml/KV3DViewer/Quick/qmldir
        include/KV3DViewer/KVGamutCanvas.h include/KV3DViewer/KVViewValues.h
        include/KV3DViewer/platform/KVVelmoraFramework.h include/KV3DViewer/platform/KVProblem.h
        share/man/man1/kvgamut.1 share/man/man1/kvgamut-render.1
        share/applications/kvgamut.desktop share/icons/hicolor/scalable/apps/kvgamut.svg
        share/mime/packages/kvgamut.xml share/metainfo/org.kv3dviewer.kvgamut.metainfo.xml
        share/bash-completion/completions/kvgamut share/zsh/vendor-completions/_kvgamut
        share/fish/vendor_completions.d/kvgamut.fish)
    if(NOT EXISTS "${PREFIX}/${file}")
        message(FATAL_ERROR "not installed: ${file}")
    endif()
endforeach()
file(GLOB licences "${PREFIX}/share/doc/*/LICENSES/README.md" "${PREFIX}/share/doc/*/LICENSES/BSD-3-Clause-CLI11.txt")
list(LENGTH licences count)
if(NOT count EQUAL 2)
    message(FATAL_ERROR "licences are not installed: ${licences}")
endif()
file(GLOB_RECURSE texts "${PREFIX}/*.cmake" "${PREFIX}/*.pc")
foreach(text IN LISTS texts)
    file(STRINGS "${text}" lines REGEX "/opt/kv|${BUILD_DIR}|${SOURCE}")
    if(lines)
        message(FATAL_ERROR "${text} names a folder of the build: ${lines}")
    endif()
endforeach()

# --- The module for QML finds the libraries where it is installed -----------------------------------------
file(GLOB_RECURSE modules "${PREFIX}/*/libKV3DViewerQuickPlugin.so")
run("the libraries of the QML module" ldd ${modules})
if(NOT output MATCHES "libKV3DViewerQuick[^\n]*=> ${PREFIX}" OR output MATCHES "not found")
    message(FATAL_ERROR "the libraries of the QML module: ${output}")
endif()

# --- Files for desktops --------------------------------------------------------------------------------
run("the desktop entry" ${DESKTOP_FILE_VALIDATE} "${PREFIX}/share/applications/kvgamut.desktop")
if(output)
    message(FATAL_ERROR "the desktop entry: ${output}")
endif()
# There is no page in the web to name. Newer versions ask for one, and let it be excused. A version does not
# accept excuses for what it does not ask for.
set(description "${PREFIX}/share/metainfo/org.kv3dviewer.kvgamut.metainfo.xml")
execute_process(COMMAND ${APPSTREAMCLI} validate --no-net --pedantic "${description}" OUTPUT_VARIABLE issues
    ERROR_VARIABLE issues)
set(excused "")
foreach(tag IN ITEMS url-homepage-missing developer-name-tag-deprecated developer-info-missing)
    if(issues MATCHES "${tag}")
        list(APPEND excused "${tag}=info")
    endif()
endforeach()
if(excused)
    list(JOIN excused "," excused)
    set(excused "--override=${excused}")
endif()
run("the description for software centres" ${APPSTREAMCLI} validate --no-net --pedantic ${excused}
    "${description}")
file(READ "${PREFIX}/share/applications/kvgamut.desktop" entry)
file(READ "${PREFIX}/share/mime/packages/kvgamut.xml" types)
string(REGEX MATCHALL "application/[a-z.-]+" opened "${entry}")
foreach(type IN LISTS opened)
    if(NOT types MATCHES "mime-type type=\"${type}\"")
        message(FATAL_ERROR "the desktop entry names the type ${type}, which is not declared")
    endif()
endforeach()

# --- The program -----------------------------------------------------------------------------------
run("kvgamut" "${PREFIX}/bin/kvgamut" render sRGB --output "${WORK}/kvgamut.png")
expect_picture("${WORK}/kvgamut.png")

# --- A host with CMake -----------------------------------------------------------------------------
set(host "${WORK}/cmake_host")
run("configuring the host" ${CMAKE_COMMAND} -G Ninja -S ${CONSUMER} -B ${host} -DCMAKE_PREFIX_PATH=${PREFIX}
    -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
run("building the host" ${CMAKE_COMMAND} --build ${host})
run("the host" ${XVFB_RUN} -a -s "-noreset -screen 0 640x480x24" "${host}/bin/consumer" "${WORK}/cmake_host.png")
expect_picture("${WORK}/cmake_host.png")
run("the tool without a window" "${host}/bin/volume")
if(NOT output MATCHES "^83[0-9][0-9][0-9][0-9]\n$")
    message(FATAL_ERROR "the volume of sRGB, by the colour engine alone: ${output}")
endif()
run("installing the host" ${CMAKE_COMMAND} --install ${host} --prefix "${WORK}/host_installed")
set(ENV{LD_LIBRARY_PATH} "${PREFIX}/${LIBDIR}")
run("the installed host" ${XVFB_RUN} -a -s "-noreset -screen 0 640x480x24" "${WORK}/host_installed/bin/consumer")

# --- A host with pkg-config --------------------------------------------------------------------------
set(host "${WORK}/pkgconfig_host")
file(MAKE_DIRECTORY "${host}")
set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig")
set(ENV{CXXFLAGS} "${CXX_FLAGS}")
run("building with pkg-config" ${CMAKE_COMMAND} -E chdir ${host}
    make -f ${CONSUMER}/Makefile)
if(EXISTS "${host}/Resources")
    message(FATAL_ERROR "the host of pkg-config is meant to have no files of its own")
endif()
run("the host of pkg-config" ${XVFB_RUN} -a -s "-noreset -screen 0 640x480x24" "${host}/bin/consumer" "${WORK}/pkgconfig_host.png")
file(SHA256 "${WORK}/cmake_host.png" with_files)
file(SHA256 "${WORK}/pkgconfig_host.png" without_files)
if(NOT with_files STREQUAL without_files)
    message(FATAL_ERROR "a host without files of its own shows another picture")
endif()

# --- Versions and components that do not exist -----------------------------------------------------------------------
file(WRITE "${WORK}/wrong_host/CMakeLists.txt" "cmake_minimum_required(VERSION 3.25)
project(WrongHost LANGUAGES CXX)
find_package(KV3DViewer ${NEXT_VERSION} QUIET)
if(KV3DViewer_FOUND)
    message(FATAL_ERROR \"version 0.1 was accepted for ${NEXT_VERSION}\")
endif()
find_package(KV3DViewer COMPONENTS Viewer Nonsense QUIET)
if(KV3DViewer_FOUND)
    message(FATAL_ERROR \"the component Nonsense was found\")
endif()
")
run("a host that requests too much" ${CMAKE_COMMAND} -G Ninja -S "${WORK}/wrong_host" -B "${WORK}/wrong_host/build"
    -DCMAKE_PREFIX_PATH=${PREFIX})
file(WRITE "${WORK}/misspelt_host/CMakeLists.txt" "cmake_minimum_required(VERSION 3.16)
project(MisspeltHost LANGUAGES CXX)
find_package(KV3DViewer COMPONENTS Core OPTIONAL_COMPONENTS Viwer)
if(NOT KV3DViewer_FOUND OR KV3DViewer_Viwer_FOUND)
    message(FATAL_ERROR \"an optional component that does not exist\")
endif()
find_package(KV3DViewer REQUIRED COMPONENTS Viwer)
")
execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S "${WORK}/misspelt_host" -B "${WORK}/misspelt_host/build"
        -DCMAKE_PREFIX_PATH=${PREFIX}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
string(REGEX REPLACE "[ \n]+" " " output "${output}")
set(expected "KV3DViewer has no component \"Viwer\". Its components are Core, Velmora, Viewer, Widgets, Quick.")
string(FIND "${output}" "${expected}" found)
if(result EQUAL 0 OR found LESS 0)
    message(FATAL_ERROR "no message about a misspelt component (${result}): ${output}")
endif()
file(REMOVE_RECURSE "${WORK}")
