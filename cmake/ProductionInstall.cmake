# What `cmake --install` puts where, in three components:
#   runtime      the module, what it was linked with, its translation
#   development  headers, CMake package, pkg-config file
#   tools        the programs with their manual pages, completions and translations
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/Production")

# Outside the system's folders the parts find each other wherever the tree is moved to.
if(NOT CMAKE_INSTALL_FULL_LIBDIR IN_LIST CMAKE_PLATFORM_IMPLICIT_LINK_DIRECTORIES)
    file(RELATIVE_PATH bin_to_lib "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set(library_rpath "$ORIGIN")
    set(program_rpath "$ORIGIN/${bin_to_lib}")
endif()

set(libraries production production_platform)
if(TARGET production_bench_platform)
    list(APPEND libraries production_bench_platform)
    set_target_properties(production_bench_platform PROPERTIES
        EXPORT_NAME bench_platform
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "${library_rpath}")
endif()
if(PRODUCTION_LIBRARY_TYPE STREQUAL "STATIC")
    list(APPEND libraries production_worker production_settings)
endif()
set_target_properties(production PROPERTIES INSTALL_RPATH "${library_rpath}")
install(TARGETS ${libraries} EXPORT ProductionTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
        NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)

install(FILES
        "${PROJECT_SOURCE_DIR}/module/productioncontrol.h"
        "${PROJECT_BINARY_DIR}/module/production_export.h"
    DESTINATION "${PRODUCTION_INSTALL_INCLUDEDIR}" COMPONENT development)
if(NOT PRODUCTION_PLATFORM_INCLUDE)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/platform/"
        DESTINATION "${PRODUCTION_INSTALL_INCLUDEDIR}/platform" COMPONENT development
        FILES_MATCHING PATTERN "*.h")
endif()

install(EXPORT ProductionTargets NAMESPACE Production::
    DESTINATION "${package_dir}" COMPONENT development)
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/ProductionConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/ProductionConfig.cmake"
    INSTALL_DESTINATION "${package_dir}"
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ProductionConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
        "${PROJECT_BINARY_DIR}/ProductionConfig.cmake"
        "${PROJECT_BINARY_DIR}/ProductionConfigVersion.cmake"
    DESTINATION "${package_dir}" COMPONENT development)

if(NOT PRODUCTION_PLATFORM_INCLUDE)
    set(pkgconfig_platform_flags " -I\${includedir}/production/platform")
endif()
if(PRODUCTION_LIBRARY_TYPE STREQUAL "STATIC")
    set(pkgconfig_static_libs " -lproduction_worker -lproduction_settings")
    set(pkgconfig_static_flags " -DPRODUCTION_STATIC_DEFINE")
endif()
file(RELATIVE_PATH pkgconfig_to_prefix
    "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/production.pc.in"
    "${PROJECT_BINARY_DIR}/production.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/production.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)

foreach(program IN ITEMS production-bench production-stick)
    if(TARGET ${program})
        set_target_properties(${program} PROPERTIES INSTALL_RPATH "${program_rpath}")
        install(TARGETS ${program}
            RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
    endif()
endforeach()
if(PRODUCTION_WITH_BENCH)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs/man/"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools
        OPTIONAL FILES_MATCHING PATTERN "*.1")
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/completions/"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT tools
        OPTIONAL)
endif()

include(ProductionPackage)
