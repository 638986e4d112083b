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

# tarnwick_library(NAME SOURCES file… [LINKS target…])
# One static library a folder.
function(tarnwick_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC tarnwick_options ${arg_LINKS})
endfunction()

# tarnwick_test(NAME SOURCES file… [LINKS target…] [GUI] [TIMEOUT seconds])
# One GoogleTest executable, one CTest entry. GUI gives it a QGuiApplication on the offscreen
# platform, otherwise it has a QCoreApplication.
function(tarnwick_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "GUI" "TIMEOUT" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES} ${CMAKE_SOURCE_DIR}/tests/fakes/TestMain.cpp)
    target_link_libraries(${name} PRIVATE tarnwick_options ${arg_LINKS} Qt6::Core GTest::gmock)
    if(arg_GUI)
        target_compile_definitions(${name} PRIVATE TARNWICK_TEST_GUI)
        target_link_libraries(${name} PRIVATE Qt6::Gui)
    endif()
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
