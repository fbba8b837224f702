// SPDX-License-Identifier: Apache-2.0
#include "Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

bool Terminal::showsErrors()
{
    return isatty(STDERR_FILENO) != 0;
}

int Terminal::columns()
{
    winsize size = {};
    const bool isKnown = isatty(STDOUT_FILENO) != 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0;
    return isKnown ? size.ws_col : 0;
}
