# Debian packages through CPack: scripts/package.sh, or `cpack` in the build tree of the preset
# "package". A head unit's image takes the module through packaging/yocto instead.
set(PRODUCTION_PACKAGE_CONTACT "production maintainers <root@localhost>" CACHE STRING
    "Name and address that the packages show as their maintainer")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "${PRODUCTION_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Production mode of a head unit - shared library
 Takes a head unit through production from a USB stick: factory settings,
 display panel, serial numbers out of the stick's pool, interface tests.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Production mode of a head unit - development files
 Headers, CMake package and pkg-config file for head units that load the
 production module.")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Production mode of a head unit - programs
 production-bench runs the production module on a stand-in head unit;
 production-stick prepares and examines the sticks of a production line.")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "libproduction${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libproduction-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qtbase5-dev (>= 5.15)")
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME production-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
# Qt's own texts, in the languages that the programs speak.
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS qttranslations5-l10n)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
