// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Problem.h"

class QFileDevice;

/// Why the operating system refused something, as the cause of a problem.
namespace SystemReason {

/// Of an errno value.
Problem ofErrno(int error);
/// Why the last operation on @p file failed. Call it right after that operation: errno tells more than Qt's
/// error codes.
Problem ofFile(const QFileDevice& file);

} // namespace SystemReason
