// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Why the last call of the system failed on this thread, as a value of errno. LastError_posix.cpp and
/// LastError_windows.cpp implement it; CMake chooses one. Free of Qt.
///
/// Windows keeps its own errors, which its C library translates only for its own calls, and less exactly.
int lastError();
