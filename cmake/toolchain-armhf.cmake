# Cross build for 32-bit Arm (hard float) with Debian's arm-linux-gnueabihf toolchain. Test
# programs run under qemu-arm with the target's system libraries.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(CAMTUNE_ARMHF_TRIPLE arm-linux-gnueabihf)
set(CMAKE_C_COMPILER ${CAMTUNE_ARMHF_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${CAMTUNE_ARMHF_TRIPLE}-g++)

set(CMAKE_FIND_ROOT_PATH /usr/${CAMTUNE_ARMHF_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L /usr/${CAMTUNE_ARMHF_TRIPLE})
