// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/inputs/ThreadCheck.h"

#include <QtConcurrent/QtConcurrentRun>

#include <QtCore/QFuture>
#include <QtCore/QPromise>
#include <QtCore/QThreadPool>

#include <functional>
#include <type_traits>

/// Work on other threads, also where the system has no more threads (a limit of processes, or of memory). A
/// QThreadPool that cannot start its thread never runs anything, and waits for it for ever.
namespace Threads {

/// QtConcurrent::run(); without threads the function runs inside the call.
template <typename Function, typename... Arguments>
auto run(QThreadPool& pool, Function&& function, Arguments&&... arguments)
{
    using Value = std::invoke_result_t<std::decay_t<Function>, std::decay_t<Arguments>...>;
    if (threadsAreAvailable())
        return QtConcurrent::run(&pool, std::forward<Function>(function),
                                 std::forward<Arguments>(arguments)...);
    QPromise<Value> promise;
    promise.start();
    promise.addResult(std::invoke(std::forward<Function>(function), std::forward<Arguments>(arguments)...));
    promise.finish();
    return promise.future();
}

} // namespace Threads
