// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The arguments of the process. ProgramArguments_posix.cpp and ProgramArguments_windows.cpp implement it;
/// CMake chooses one. Free of Qt.
namespace ProgramArguments {

/// Those of main(), as FileName reads them: the bytes that the system passed, and UTF-8 on Windows, where
/// main() gets them in the code page of the system, which may have no letter of a file name. Call it once.
/// @param count their number; may change
char** asBytes(int& count, char** values);

} // namespace ProgramArguments
