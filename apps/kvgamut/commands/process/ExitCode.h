// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the program answers to the shell.
enum ExitCode : int
{
    Done = 0,
    BadInput = 1,   ///< some input could not be used; the rest was done
    WrongUsage = 2, ///< the command line was not understood; nothing was done
    BadOutput = 3,  ///< the output could not be written, or there is nothing to draw it on
    Different = 4,  ///< the picture differs from the one it was compared with
};
