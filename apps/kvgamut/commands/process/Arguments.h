// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The arguments of this process, for Qt and for running the program again.
struct Arguments
{
    int& count;
    char** values;
};
