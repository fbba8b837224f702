// SPDX-License-Identifier: Apache-2.0
#include "SystemInput.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

int SystemInput::open(const std::filesystem::path& name)
{
    return ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

int SystemInput::openStandardInput()
{
    return fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0);
}

void SystemInput::close(int descriptor)
{
    ::close(descriptor);
}

std::optional<SystemInput::Facts> SystemInput::factsOf(int descriptor)
{
    struct stat facts = {};
    if (fstat(descriptor, &facts) != 0)
        return {};
    if (S_ISREG(facts.st_mode))
        return Facts{Kind::File, facts.st_size};
    if (S_ISDIR(facts.st_mode))
        return Facts{Kind::Folder};
    const bool isStream = S_ISFIFO(facts.st_mode) || S_ISSOCK(facts.st_mode) ||
                          (S_ISCHR(facts.st_mode) && isatty(descriptor) != 0);
    return Facts{isStream ? Kind::Stream : Kind::Other};
}

std::int64_t SystemInput::position(int descriptor)
{
    return lseek(descriptor, 0, SEEK_CUR);
}

std::int64_t SystemInput::read(int descriptor, char* bytes, std::size_t count, int waitMs)
{
    pollfd ready{descriptor, POLLIN, 0};
    const int events = poll(&ready, 1, waitMs);
    if (events == 0)
        errno = EAGAIN;
    return events > 0 ? ::read(descriptor, bytes, count) : -1;
}

std::int64_t SystemInput::readAt(int descriptor, char* bytes, std::size_t count, std::int64_t position)
{
    return pread(descriptor, bytes, count, position);
}
