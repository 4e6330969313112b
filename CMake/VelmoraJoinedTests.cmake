# SPDX-License-Identifier: MIT
# A source of a test is short, and what it takes to compile it is the headers of the test framework,
# the toolkit and the standard library. With VELMORA_JOIN_TESTS some sources of a target are compiled
# as one, and those that need no display without optimisation. Two things see to it that each of them
# remains whole in itself: the second compiler's build, where every source is compiled alone, and
# scripts/support/check_includes.py, which knows what the headers precompiled there would hide.

# Sources that call something as another source of their folder does, or that say `using namespace`.
set(VELMORA_APART_TESTS
    Contracts/Speech/PrivateSpeechDaemon.cpp
    Contracts/Tesseract/RecognizerProcessTests.cpp
    Contracts/Tesseract/TesseractRecognizerTests.cpp
    Contracts/X11/Support/PrivateServer.cpp
    Contracts/X11/Support/TestApplication.cpp
    Contracts/X11/Support/WindowCommands.cpp
    Contracts/X11/X11ScreenCaptureTests.cpp
    Desktop/Hover/ScreensTests.cpp
    Velmora/Recognition/WordPatternsTests.cpp
    Velmora/RecognitionWorker/UnusedTablesTests.cpp
    Velmora/TextCapture/CaptureSequenceTests.cpp
    Velmora/TextCapture/ElementProbeTests.cpp
    Velmora/TextCapture/OCRRegionAcceptanceTests.cpp
    Velmora/TextCapture/ProbeSelectionTests.cpp
    Velmora/TextCapture/RegionRecognizerTests.cpp
    Velmora/Updates/NetworkHttpFetcherTests.cpp
    Velmora/Updates/SoftwareUpdateControllerTests.cpp
    Velmora/Updates/UpdatesFromAServerTests.cpp
    VelmoraCore/LookupEngineTests.cpp
    Views/PopoverPanelControllerTests.cpp
    Views/SettingsWindowTests.cpp
    Views/ThemeTests.cpp)
# Folders whose sources share so many names that each is compiled alone.
set(VELMORA_APART_TEST_FOLDERS Contracts/AtSpi)
# Of these the tests look at no real program and wait for none.
set(VELMORA_PLAIN_TEST_FOLDERS CommandLine Velmora VelmoraCore)

# velmora_join_tests(): for every target below Tests that there is by now.
function(velmora_join_tests)
    if(NOT VELMORA_JOIN_TESTS)
        return()
    endif()
    set(tests "${CMAKE_SOURCE_DIR}/Tests")
    list(TRANSFORM VELMORA_APART_TESTS PREPEND "${tests}/" OUTPUT_VARIABLE apart)
    foreach(source ${apart})
        if(NOT EXISTS "${source}")
            message(FATAL_ERROR "VELMORA_APART_TESTS: there is no ${source}")
        endif()
    endforeach()
    set(directories "${tests}")
    while(directories)
        list(POP_FRONT directories directory)
        get_property(targets DIRECTORY "${directory}" PROPERTY BUILDSYSTEM_TARGETS)
        get_property(below DIRECTORY "${directory}" PROPERTY SUBDIRECTORIES)
        list(APPEND directories ${below})
        file(RELATIVE_PATH folder "${tests}" "${directory}")
        set_source_files_properties(${apart} DIRECTORY "${directory}" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
        string(REGEX REPLACE "/.*" "" kind "${folder}")
        foreach(target ${targets})
            get_target_property(type ${target} TYPE)
            if(NOT type MATCHES "^(STATIC_LIBRARY|EXECUTABLE)$")
                continue()
            endif()
            if(NOT folder IN_LIST VELMORA_APART_TEST_FOLDERS)
                set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
            endif()
            if(kind IN_LIST VELMORA_PLAIN_TEST_FOLDERS AND NOT VELMORA_SANITIZE)
                target_compile_options(${target} PRIVATE -O0)
            endif()
        endforeach()
    endwhile()
endfunction()
