// SPDX-License-Identifier: Apache-2.0
#include "ProgramArguments.h"

char** ProgramArguments::asBytes(int&, char** values)
{
    return values;
}
