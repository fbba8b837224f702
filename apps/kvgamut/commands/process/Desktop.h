// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The desktop that is part of the system. Desktop_posix.cpp and Desktop_windows.cpp implement it; CMake
/// chooses one. Free of Qt.
namespace Desktop {

/// The name of Qt's platform for it, as in QT_QPA_PLATFORM. Null where windows are shown by servers that may
/// be missing: Wayland and X.
const char* platform();

} // namespace Desktop
