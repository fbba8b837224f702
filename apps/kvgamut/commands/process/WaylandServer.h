// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The Wayland compositor that WAYLAND_DISPLAY names. WaylandServer_posix.cpp and WaylandServer_windows.cpp
/// implement it; CMake chooses one. Free of Qt.
namespace WaylandServer {

/// Whether it answers. Qt would end the process if it does not.
bool isReachable();

} // namespace WaylandServer
