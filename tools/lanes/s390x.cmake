# SPDX-License-Identifier: Apache-2.0
# For CMake: compiles for s390x, a big-endian processor, on a Debian system with the packages of that architecture.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(CMAKE_CXX_COMPILER s390x-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE s390x-linux-gnu)
set(PKG_CONFIG_EXECUTABLE s390x-linux-gnu-pkg-config)
# The tools of Qt are those of the building processor; Debian describes them with the packages of the other one.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/s390x-linux-gnu/cmake)
# This processor multiplies and adds in one step, without rounding in between, unless it is told not to.
set(CMAKE_CXX_FLAGS_INIT -ffp-contract=off)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-s390x-static)
