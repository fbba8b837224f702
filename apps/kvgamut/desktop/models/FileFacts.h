// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

/// What the system knows about a regular file. FileFacts_posix.cpp and FileFacts_windows.cpp implement it;
/// CMake chooses one. Free of Qt.
struct FileFacts
{
    std::uint64_t device = 0;
    std::uint64_t file = 0; ///< its number on the device
    std::int64_t size = 0;
    std::int64_t changed = 0; ///< nanoseconds since 1970

    /// nullopt if @p name is no regular file. Follows links, opens no pipe, and waits for the file system.
    static std::optional<FileFacts> of(const std::filesystem::path& name);
};
