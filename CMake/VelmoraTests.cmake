# SPDX-License-Identifier: MIT
# One test executable per folder: every source in it, found again whenever a file is added.

# velmora_tests(NAME [LABELS label] LIBRARIES lib…)
# Tests of label unit (the default) need no display. A list of labels would not reach the tests whole.
function(velmora_tests name)
    cmake_parse_arguments(ARG "" "LABELS" "LIBRARIES" ${ARGN})
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "velmora_tests(${name}): ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    if(NOT sources)
        return()
    endif()
    if(NOT ARG_LABELS)
        set(ARG_LABELS unit)
    endif()
    velmora_note_sources(${name} ${sources})
    add_executable(${name} ${sources})
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
    target_compile_definitions(${name} PRIVATE
        VELMORA_FIXTURES="${CMAKE_SOURCE_DIR}/Tests/Fixtures"
        VELMORA_BUILD_FOLDER="${CMAKE_BINARY_DIR}")
    target_link_libraries(${name} PRIVATE velmora_warnings velmora_private_home ${ARG_LIBRARIES} GTest::gtest GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
        PROPERTIES LABELS "${ARG_LABELS}" TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
