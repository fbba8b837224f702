// SPDX-License-Identifier: Apache-2.0
#include "Running.h"

#include "Failures.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

namespace py = pybind11;

namespace {

// Ctrl+C must be noticed within 50 ms, also if another thread keeps the GIL for its 5 ms.
constexpr std::chrono::milliseconds lookEvery{10};

/// All computations of the process.
struct Registry
{
    std::mutex mutex;
    std::condition_variable changed;
    bool isClosed = false; ///< the interpreter is ending
    int calls = 0;         ///< of runWork()
    int works = 0;         ///< also those whose call has ended
    std::set<KVCompletionProtocol*> tasks;
};
// Never deleted: computations in the background use it until the process ends.
Registry* registry = new Registry;

/// A computation that its call and its thread share.
struct Job
{
    Running::Work work;
    KVCompletionProtocolPtr task;
    std::mutex mutex;
    std::condition_variable changed;
    bool isDone = false;
    std::exception_ptr thrown;

    void run()
    {
        try {
            work(task);
        } catch (...) {
            thrown = std::current_exception();
        }
        work = nullptr; // large arrays
        {
            const std::lock_guard lock(registry->mutex);
            registry->tasks.erase(task.get());
        }
        const std::lock_guard lock(mutex);
        isDone = true;
        changed.notify_all();
    }

    bool waitForEnd()
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, lookEvery, [this] { return isDone; });
    }
};

/// Counts a call, so that the interpreter does not end while the call has no GIL.
class Call
{
public:
    explicit Call(KVCompletionProtocol* task)
    {
        const std::lock_guard lock(registry->mutex);
        if (registry->isClosed)
            throw std::runtime_error("the interpreter is ending");
        registry->tasks.insert(task);
        ++registry->calls;
        ++registry->works;
    }
    ~Call()
    {
        const std::lock_guard lock(registry->mutex);
        --registry->calls;
        registry->changed.notify_all();
    }
    Q_DISABLE_COPY_MOVE(Call)
};

/// Reports progress to a Python function, once for each value.
class Reporter
{
public:
    explicit Reporter(const py::object& function) : m_function(function) {}
    void report(float share)
    {
        if (m_function.is_none() || share <= m_share)
            return;
        m_share = share;
        m_function(double(share));
    }

private:
    const py::object& m_function;
    float m_share = -1.0f;
};

void countEndOfWork()
{
    const std::lock_guard lock(registry->mutex);
    --registry->works;
    registry->changed.notify_all();
}

void start(const std::shared_ptr<Job>& job)
{
    try {
        std::thread([own = job]() mutable {
            own->run();
            own.reset(); // before the process may end
            countEndOfWork();
        }).detach();
    } catch (const std::exception&) { // no more threads, or not enough memory for one
        const py::gil_scoped_release noGil;
        job->run();
        countEndOfWork();
    }
}

/// Ends all computations. Called before the interpreter ends, while threads can still take the GIL.
void endAll()
{
    const py::gil_scoped_release noGil;
    std::unique_lock lock(registry->mutex);
    registry->isClosed = true;
    for (KVCompletionProtocol* task : registry->tasks)
        task->cancel();
    registry->changed.wait(lock, [] { return registry->calls == 0 && registry->works == 0; });
}

/// A forked process has only the thread that forked. Its locks may be in any state.
void forget()
{
    registry = new Registry;
}

} // namespace

void Running::runWork(const QString& name, const py::object& progress, Work work)
{
    const auto job = std::make_shared<Job>();
    job->work = std::move(work);
    job->task = KVCompletionProtocol::createTask(name);
    const Call call(job->task.get());
    start(job);
    Reporter reporter(progress);
    try {
        for (bool done = false; !done;) {
            {
                const py::gil_scoped_release noGil;
                done = job->waitForEnd();
            }
            if (PyErr_CheckSignals() != 0)
                throw py::error_already_set();
            if (!done)
                reporter.report(job->task->progress());
        }
        if (job->task->isCancelled()) {      // by endAll(): the result has no meaning
            PyErr_SetNone(PyExc_SystemExit); // ends a thread without a message
            throw py::error_already_set();
        }
        if (job->thrown)
            std::rethrow_exception(job->thrown);
        reporter.report(1.0f);
    } catch (...) {
        job->task->cancel();
        throw;
    }
}

void Running::addTo(py::module_& module)
{
    py::module_::import("atexit").attr("register")(py::cpp_function(endAll));
    py::module_::import("os").attr("register_at_fork")(py::arg("after_in_child") = py::cpp_function(forget));
    static_cast<void>(module);
}
