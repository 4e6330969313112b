# SPDX-License-Identifier: MIT
# The private desktop on which the benchmark of hovers and the demonstration run our program. The
# tests have it anyway.
if(NOT VELMORA_BUILD_TESTS)
    foreach(part Tests/Support/VirtualDesktop Tests/Support/QtSample Tests/Support/FedApplication
            Tests/Desktop/Support)
        add_subdirectory("${CMAKE_SOURCE_DIR}/${part}" "${CMAKE_BINARY_DIR}/${part}")
    endforeach()
endif()
