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

find_program(VELMORA_CCACHE ccache)
if(VELMORA_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${VELMORA_CCACHE}")
    set(CMAKE_C_COMPILER_LAUNCHER "${VELMORA_CCACHE}")
endif()

find_program(VELMORA_LLD NAMES ld.lld ld.lld-14)
if(VELMORA_LLD AND NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    add_link_options(-fuse-ld=lld)
endif()
