// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Loads Fontconfig's settings and list of fonts, which Qt then uses. To be called before a QGuiApplication
/// is made.
///
/// Without memory Fontconfig would repeat its start for ever when Qt looks for a font.
/// Fonts_posix.cpp and Fonts_windows.cpp implement it; CMake chooses one. Free of Qt. Does nothing on
/// Windows, where Qt asks the system.
/// @throws std::bad_alloc if the memory does not suffice
void loadFonts();
