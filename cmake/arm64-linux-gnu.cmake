# Toolchain: Debian's cross compiler for 64-bit ARM, with a Qt for it below PRODUCTION_SYSROOT
# (scripts/cross-arm64.sh makes one); without that, the machine's own multiarch Qt.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES PRODUCTION_SYSROOT)
if(PRODUCTION_SYSROOT)
    set(CMAKE_FIND_ROOT_PATH "${PRODUCTION_SYSROOT}")
    set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
    set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
    set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
    set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
    # What Qt itself is linked with.
    set(CMAKE_EXE_LINKER_FLAGS_INIT
        "-Wl,-rpath-link,${PRODUCTION_SYSROOT}/usr/lib/aarch64-linux-gnu:${PRODUCTION_SYSROOT}/lib/aarch64-linux-gnu")
    set(CMAKE_SHARED_LINKER_FLAGS_INIT "${CMAKE_EXE_LINKER_FLAGS_INIT}")
endif()
