// SPDX-License-Identifier: Apache-2.0
#include "ProgramArguments.h"

#include <string>
#include <vector>
#include <windows.h>

#include <shellapi.h> // needs windows.h before it

namespace {

std::string inUtf8(const wchar_t* text)
{
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 0)
        return {};
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.pop_back(); // the end of the text
    return bytes;
}

} // namespace

char** ProgramArguments::asBytes(int& count, char** values)
{
    static std::vector<std::string> texts; // live as long as those of main()
    static std::vector<char*> pointers;
    int wideCount = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &wideCount);
    if (!wide)
        return values;
    for (int i = 0; i < wideCount; ++i)
        texts.push_back(inUtf8(wide[i]));
    LocalFree(wide);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    count = wideCount;
    return pointers.data();
}
