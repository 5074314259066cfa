# How every target of this project is compiled.

set(CMAKE_AUTOMOC ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(PRODUCTION_IS_TOP_LEVEL)
    set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
    find_program(CCACHE_PROGRAM ccache)
    if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
        set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
    endif()
endif()

find_package(Qt5 5.15 REQUIRED COMPONENTS Core)

option(PRODUCTION_WERROR "Treat compiler warnings as errors" OFF)
set(PRODUCTION_SANITIZE "" CACHE STRING
    "Sanitizers for every target, as -fsanitize= takes them (address,undefined or thread)")
option(PRODUCTION_COVERAGE "Count the lines and branches that run, for gcovr" OFF)

# Language level, warnings and Qt's own strictness, for this project's targets only.
add_library(production_options INTERFACE)
target_compile_features(production_options INTERFACE cxx_std_17)
target_compile_options(production_options INTERFACE -Wall -Wextra -Wpedantic)
# QSKIP of Qt Test leaves the "..." of its macro empty.
target_compile_options(production_options INTERFACE
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
target_compile_definitions(production_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_DEPRECATED_WARNINGS
    # File, line and function of a log line in release builds too.
    QT_MESSAGELOGCONTEXT)
if(PRODUCTION_WERROR)
    target_compile_options(production_options INTERFACE -Werror)
endif()
if(PRODUCTION_SANITIZE)
    add_compile_options(-fsanitize=${PRODUCTION_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${PRODUCTION_SANITIZE})
endif()
# For the module's own targets, whose lines and branches are counted.
add_library(production_counted INTERFACE)
if(PRODUCTION_COVERAGE)
    # Two threads count. Every call would count as a branch to where exceptions are caught, which
    # neither Qt nor this code throws.
    target_compile_options(production_counted INTERFACE
        --coverage -fprofile-update=atomic -fno-exceptions)
    add_link_options(--coverage)
endif()
