// SPDX-License-Identifier: Apache-2.0
#include "Desktop.h"

const char* Desktop::platform()
{
    return "windows";
}
