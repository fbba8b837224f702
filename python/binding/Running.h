// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVCoreCommon.h>

#include <pybind11/pybind11.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

/// Computations for Python: each runs on a thread of its own without the GIL, while the calling thread looks
/// for signals such as Ctrl+C, and reports progress, every few milliseconds. After a signal or an exception
/// of the progress function the call ends at once; the computation is cancelled and ends in the background.
/// So @p work must own all that it uses, and must not use Python.
namespace Running {

using Work = std::function<void(const KVCompletionProtocolPtr& task)>;

/// Blocks until @p work has ended. Needs the GIL, which it releases.
/// @param name of the computation, among the running tasks of the process
/// @param progress called with the share that is done, 0..1; or None
/// Throws what @p work or @p progress throws, and the exception of a signal's handler.
void runWork(const QString& name, const pybind11::object& progress, Work work);

/// The same for a work with a result.
template <typename T>
T run(const QString& name, const pybind11::object& progress,
      std::function<T(const KVCompletionProtocolPtr&)> work)
{
    const auto result = std::make_shared<std::optional<T>>();
    runWork(name, progress, [result, work = std::move(work)](const KVCompletionProtocolPtr& task) {
        result->emplace(work(task));
    });
    return std::move(**result);
}

/// Registers the functions that end computations before the interpreter does, and that forget those of the
/// parent process after a fork.
void addTo(pybind11::module_& module);

} // namespace Running
