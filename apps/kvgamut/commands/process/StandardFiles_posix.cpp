// SPDX-License-Identifier: Apache-2.0
#include "StandardFiles.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

void StandardFiles::occupyClosed()
{
    for (int file = STDIN_FILENO; file <= STDERR_FILENO; ++file)
        if (fcntl(file, F_GETFD) == -1) // open() uses the lowest free descriptor
            open("/dev/null", file == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

void StandardFiles::ignoreBrokenPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

void StandardFiles::passBytes() {}
