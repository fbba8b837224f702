// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The X server that DISPLAY names. XServer_posix.cpp and XServer_windows.cpp implement it; CMake chooses
/// one. Free of Qt.
namespace XServer {

/// Whether it accepts connections, answers within ten seconds, and the process can have the thread that Qt
/// needs for it. Otherwise Qt would end the process, or wait for ever. The first call connects.
bool isReachable();

} // namespace XServer
