// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

/// Returns the whole pages of @p memory to the system, in parts, so that no other thread waits for long. What
/// they contain is lost; the addresses stay valid. PageReturn_posix.cpp and PageReturn_windows.cpp implement
/// it; CMake chooses one. Does nothing where the system has no such call.
void kvReturnPages(std::span<std::byte> memory);
