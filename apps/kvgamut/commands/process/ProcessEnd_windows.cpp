// SPDX-License-Identifier: Apache-2.0
#include "ProcessEnd.h"

#include <cstdlib>
#include <windows.h>

// The unwinder is part of the system.
void ProcessEnd::prepare() {}

void ProcessEnd::atOnce(std::string_view line, int exitCode)
{
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.data(), static_cast<DWORD>(line.size()), &written,
              nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
    std::abort(); // is not reached
}
