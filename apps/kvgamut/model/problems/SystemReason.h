// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Problem.h"

class QFileDevice;

/// Errors of the operating system, as causes of problems.
namespace SystemReason {

/// The cause for an errno value.
Problem ofErrno(int error);
/// Why the last operation on @p file failed. Call it right after that operation: the system's error is
/// more specific than Qt's error codes.
Problem ofFile(const QFileDevice& file);

} // namespace SystemReason
