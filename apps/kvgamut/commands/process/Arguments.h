// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The process's own arguments, for Qt and for running the program again.
struct Arguments
{
    int& count;
    char** values;
};
