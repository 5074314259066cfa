# Which implementation of platform/ the module is linked with, and what is built around it.

# A project around this one may have set either as a plain variable, which a cache entry would hide.
if(NOT DEFINED PRODUCTION_PLATFORM)
    set(PRODUCTION_PLATFORM "" CACHE STRING
        "CMake target or library that implements the head unit's services; empty: the bench's")
endif()
if(NOT DEFINED PRODUCTION_PLATFORM_INCLUDE)
    set(PRODUCTION_PLATFORM_INCLUDE "" CACHE PATH
        "Folder of the head unit's own declarations of its services; empty: platform/")
endif()
option(PRODUCTION_INSTALL "Install the module" ${PRODUCTION_IS_TOP_LEVEL})

if(PRODUCTION_PLATFORM)
    set(PRODUCTION_WITH_BENCH OFF)
elseif(PRODUCTION_IS_TOP_LEVEL)
    set(PRODUCTION_WITH_BENCH ON)
    set(PRODUCTION_PLATFORM production_bench_platform)
else()
    # The target may well be defined after this project, whose headers it includes.
    message(FATAL_ERROR "Set PRODUCTION_PLATFORM to the CMake target or library that implements "
        "the services declared in ${PROJECT_SOURCE_DIR}/platform.")
endif()

# The module is a shared library unless the project around it asks for static ones.
set(PRODUCTION_LIBRARY_TYPE SHARED)
if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
    set(PRODUCTION_LIBRARY_TYPE STATIC)
endif()

set(PRODUCTION_INSTALL_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/production")
set(PRODUCTION_TRANSLATIONS_DIR "${CMAKE_INSTALL_DATADIR}/production/translations")
