// SPDX-License-Identifier: Apache-2.0
#include "SystemInput.h"

#include "model/problems/LastError.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <limits>

#ifndef NOMINMAX
#define NOMINMAX // windows.h would define min and max
#endif
#include <windows.h>

namespace {

constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE; // as on other systems

HANDLE handleOf(int descriptor)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

/// Sets errno. @return -1
int failed()
{
    errno = lastError();
    return -1;
}

/// @return a descriptor that owns @p handle, or -1
int descriptorOf(HANDLE handle)
{
    const int descriptor =
        _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
    if (descriptor < 0) {
        const int error = errno;
        CloseHandle(handle);
        errno = error;
    }
    return descriptor;
}

std::optional<SystemInput::Facts> factsOnDisk(HANDLE handle)
{
    using SystemInput::Facts, SystemInput::Kind;
    BY_HANDLE_FILE_INFORMATION info = {};
    if (GetFileInformationByHandle(handle, &info) == 0)
        return Facts{Kind::Other}; // a whole disk
    if ((info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return Facts{Kind::Folder};
    return Facts{Kind::File,
                 static_cast<std::int64_t>(std::uint64_t(info.nFileSizeHigh) << 32 | info.nFileSizeLow)};
}

/// Whether a pipe has bytes, has ended, or cannot be asked, as a socket. Waits at most @p waitMs.
bool isReady(HANDLE pipe, int waitMs)
{
    constexpr DWORD stepMs = 5;
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(waitMs);
    DWORD available = 0;
    while (PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr) != 0 && available == 0) {
        if (GetTickCount64() >= end)
            return false;
        Sleep(stepMs);
    }
    return true;
}

} // namespace

int SystemInput::open(const std::filesystem::path& name)
{
    const HANDLE handle = CreateFileW(name.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr); // also folders
    return handle == INVALID_HANDLE_VALUE ? failed() : descriptorOf(handle);
}

int SystemInput::openStandardInput()
{
    const HANDLE process = GetCurrentProcess();
    const HANDLE standard = GetStdHandle(STD_INPUT_HANDLE);
    if (standard == nullptr || standard == INVALID_HANDLE_VALUE) {
        errno = EBADF;
        return -1;
    }
    HANDLE handle = nullptr;
    if (DuplicateHandle(process, standard, process, &handle, 0, FALSE, DUPLICATE_SAME_ACCESS) == 0)
        return failed();
    return descriptorOf(handle);
}

void SystemInput::close(int descriptor)
{
    _close(descriptor);
}

std::optional<SystemInput::Facts> SystemInput::factsOf(int descriptor)
{
    const HANDLE handle = handleOf(descriptor);
    DWORD consoleMode = 0;
    switch (GetFileType(handle)) {
    case FILE_TYPE_DISK:
        return factsOnDisk(handle);
    case FILE_TYPE_PIPE:
        return Facts{Kind::Stream};
    case FILE_TYPE_CHAR:
        return Facts{GetConsoleMode(handle, &consoleMode) != 0 ? Kind::Stream : Kind::Other};
    default:
        return Facts{Kind::Other};
    }
}

std::int64_t SystemInput::position(int descriptor)
{
    return _telli64(descriptor);
}

std::int64_t SystemInput::read(int descriptor, char* bytes, std::size_t count, int waitMs)
{
    const HANDLE handle = handleOf(descriptor);
    if (waitMs >= 0 && GetFileType(handle) == FILE_TYPE_PIPE && !isReady(handle, waitMs)) {
        errno = EAGAIN;
        return -1;
    }
    constexpr std::size_t maxCount = std::numeric_limits<int>::max();
    return _read(descriptor, bytes,
                 static_cast<unsigned>(std::min(count, maxCount))); // 0 if a pipe has ended
}

// With an own handle: reading at a position moves that of the handle.
std::int64_t SystemInput::readAt(int descriptor, char* bytes, std::size_t count, std::int64_t position)
{
    const HANDLE handle = ReOpenFile(handleOf(descriptor), GENERIC_READ, shared, 0);
    if (handle == INVALID_HANDLE_VALUE)
        return failed();
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(position);
    place.OffsetHigh = static_cast<DWORD>(position >> 32);
    constexpr std::size_t maxCount = std::numeric_limits<int>::max();
    DWORD got = 0;
    const bool isRead =
        ReadFile(handle, bytes, static_cast<DWORD>(std::min(count, maxCount)), &got, &place) != 0 ||
        GetLastError() == ERROR_HANDLE_EOF;
    const std::int64_t result = isRead ? got : failed();
    CloseHandle(handle);
    return result;
}
