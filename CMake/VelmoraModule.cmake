# SPDX-License-Identifier: MIT
# One static library per folder: every source in it, found again whenever a file is added.

# velmora_module(NAME [RECURSE] [PUBLIC lib…] [PRIVATE lib…])
function(velmora_module name)
    cmake_parse_arguments(ARG "RECURSE" "" "PUBLIC;PRIVATE" ${ARGN})
    if(ARG_RECURSE)
        file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    else()
        file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    endif()
    if(NOT sources)
        return()
    endif()
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} PRIVATE velmora_warnings ${ARG_PRIVATE})
endfunction()
