# SPDX-License-Identifier: MIT
# The resource bundle of the core: a folder beside the executables that holds the word list where
# there is one. The folder is always made; the program lives without the file.

set(VELMORA_BUNDLE_NAME "Velmora_VelmoraCore.bundle")
set(VELMORA_BUNDLE_FOLDER "${CMAKE_BINARY_DIR}/${VELMORA_BUNDLE_NAME}")
file(MAKE_DIRECTORY "${VELMORA_BUNDLE_FOLDER}")

# In this order: what the user names, the publisher's current release, the release the tests know.
# The glob notices a list that is fetched after this was configured.
file(GLOB fetched CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/build/dictionary/cedict_ts.u8"
     "${CMAKE_SOURCE_DIR}/build/dictionary/latest/cedict_ts.u8")
if(VELMORA_CEDICT_FILE)
    set(wordList "${VELMORA_CEDICT_FILE}")
elseif(DEFINED ENV{VELMORA_CEDICT_FILE} AND NOT "$ENV{VELMORA_CEDICT_FILE}" STREQUAL "")
    set(wordList "$ENV{VELMORA_CEDICT_FILE}")
elseif("${CMAKE_SOURCE_DIR}/build/dictionary/latest/cedict_ts.u8" IN_LIST fetched)
    set(wordList "${CMAKE_SOURCE_DIR}/build/dictionary/latest/cedict_ts.u8")
elseif(fetched)
    list(GET fetched 0 wordList)
else()
    set(wordList "")
endif()

if(wordList)
    get_filename_component(wordList "${wordList}" ABSOLUTE BASE_DIR "${CMAKE_SOURCE_DIR}")
    if(NOT EXISTS "${wordList}" OR IS_DIRECTORY "${wordList}")
        message(FATAL_ERROR "VELMORA_CEDICT_FILE: there is no file ${wordList}")
    endif()
    configure_file("${wordList}" "${VELMORA_BUNDLE_FOLDER}/cedict_ts.u8" COPYONLY)
    message(STATUS "Word list: ${wordList}")
else()
    file(REMOVE "${VELMORA_BUNDLE_FOLDER}/cedict_ts.u8")
    message(STATUS "Word list: none, only the nine seed entries will be found (scripts/fetch-dictionary gets it)")
endif()

if(TARGET velmora_core)
    set_source_files_properties(
        "${CMAKE_SOURCE_DIR}/VelmoraCore/resource_bundle_accessor.cpp"
        TARGET_DIRECTORY velmora_core
        PROPERTIES COMPILE_DEFINITIONS "VELMORA_BUILD_TIME_BUNDLE_PATH=\"${VELMORA_BUNDLE_FOLDER}\"")
endif()
