// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The memory that the C library keeps after it was freed. HeapReturn_posix.cpp and HeapReturn_windows.cpp
/// implement it; CMake chooses one. Free of Qt.
namespace HeapReturn {

/// Lets the C library keep little from now on. Does nothing where it always does.
void keepLittle();

/// Returns to the system what the C library keeps. Does nothing where there is no such call.
/// @return whether it returned anything
bool returnAll();

} // namespace HeapReturn
