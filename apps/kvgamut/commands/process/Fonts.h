// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Loads Fontconfig's settings and list of fonts, which Qt then uses. To be called before a QGuiApplication
/// is made.
///
/// Without memory Fontconfig would repeat its start for ever when Qt looks for a font.
/// @throws std::bad_alloc if the memory does not suffice
void loadFonts();
