// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the program asks the system about the terminal. Terminal_posix.cpp and Terminal_windows.cpp implement
/// it; CMake chooses one. Free of Qt.
namespace Terminal {

/// Whether standard error is shown on a terminal.
bool showsErrors();

/// The width of the terminal on standard output in columns. 0: standard output is no terminal, or its width
/// is unknown.
int columns();

} // namespace Terminal
