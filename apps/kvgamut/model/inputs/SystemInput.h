// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>

/// What the system opens for reading, by descriptors of the C library. SystemInput_posix.cpp and
/// SystemInput_windows.cpp implement it; CMake chooses one. Free of Qt. A call that fails sets errno.
namespace SystemInput {

enum class Kind
{
    File,   ///< a regular file
    Stream, ///< a pipe, a socket or a terminal
    Folder,
    Other ///< a device
};
struct Facts
{
    Kind kind = Kind::Other;
    std::int64_t size = 0; ///< of a file
};

/// Opens without waiting for the writer of a pipe. @return the descriptor, or -1
int open(const std::filesystem::path& name);
/// Another descriptor of standard input. -1 if it is closed.
int openStandardInput();
void close(int descriptor);

std::optional<Facts> factsOf(int descriptor);
/// Where the next read() of a file begins. Negative if it has no position.
std::int64_t position(int descriptor);

/// Reads up to @p count bytes, and waits for the first one @p waitMs milliseconds, or for ever if that is
/// negative.
/// @return how many; 0 at the end; -1 with EAGAIN or EINTR if there are none yet, with another error if that
/// failed
std::int64_t read(int descriptor, char* bytes, std::size_t count, int waitMs);
/// Reads from @p position of a file, and keeps the position of the descriptor.
/// @return how many; 0 at the end; -1 with EINTR if it is to be repeated, with another error if that failed
std::int64_t readAt(int descriptor, char* bytes, std::size_t count, std::int64_t position);

} // namespace SystemInput
