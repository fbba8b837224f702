// SPDX-License-Identifier: Apache-2.0
#include "LetterCells.h"

#include <cwchar>

int cellsOf(char32_t letter)
{
    const int width = wcwidth(static_cast<wchar_t>(letter));
    return width < 0 ? 1 : width;
}
