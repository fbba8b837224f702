// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVCoreCommon.h>

#include <gamut/WorkerPool.h>

#include <QtCore/QFutureWatcher>
#include <QtCore/QPromise>
#include <QtCore/QSharedPointer>
#include <QtCore/QTimer>

#include <memory>
#include <utility>

/// Runs one unit of work at a time on a private worker thread. A newer request replaces an older one.
///
/// Everything except Functor::run() happens on the thread that owns the task, which needs an event loop:
///  - start() schedules a run; of several starts in one iteration of the event loop only the last one runs;
///  - a start during a run cancels that run, whose result is discarded;
///  - finished() is emitted once for each start that was not replaced: when there is a result(), when
///    prepare() returned false, when the run threw (the result is a default value then), when there was
///    not enough memory to run it (the result is the previous one), or when there was nothing to run;
///  - if the process cannot have another thread, the run happens on the owning thread;
///  - the destructor cancels the run in progress, waits for it, and emits nothing.
template <typename T>
class KVBackgroundTask : public KVBackgroundTaskBase
{
public:
    /// A unit of work. Both threads hold shared pointers, so it exists until its run has ended.
    class Functor
    {
    public:
        virtual ~Functor() = default;
        /// Called on the owning thread just before the run. If it returns false, there is no run.
        virtual bool prepare() { return true; }
        /// The work, on the worker thread.
        virtual T run() = 0;
        /// Asks a run to stop. Called on the owning thread, before or during run().
        virtual void cancel() = 0;
    };

    KVBackgroundTask() { connect(&m_watcher, SIGNAL(finished()), this, SLOT(onFinished())); }

    ~KVBackgroundTask() override
    {
        m_enabled = false;
        // Cancel before waiting: a queued run that is cancelled is skipped.
        m_watcher.cancel();
        if (m_current)
            m_current->cancel();
        if (m_pending)
            m_pending->cancel();
        m_pool.waitForDone();
        m_timer.reset();
        m_pending.reset();
        m_current.reset();
    }

    /// Schedules @p functor after @p delayMsecs; 0 means the next iteration of the event loop. Throws
    /// std::bad_alloc if there is not enough memory; then destroy the task.
    void start(QSharedPointer<Functor> functor, int delayMsecs)
    {
        if (m_current)
            m_current->cancel();
        m_pending = functor;
        m_enabled = true;
        m_busy = true;
        m_watcher.cancel();

        // A new timer each time: deleting the old one also drops a pending time-out.
        m_timer = QSharedPointer<QTimer>(new QTimer, [](QTimer* timer) { delete timer; });
        m_timer->setSingleShot(true);
        connect(m_timer.data(), SIGNAL(timeout()), this, SLOT(onSchedule()));
        m_timer->setInterval(delayMsecs);
        m_timer->start();
    }

    /// Result of the last run that completed.
    T result() const { return m_result; }
    /// From a start until finished() is emitted for it.
    bool isBusy() const { return m_busy; }

protected:
    void onSchedule() override
    {
        // Reset first: prepare() and the slots of finished() may call start().
        const QSharedPointer<Functor> pending = m_pending;
        const QSharedPointer<QTimer> timer = m_timer; // this function may be its time-out
        m_pending.reset();
        m_timer.reset();
        if (m_enabled && pending && pending->prepare()) {
            m_current = pending;
            if (submitted())
                return;
            m_current.reset();
        }
        m_busy = false;
        Q_EMIT finished();
    }

    void onFinished() override
    {
        m_current.reset();
        if (!m_pending && m_watcher.future().resultCount() > 0) {
            m_result = m_watcher.future().resultAt(0);
            m_busy = false;
            Q_EMIT finished();
            return;
        }
        if (m_enabled)
            onSchedule();
    }

private:
    /// Whether the current functor is on its way to the worker thread. If not, its run has ended.
    bool submitted()
    {
        try {
            const auto promise = std::make_shared<QPromise<T>>();
            promise->start();
            if (m_pool.tryStart(
                    [promise, functor = m_current]() mutable { fulfil(*promise, std::move(functor)); })) {
                m_watcher.setFuture(promise->future());
                return true;
            }
            m_pool.waitForDone();
            m_result = runFunctor(m_current);
        } catch (...) { // not enough memory; the worker may be running all the same
            m_current->cancel();
            m_pool.waitForDone();
        }
        return false;
    }

    /// Runs on the worker thread.
    static void fulfil(QPromise<T>& promise, QSharedPointer<Functor> functor)
    {
        try {
            if (!promise.isCanceled())
                promise.addResult(runFunctor(functor));
        } catch (...) { // not enough memory for the result
        }
        functor.reset(); // before its end is reported
        promise.finish();
    }

    /// Runs on the worker thread. Exceptions do not reach the future.
    static T runFunctor(QSharedPointer<Functor> functor)
    {
        if (!functor)
            return T{};
        try {
            return functor->run();
        } catch (...) {
            return T{};
        }
    }

    WorkerPool m_pool;
    QFutureWatcher<T> m_watcher;
    QSharedPointer<Functor> m_current;
    QSharedPointer<Functor> m_pending;
    QSharedPointer<QTimer> m_timer;
    T m_result{};
    bool m_enabled = true;
    bool m_busy = false;
};
