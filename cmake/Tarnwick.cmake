# Build rules that every folder shares.

option(TARNWICK_TESTS "Build the tests" ON)
option(TARNWICK_BENCHMARKS "Build the benchmarks" OFF)
set(TARNWICK_SANITIZE "" CACHE STRING "Value for -fsanitize=, empty for none")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(TARNWICK_MOLD mold)

# What every target of ours is compiled with; Qt's own headers are system headers and exempt.
add_library(tarnwick_options INTERFACE)
target_compile_options(tarnwick_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# GCC cannot follow a std::variant when it optimises, nor through the sanitizers' instrumentation.
target_compile_options(tarnwick_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
target_compile_definitions(tarnwick_options INTERFACE
    QT_NO_CAST_FROM_BYTEARRAY QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_include_directories(tarnwick_options INTERFACE ${CMAKE_SOURCE_DIR})
if(TARNWICK_MOLD)
    target_link_options(tarnwick_options INTERFACE -fuse-ld=mold)
endif()
if(TARNWICK_SANITIZE)
    target_compile_options(tarnwick_options INTERFACE
        -fsanitize=${TARNWICK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(tarnwick_options INTERFACE -fsanitize=${TARNWICK_SANITIZE})
endif()

# Two thirds of a compilation would be spent on reading the same headers of the standard library and of Qt. They are
# compiled once for what needs the core alone, once for what draws, and once for the tests; the first target that wants
# one makes it, the others take it from there. Sources include what they use all the same: nothing but time may depend
# on this, and tools/lint reads them without.
set(TARNWICK_PRECOMPILED_core
    <algorithm> <array> <atomic> <chrono> <cmath> <condition_variable> <functional> <map> <memory> <mutex> <optional>
    <string> <thread> <utility> <variant> <vector>
    <QByteArray> <QCoreApplication> <QFile> <QFileInfo> <QHash> <QList> <QObject> <QPointer> <QString> <QStringList>
    <QTimer> <QUrl> <QVariantMap>)
set(TARNWICK_PRECOMPILED_quick
    ${TARNWICK_PRECOMPILED_core}
    <QColor> <QFont> <QGuiApplication> <QImage> <QPainter> <QPainterPath> <QQmlEngine> <QQuickItem> <QQuickWindow>)
set(TARNWICK_PRECOMPILED_test ${TARNWICK_PRECOMPILED_core} <gmock/gmock.h>)

# tarnwick_precompile(TARGET KIND): lets a target use the precompiled headers of that kind.
function(tarnwick_precompile name kind)
    get_property(maker GLOBAL PROPERTY TARNWICK_PRECOMPILED_${kind})
    if(maker)
        target_precompile_headers(${name} REUSE_FROM ${maker})
    else()
        target_precompile_headers(${name} PRIVATE ${TARNWICK_PRECOMPILED_${kind}})
        set_property(GLOBAL PROPERTY TARNWICK_PRECOMPILED_${kind} ${name})
    endif()
endfunction()

# tarnwick_optimise(FILE…): sources that are optimised in every build, because what they compute takes ten times as long
# without. The precompiled headers were made for the build's own level and do not fit them.
function(tarnwick_optimise)
    set_source_files_properties(${ARGV} PROPERTIES COMPILE_OPTIONS -O3 SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# tarnwick_library(NAME SOURCES file… [LINKS target…] [QOBJECTS])
# One static library a folder. QOBJECTS: there are classes with Q_OBJECT in it, so the meta-object compiler reads it;
# without, such a class has no vtable and the program does not link. QML modules have it anyway.
function(tarnwick_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "QOBJECTS" "" "SOURCES;LINKS")
    add_library(${name} STATIC ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ${arg_QOBJECTS})
    target_link_libraries(${name} PUBLIC tarnwick_options ${arg_LINKS})
    if("Qt6::Quick" IN_LIST arg_LINKS)
        tarnwick_precompile(${name} quick)
    else()
        tarnwick_precompile(${name} core)
    endif()
endfunction()

# tarnwick_test(NAME SOURCES file… [LINKS target…] [GUI] [QOBJECTS] [TIMEOUT seconds])
# One GoogleTest executable, one CTest entry. GUI gives it a QGuiApplication on the offscreen
# platform, otherwise it has a QCoreApplication. QOBJECTS as for a library.
function(tarnwick_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "GUI;QOBJECTS" "TIMEOUT" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ${arg_QOBJECTS})
    if(arg_GUI)
        target_link_libraries(${name} PRIVATE tarnwick_gui_test_main)
    else()
        target_link_libraries(${name} PRIVATE tarnwick_test_main)
    endif()
    target_link_libraries(${name} PRIVATE ${arg_LINKS})
    tarnwick_precompile(${name} test)
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT}
        ENVIRONMENT "LC_ALL=C.UTF-8")
endfunction()

# tarnwick_qml_module(TARGET URI uri [QML_FILES file…] [DEPENDENCIES uri…] [SINGLETONS file…])
# Makes a library a QML module as well: its QML files, and its C++ types that carry QML_ELEMENT.
# Executables link TARGETplugin too, and import the plugin by Q_IMPORT_QML_PLUGIN.
function(tarnwick_qml_module name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "QML_FILES;DEPENDENCIES;SINGLETONS")
    if(arg_SINGLETONS)
        set_source_files_properties(${arg_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
    endif()
    # However the sources are grouped, a module is one namespace: its QML files see each other by name.
    foreach(file IN LISTS arg_QML_FILES arg_SINGLETONS)
        get_filename_component(alias ${file} NAME)
        set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${alias})
    endforeach()
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    qt_add_qml_module(${name}
        URI ${arg_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        DEPENDENCIES QtQuick ${arg_DEPENDENCIES}
        QML_FILES ${arg_QML_FILES} ${arg_SINGLETONS})
    get_target_property(sources ${name} SOURCES)
    # The generated code includes headers by their bare names.
    foreach(file IN LISTS sources)
        if(file MATCHES "^[A-Za-z/]+\\.h$")
            get_filename_component(folder ${file} DIRECTORY)
            target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
        endif()
    endforeach()
    list(FILTER sources INCLUDE REGEX "/qmlcache/")
    set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -Wno-shadow) # Qt's, not ours
endfunction()
