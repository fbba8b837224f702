// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace kvtest {

/// The call of the operating system in which a stalled file does not answer.
enum class StalledCall
{
    None,
    Status,
    Open,
    Read,
};

/// From now on @p call blocks for files whose name contains "stalled", like a file on a network drive that
/// does not answer. For programs that link StalledFile.cpp.
void stallIn(StalledCall call);
/// Whether a thread is blocked.
bool isStalled();
/// Lets the blocked threads go on. At the end of the process this happens during static destruction.
void releaseStalled();

} // namespace kvtest
