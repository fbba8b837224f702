// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVCoreCommon.h>

#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>

/// The result of @p work, which may block for ever, for example in a read from a network drive that does not
/// answer. It runs on a thread of its own. If @p protocol is cancelled, the call returns nullopt within
/// milliseconds; the work is abandoned. It goes on by itself, and its result is destroyed on its thread.
///
/// Work must own all that it uses, because it may outlive the caller. It runs inside the call if the protocol
/// is null or if no thread can be started. Exceptions of the work are thrown by the call.
template <typename Work>
std::optional<std::invoke_result_t<Work&>> kvCallAbandonably(Work work,
                                                             const KVCompletionProtocolPtr& protocol)
{
    constexpr std::chrono::milliseconds lookInterval(2);
    using Result = std::invoke_result_t<Work&>;
    struct Shared
    {
        explicit Shared(Work w) : work(std::move(w)) {}

        Work work;
        std::mutex mutex;
        std::condition_variable ended;
        bool hasEnded = false;
        std::optional<Result> result;
        std::exception_ptr error;
    };

    if (!protocol)
        return work();
    const auto shared = std::make_shared<Shared>(std::move(work));
    const auto run = [shared] {
        std::optional<Result> result;
        std::exception_ptr error;
        try {
            result.emplace(shared->work());
        } catch (...) {
            error = std::current_exception();
        }
        const std::lock_guard lock(shared->mutex);
        shared->result = std::move(result);
        shared->error = error;
        shared->hasEnded = true;
        shared->ended.notify_all();
    };
    try {
        std::thread(run).detach();
    } catch (const std::system_error&) { // too many threads
        return shared->work();
    }

    std::unique_lock lock(shared->mutex);
    while (!shared->ended.wait_for(lock, lookInterval, [&shared] { return shared->hasEnded; })) {
        if (protocol->isCancelled())
            return std::nullopt;
    }
    if (shared->error)
        std::rethrow_exception(shared->error);
    return std::move(shared->result);
}
