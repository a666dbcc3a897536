# Toolchain for 64-bit ARM, with Debian's cross compiler and the libraries that scripts/cross_arm64.sh gathers. What runs
# while building (moc, uic, rcc) is this machine's own.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

set(PLOTIX_ARM64_ROOT "" CACHE PATH "Where the libraries for arm64 stand")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES PLOTIX_ARM64_ROOT)
set(CMAKE_SYSROOT ${PLOTIX_ARM64_ROOT})
set(CMAKE_FIND_ROOT_PATH ${PLOTIX_ARM64_ROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L ${PLOTIX_ARM64_ROOT})

set(QT_HOST_PATH /usr CACHE PATH "The toolkit whose tools run while building")
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake CACHE PATH "")

set(LRELEASE_PROGRAM /usr/lib/qt6/bin/lrelease CACHE FILEPATH "")

# Every instruction set here joins a product and a sum into one rounding, and all processors are to give the same bits.
set(CMAKE_CXX_FLAGS_INIT -ffp-contract=off)

# One precompiled header serves libraries and programs; on x86 the toolkit asks for this by itself.
add_compile_options(-fPIC)
