# Cross-compiles for 64-bit ARM Linux with Debian's cross toolchain and runs the result under qemu-user.
# QX_CROSS_CLANG chooses Clang on top of the same libraries.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
if(QX_CROSS_CLANG)
  set(CMAKE_CXX_COMPILER clang++)
  set(CMAKE_CXX_COMPILER_TARGET aarch64-linux-gnu)
else()
  set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
endif()
set(CMAKE_CROSSCOMPILING_EMULATOR "qemu-aarch64;-L;/usr/aarch64-linux-gnu")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QX_CROSS_CLANG)
