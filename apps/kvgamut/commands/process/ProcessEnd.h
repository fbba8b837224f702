// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// The end of the process when there is no memory. ProcessEnd_posix.cpp and ProcessEnd_windows.cpp implement
/// it; CMake chooses one. Free of Qt.
namespace ProcessEnd {

/// Makes the C library load what it needs to end threads, and for which it aborts if there is no memory
/// later. Does nothing where it needs nothing.
void prepare();

/// Prints @p line to standard error, and ends the process. Allocates nothing, and runs no destructors of
/// libraries, which may be in the middle of something.
[[noreturn]] void atOnce(std::string_view line, int exitCode);

} // namespace ProcessEnd
