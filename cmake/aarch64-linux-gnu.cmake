# Cross-compiling for 64-bit ARM with Debian's cross compiler (g++-aarch64-linux-gnu); the programs
# run here under qemu-user (qemu-aarch64), which finds the target's C and C++ libraries under
# /usr/aarch64-linux-gnu. Only the recordings' checker builds this way (KMVT_VERIFIER_ONLY).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(KMVT_CROSS_TRIPLE aarch64-linux-gnu)
set(CMAKE_CXX_COMPILER ${KMVT_CROSS_TRIPLE}-g++)
set(CMAKE_FIND_ROOT_PATH /usr/${KMVT_CROSS_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/${KMVT_CROSS_TRIPLE})
