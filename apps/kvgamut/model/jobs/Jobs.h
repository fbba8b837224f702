// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <functional>

/// Independent pieces of work at the same time on the machine's cores.
///
/// The functions block until all work is done. What a piece of work throws, the caller gets when the others
/// have ended. If threads cannot be started, fewer do the work, or the calling thread.
namespace Jobs {

/// The maximum number of threads that work at the same time; the number of cores by default.
int maxThreads();
/// Sets it, to 1 or more, for the whole program. Not while work is going on.
void setMaxThreads(int count);

/// Calls @p job with 0 .. @p count - 1.
/// @param whileWaiting called on the calling thread a few times each second with the number of finished jobs
void run(qsizetype count, const std::function<void(qsizetype)>& job,
         const std::function<void(qsizetype done)>& whileWaiting = {});

/// Calls @p part with ranges first .. end - 1 of at most @p partSize, which together are 0 .. @p count - 1.
/// @param progress as whileWaiting, with the share that is done, 0..1
void runInParts(qsizetype count, qsizetype partSize,
                const std::function<void(qsizetype first, qsizetype end)>& part,
                const std::function<void(float)>& progress = {});

/// Makes the pieces 0 .. @p count - 1 at the same time, and gives them to @p take in their order on the
/// calling thread. Only a few pieces exist at a time, so that the memory needed does not depend on @p count.
/// @return false if @p take has returned false, which ends the work
bool inOrder(qsizetype count, const std::function<QByteArray(qsizetype)>& make,
             const std::function<bool(const QByteArray&)>& take);

} // namespace Jobs
