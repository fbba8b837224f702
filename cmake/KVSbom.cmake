# SPDX-License-Identifier: Apache-2.0
# As a module: kv_sbom(FILE BINARIES targets...) adds the target kv_sbom, which makes FILE, the list of our components
# (SPDX 2.3, JSON), when the binaries are linked.
#
# As a script (cmake -P) it writes that file, OUTPUT, from the index of licences INDEX (LICENSES/README.md) and the
# libraries that the files BINARIES load, which READELF prints. VERSION is ours; VERSIONS has the others, as name=version
# with the names of the column "build files". For these pkg-config is asked, too.
if(NOT CMAKE_SCRIPT_MODE_FILE)
    set(kv_sbom_script "${CMAKE_CURRENT_LIST_FILE}")
    function(kv_sbom file)
        cmake_parse_arguments(ARG "" "" "BINARIES" ${ARGN})
        find_program(READELF readelf REQUIRED)
        set(versions "Qt6=${Qt6_VERSION}" "CLI11=${CLI11_VERSION}" "tl-expected=${tl-expected_VERSION}")
        list(TRANSFORM ARG_BINARIES REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE binaries)
        set(index "${PROJECT_SOURCE_DIR}/LICENSES/README.md")
        add_custom_command(OUTPUT "${file}"
            COMMAND "${CMAKE_COMMAND}" "-DINDEX=${index}" "-DBINARIES=${binaries}" "-DREADELF=${READELF}"
                "-DVERSION=${PROJECT_VERSION}" "-DVERSIONS=${versions}" "-DOUTPUT=${file}" -P "${kv_sbom_script}"
            DEPENDS "${index}" "${kv_sbom_script}" ${ARG_BINARIES} VERBATIM)
        add_custom_target(kv_sbom ALL DEPENDS "${file}")
    endfunction()
    return()
endif()

cmake_minimum_required(VERSION 3.25)

# --- The libraries that are loaded ------------------------------------------------------------------------------
set(loaded)
foreach(binary IN LISTS BINARIES)
    execute_process(COMMAND ${READELF} -d "${binary}" OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*\\[[^]\n]+\\]" needed "${output}")
    list(TRANSFORM needed REPLACE ".*\\[(.*)\\]" "\\1")
    list(APPEND loaded ${needed})
endforeach()
list(REMOVE_DUPLICATES loaded)
list(FILTER loaded EXCLUDE REGEX "^(libc|libm|libstdc\\+\\+|libgcc_s|ld-linux[^.]*)\\.so") # of the compilers
list(SORT loaded)
set(unknown ${loaded})

# --- A package for each row of the index --------------------------------------------------------------------------
function(version_of variable names)
    set(${variable} "" PARENT_SCOPE)
    foreach(name IN LISTS names)
        foreach(known IN LISTS VERSIONS)
            if(known MATCHES "^${name}=(.+)$")
                set(${variable} "${CMAKE_MATCH_1}" PARENT_SCOPE)
                return()
            endif()
        endforeach()
        execute_process(COMMAND pkg-config --modversion "${name}"
            OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
        if(NOT failed)
            set(${variable} "${found}" PARENT_SCOPE)
            return()
        endif()
    endforeach()
endfunction()

file(STRINGS "${INDEX}" rows REGEX "^\\| ")
list(POP_FRONT rows) # the head
list(FILTER rows EXCLUDE REGEX "^\\| ---")
set(packages)
set(relations "    {\"spdxElementId\": \"SPDXRef-DOCUMENT\", \"relationshipType\": \"DESCRIBES\", \"relatedSpdxElement\": \"SPDXRef-KV3DViewer\"}")
foreach(row IN LISTS rows)
    string(REGEX REPLACE " *\\| *" "|" cells "${row}")
    string(REPLACE ";" "," cells "${cells}")
    string(REPLACE "|" ";" cells "${cells}") # an empty cell comes before the first bar
    list(GET cells 1 name)
    list(GET cells 2 licence)
    list(GET cells 4 used)
    list(GET cells 5 build_names)
    list(GET cells 6 libraries)
    list(GET cells 7 copyright)
    string(REGEX REPLACE "[^A-Za-z0-9.]+" "-" id "${name}")
    string(REGEX REPLACE "-$" "" id "SPDXRef-${id}")
    foreach(list IN ITEMS build_names libraries)
        string(REGEX MATCHALL "`[^`]+`" words "${${list}}")
        string(REPLACE "`" "" ${list} "${words}")
    endforeach()
    if(name STREQUAL "KV3DViewer")
        set(version "${VERSION}")
    else()
        version_of(version "${build_names}")
    endif()
    set(files)
    foreach(library IN LISTS libraries)
        foreach(file IN LISTS loaded)
            string(REGEX REPLACE "\\.so.*$" "" stem "${file}")
            if(stem STREQUAL library)
                list(APPEND files "${file}")
            endif()
        endforeach()
    endforeach()
    list(REMOVE_ITEM unknown ${files})
    if(libraries AND NOT files)
        continue() # not in this build
    endif()

    set(package "    {\n      \"SPDXID\": \"${id}\",\n      \"name\": \"${name}\",\n")
    if(version)
        string(APPEND package "      \"versionInfo\": \"${version}\",\n")
    endif()
    string(APPEND package "      \"downloadLocation\": \"NOASSERTION\",\n      \"filesAnalyzed\": false,\n"
        "      \"licenseConcluded\": \"${licence}\",\n      \"licenseDeclared\": \"${licence}\",\n"
        "      \"copyrightText\": \"Copyright ${copyright}\"")
    if(files)
        list(JOIN files ", " text)
        string(APPEND package ",\n      \"comment\": \"Libraries: ${text}\"")
    endif()
    list(APPEND packages "${package}\n    }")
    if(name STREQUAL "KV3DViewer")
        continue()
    endif()
    set(from SPDXRef-KV3DViewer)
    set(to "${id}")
    if(used MATCHES "^compiled into")
        set(type CONTAINS)
    elseif(used MATCHES "^linked by")
        set(type DYNAMIC_LINK)
    else()
        set(type RUNTIME_DEPENDENCY_OF)
        set(from "${id}")
        set(to SPDXRef-KV3DViewer)
    endif()
    list(APPEND relations
        "    {\"spdxElementId\": \"${from}\", \"relationshipType\": \"${type}\", \"relatedSpdxElement\": \"${to}\"}")
endforeach()
if(unknown)
    message(FATAL_ERROR "${INDEX} does not list these libraries, which are loaded: ${unknown}")
endif()

# --- The document ---------------------------------------------------------------------------------------------------
list(JOIN packages ",\n" packages)
list(JOIN relations ",\n" relations)
string(SHA256 hash "${packages}${relations}")
string(TIMESTAMP created "%Y-%m-%dT%H:%M:%SZ" UTC) # of SOURCE_DATE_EPOCH, if that is set
file(WRITE "${OUTPUT}" "{
  \"spdxVersion\": \"SPDX-2.3\",
  \"dataLicense\": \"CC0-1.0\",
  \"SPDXID\": \"SPDXRef-DOCUMENT\",
  \"name\": \"KV3DViewer-${VERSION}\",
  \"documentNamespace\": \"https://kv3dviewer.invalid/spdx/KV3DViewer-${VERSION}-${hash}\",
  \"creationInfo\": {
    \"created\": \"${created}\",
    \"creators\": [\"Organization: the KV3DViewer authors\", \"Tool: KVSbom.cmake-${VERSION}\"]
  },
  \"packages\": [
${packages}
  ],
  \"relationships\": [
${relations}
  ]
}
")
