// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Arguments.h"
#include "model/problems/Problem.h"

/// An X server without a monitor, for machines without a display.
namespace VirtualScreen {

/// Replaces this process by xvfb-run, which runs the program again with the same arguments on an X server of
/// its own. Does not return on success; the exit code is then that of the second run.
/// @return why that failed
Problem runAgain(Arguments arguments);

} // namespace VirtualScreen
