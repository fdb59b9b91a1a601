# Cross build for 32-bit Arm (hard float) with Debian's arm-linux-gnueabihf toolchain. Test
# programs run under qemu-arm with the target's system libraries.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(CAMTUNE_ARMHF_TRIPLE arm-linux-gnueabihf)
set(CMAKE_C_COMPILER ${CAMTUNE_ARMHF_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${CAMTUNE_ARMHF_TRIPLE}-g++)

# glibc's 32-bit stat, readdir and statvfs fail with EOVERFLOW on a 64-bit host's file systems
# (large inode numbers and block counts); bionic's never do. The 64-bit file interfaces behave
# like the device's.
set(CMAKE_CXX_FLAGS_INIT "-D_FILE_OFFSET_BITS=64")
set(CMAKE_C_FLAGS_INIT "-D_FILE_OFFSET_BITS=64")

set(CMAKE_FIND_ROOT_PATH /usr/${CAMTUNE_ARMHF_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L /usr/${CAMTUNE_ARMHF_TRIPLE})
