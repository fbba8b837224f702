// SPDX-License-Identifier: Apache-2.0
#include "FileFacts.h"

#include <windows.h>

namespace {

std::uint64_t joined(DWORD high, DWORD low)
{
    return std::uint64_t(high) << 32 | low;
}

/// @p time counts in units of 100 nanoseconds from 1601.
std::int64_t nanosecondsSince1970(const FILETIME& time)
{
    constexpr std::int64_t unit = 100;
    constexpr std::int64_t unitsTo1970 = 116'444'736'000'000'000;
    return (static_cast<std::int64_t>(joined(time.dwHighDateTime, time.dwLowDateTime)) - unitsTo1970) * unit;
}

std::optional<FileFacts> factsOf(HANDLE file)
{
    BY_HANDLE_FILE_INFORMATION info = {};
    if (GetFileType(file) != FILE_TYPE_DISK || GetFileInformationByHandle(file, &info) == 0 ||
        (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return {};
    return FileFacts{info.dwVolumeSerialNumber, joined(info.nFileIndexHigh, info.nFileIndexLow),
                     static_cast<std::int64_t>(joined(info.nFileSizeHigh, info.nFileSizeLow)),
                     nanosecondsSince1970(info.ftLastWriteTime)};
}

} // namespace

std::optional<FileFacts> FileFacts::of(const std::filesystem::path& name)
{
    // without the right to read: others may write, rename and delete the file meanwhile
    const HANDLE file = CreateFileW(name.c_str(), FILE_READ_ATTRIBUTES,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    const auto facts = factsOf(file);
    CloseHandle(file);
    return facts;
}
