// SPDX-License-Identifier: Apache-2.0
#pragma once

/// How many cells @p letter takes on a terminal: 2 for those of East Asian scripts and most pictograms, 0 for
/// marks above or below other letters, else 1. LetterCells_posix.cpp and LetterCells_windows.cpp implement
/// it; CMake chooses one. Free of Qt.
int cellsOf(char32_t letter);
