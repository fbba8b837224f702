// SPDX-License-Identifier: Apache-2.0
#include "LastError.h"

#include <cerrno>

int lastError()
{
    return errno;
}
