// SPDX-License-Identifier: Apache-2.0
#include "Terminal.h"

#include <windows.h>

bool Terminal::showsErrors()
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

int Terminal::columns()
{
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    const bool isKnown = GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) != 0;
    return isKnown ? info.srWindow.Right - info.srWindow.Left + 1 : 0;
}
