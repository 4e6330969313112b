# SPDX-License-Identifier: MIT
# Warnings, sanitizers, compiler cache and linker for every target of the project.

add_library(velmora_warnings INTERFACE)
target_compile_options(velmora_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(VELMORA_WARNINGS_AS_ERRORS)
    target_compile_options(velmora_warnings INTERFACE -Werror)
endif()

if(VELMORA_SANITIZE)
    add_compile_options(-fsanitize=${VELMORA_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${VELMORA_SANITIZE})
    if(VELMORA_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

if(VELMORA_PRECOMPILE_HEADERS)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "VELMORA_PRECOMPILE_HEADERS: clang only")
    endif()
    # Headers count as unchanged while their content is; and one reading of them serves programs and
    # libraries alike.
    add_compile_options("SHELL:-Xclang -fno-pch-timestamp" -fPIC)
endif()

# What the compiler tells of the headers it read is enough to find a result again: without it, each
# source that is not in the cache is preprocessed once more than it is compiled.
find_program(VELMORA_CCACHE ccache)
if(VELMORA_CCACHE)
    set(launcher env CCACHE_DEPEND=1)
    if(VELMORA_PRECOMPILE_HEADERS)
        list(APPEND launcher CCACHE_SLOPPINESS=pch_defines,time_macros)
    endif()
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher} "${VELMORA_CCACHE}")
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher} "${VELMORA_CCACHE}")
endif()

find_program(VELMORA_LLD NAMES ld.lld ld.lld-14)
if(VELMORA_LLD AND NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    add_link_options(-fuse-ld=lld)
endif()
