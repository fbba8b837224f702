// SPDX-License-Identifier: Apache-2.0
#include "ProgramLocale.h"

#include <cstdlib>
#include <windows.h>

namespace {

UINT codePageBefore = 0; // 0: there is no console

void restoreCodePage()
{
    SetConsoleOutputCP(codePageBefore);
}

} // namespace

// File names are in UTF-16, and without a call of setlocale() numbers and messages of the C library stay as
// they are in English. Only the console has to know that the output is in UTF-8; it outlives the process.
void ProgramLocale::useUtf8()
{
    codePageBefore = GetConsoleOutputCP();
    if (codePageBefore != 0 && codePageBefore != CP_UTF8 && SetConsoleOutputCP(CP_UTF8) != 0)
        std::atexit(restoreCodePage);
}
