// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Process exit codes.
enum ExitCode : int
{
    Done = 0,
    BadInput = 1,   ///< some input could not be used; the others were processed
    WrongUsage = 2, ///< the command line is invalid; nothing was done
    BadOutput = 3,  ///< the output could not be written, or nothing can be drawn
    Different = 4,  ///< the picture differs from its reference
    NotPassed = 5,  ///< colours lie farther outside than was allowed
};
