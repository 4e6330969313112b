# SPDX-License-Identifier: MIT
# Most of the time that a source takes goes into the headers of the libraries, which are the same for
# all. With VELMORA_PRECOMPILE_HEADERS they are read once for each kind of target: with the toolkit
# or without it, with the test framework or without it. A build without it is what finds a source that
# does not include what it uses, and scripts/check-includes among the tests, some of which that build
# compiles as one.
#
# clang only: what it made of headers under some definitions it takes for those with more, too; and
# gcc takes as long to load what it made of them as to read them.

# velmora_links(RESULT TARGET LIBRARY…): whether one of the libraries reaches the target's sources,
# which it does not where only a link needs it.
function(velmora_links result target)
    set(left "${target}")
    set(seen)
    set(property LINK_LIBRARIES)
    while(left)
        list(POP_FRONT left each)
        string(REGEX REPLACE "^\\$<TARGET_NAME_IF_EXISTS:(.*)>$" "\\1" each "${each}")
        if(each IN_LIST seen OR NOT TARGET "${each}")
            continue()
        endif()
        list(APPEND seen "${each}")
        get_target_property(libraries "${each}" ${property})
        set(property INTERFACE_LINK_LIBRARIES)
        if(libraries)
            list(APPEND left ${libraries})
        endif()
    endwhile()
    set(${result} NO PARENT_SCOPE)
    foreach(library ${ARGN})
        if(library IN_LIST seen)
            set(${result} YES PARENT_SCOPE)
        endif()
    endforeach()
endfunction()

# velmora_header_library(NAME [LIBRARIES lib…] [FOLDERS lib…] HEADERS header…)
# What is read under the definitions of LIBRARIES, with the headers of FOLDERS at hand.
function(velmora_header_library name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES;FOLDERS;HEADERS" ${ARGN})
    set(source "${CMAKE_BINARY_DIR}/${name}.cpp")
    file(GENERATE OUTPUT "${source}" CONTENT "")
    add_library(${name} OBJECT "${source}")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES})
    foreach(library ${ARG_FOLDERS})
        target_include_directories(${name} SYSTEM PRIVATE "$<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>")
    endforeach()
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# velmora_precompile_headers(): for every target that there is by now.
function(velmora_precompile_headers)
    if(NOT VELMORA_PRECOMPILE_HEADERS)
        return()
    endif()
    find_package(nlohmann_json 3.9 REQUIRED)
    if(VELMORA_BUILD_TESTS)
        find_package(GTest REQUIRED)
    endif()
    set(headers <algorithm> <array> <chrono> <cmath> <filesystem> <fstream> <functional> <map> <memory>
        <mutex> <optional> <set> <span> <sstream> <stdexcept> <string> <string_view> <thread>
        <unordered_map> <utility> <vector> <nlohmann/json.hpp>)
    set(toolkit <QColor> <QDBusArgument> <QDBusConnection> <QDBusMessage> <QDBusPendingCallWatcher>
        <QDBusVariant> <QFile> <QFont> <QGuiApplication> <QHash> <QImage> <QList> <QMetaType>
        <QObject> <QPainter> <QPointer> <QQmlEngine> <QQuickItem> <QQuickWindow> <QString>
        <QStringList> <QTimer> <QUrl> <QVariant> <QtQml/qqmlprivate.h>)
    set(framework <gtest/gtest.h>)
    set(folders Qt6::DBus Qt6::Gui Qt6::Qml Qt6::QmlIntegration Qt6::QmlModels Qt6::Network Qt6::OpenGL Qt6::Quick)

    set(directories "${CMAKE_SOURCE_DIR}")
    set(targets)
    while(directories)
        list(POP_FRONT directories directory)
        get_property(here DIRECTORY "${directory}" PROPERTY BUILDSYSTEM_TARGETS)
        get_property(below DIRECTORY "${directory}" PROPERTY SUBDIRECTORIES)
        list(APPEND targets ${here})
        list(APPEND directories ${below})
    endwhile()

    velmora_header_library(velmora_headers LIBRARIES nlohmann_json::nlohmann_json HEADERS ${headers})
    if(VELMORA_BUILD_TESTS)
        velmora_header_library(velmora_headers_tests LIBRARIES nlohmann_json::nlohmann_json GTest::gtest
            HEADERS ${headers} ${framework})
    endif()
    if(VELMORA_BUILD_APPLICATION)
        velmora_header_library(velmora_headers_toolkit LIBRARIES nlohmann_json::nlohmann_json Qt6::Core
            FOLDERS ${folders} HEADERS ${headers} ${toolkit})
        if(VELMORA_BUILD_TESTS)
            velmora_header_library(velmora_headers_toolkit_tests
                LIBRARIES nlohmann_json::nlohmann_json Qt6::Core GTest::gtest
                FOLDERS ${folders} HEADERS ${headers} ${toolkit} ${framework})
        endif()
    endif()
    foreach(target ${targets})
        get_target_property(type ${target} TYPE)
        if(NOT type MATCHES "^(STATIC_LIBRARY|OBJECT_LIBRARY|EXECUTABLE)$")
            continue()
        endif()
        set(kind velmora_headers)
        velmora_links(hasToolkit ${target} Qt6::Core Qt6::Gui Qt6::DBus)
        velmora_links(hasFramework ${target} GTest::gtest GTest::gmock)
        if(hasToolkit)
            string(APPEND kind _toolkit)
        endif()
        if(hasFramework)
            string(APPEND kind _tests)
        endif()
        target_precompile_headers(${target} REUSE_FROM ${kind})
    endforeach()
endfunction()
