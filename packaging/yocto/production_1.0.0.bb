SUMMARY = "Production mode of an in-car head unit"
DESCRIPTION = "Shared library that takes a head unit through production from a USB stick."
SECTION = "libs"
LICENSE = "CLOSED"

# The head unit's layer says where this comes from, and which of its recipes implements the services
# that platform/ declares:
#
#   PRODUCTION_SRC_URI = "git://git.example.com/production.git;protocol=https;branch=main"
#   PRODUCTION_PLATFORM_RECIPE = "headunit-services"
#   PRODUCTION_PLATFORM = "${STAGING_LIBDIR}/libheadunit-services.so"
#   PRODUCTION_PLATFORM_INCLUDE = "${STAGING_INCDIR}/headunit"    (empty: the headers in platform/)
PRODUCTION_SRC_URI ??= "git://${HOME}/production;protocol=file;branch=main"
PRODUCTION_PLATFORM_RECIPE ??= "headunit-services"
PRODUCTION_PLATFORM ??= "${STAGING_LIBDIR}/libheadunit-services.so"
PRODUCTION_PLATFORM_INCLUDE ??= ""

SRC_URI = "${PRODUCTION_SRC_URI}"
SRCREV ??= "${AUTOREV}"
PV = "1.0.0+git${SRCPV}"
S = "${WORKDIR}/git"

# meta-qt5: CMake with Qt's own host tools (moc, lrelease).
inherit cmake_qt5 pkgconfig
DEPENDS = "qtbase qttools-native ${PRODUCTION_PLATFORM_RECIPE}"

EXTRA_OECMAKE = "\
    -DPRODUCTION_PLATFORM=${PRODUCTION_PLATFORM} \
    -DPRODUCTION_PLATFORM_INCLUDE=${PRODUCTION_PLATFORM_INCLUDE} \
"

FILES:${PN} += "${datadir}/production"
# The module runs "sync" through the C library's system().
RDEPENDS:${PN} += "${VIRTUAL-RUNTIME_base-utils}"
