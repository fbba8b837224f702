// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The locale of the process. ProgramLocale_posix.cpp and ProgramLocale_windows.cpp implement it; CMake
/// chooses one. Free of Qt.
namespace ProgramLocale {

/// Sets a UTF-8 locale, as Qt needs it for file names, if the environment names another one, such as the "C"
/// of a server, or one that is not installed. The language that the environment asks for stays the same.
///
/// Messages of the C library and numbers are in English in every locale, since scripts read them. The window
/// asks Qt for the user's language.
///
/// On Windows only the code page of the console is set, until the program ends: its file names are in UTF-16.
void useUtf8();

} // namespace ProgramLocale
