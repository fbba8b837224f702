// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVCoreCommon.h>

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QFutureWatcher>
#include <QtCore/QSharedPointer>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>

/// Runs one unit of work at a time on a private worker thread and lets a newer request replace an
/// older one.
///
/// Everything but Functor::run() happens on the thread that owns the task, which needs an event loop:
///  - start() schedules; starts in the same turn of the event loop coalesce to the last one;
///  - a start while a run is in flight cancels that run; its result is discarded;
///  - finished() comes once per start that was not replaced, when it has a result(), was aborted by
///    prepare(), threw (the result is then a default value), or found nothing to run;
///  - destroying the task cancels what runs, waits for it, and emits nothing.
template <typename T>
class KVBackgroundTask : public KVBackgroundTaskBase
{
public:
    /// A unit of work. Held by shared pointers on both threads: it outlives its run.
    class Functor
    {
    public:
        virtual ~Functor() = default;
        /// Called on the owning thread just before the run; false aborts this start.
        virtual bool prepare() { return true; }
        /// The work, on the worker thread.
        virtual T run() = 0;
        /// Asks a run in progress to stop; called on the owning thread while run() may execute, or
        /// before it does.
        virtual void cancel() = 0;
    };

    KVBackgroundTask()
    {
        m_pool.setMaxThreadCount(1);
        connect(&m_watcher, SIGNAL(finished()), this, SLOT(onFinished()));
    }

    ~KVBackgroundTask() override
    {
        m_enabled = false;
        // Cancelled first, a run still queued behind another skips itself when it is waited for.
        // Cleared from the pool first, it would never finish, and the wait would never end.
        m_watcher.cancel();
        if (m_current)
            m_current->cancel();
        if (m_pending)
            m_pending->cancel();
        try {
            m_watcher.waitForFinished();
        } catch (...) {
        }
        m_pool.clear();
        try {
            m_pool.waitForDone(-1);
        } catch (...) {
        }
        m_timer.reset();
        m_pending.reset();
        m_current.reset();
    }

    /// Schedules @p functor after @p delayMsecs; 0 means the next turn of the event loop.
    void start(QSharedPointer<Functor> functor, int delayMsecs)
    {
        if (m_current)
            m_current->cancel();
        m_pending = functor;
        m_enabled = true;
        m_busy = true;
        m_watcher.cancel();

        // A new timer each time: the old one is deleted with any time-out that it has not fired yet.
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
        // Taken out first: what follows runs foreign code, which may start anew.
        const QSharedPointer<Functor> pending = m_pending;
        const QSharedPointer<QTimer> timer = m_timer; // may be the one whose time-out this is
        m_pending.reset();
        m_timer.reset();
        if (m_enabled && pending && pending->prepare()) {
            m_current = pending;
            m_watcher.setFuture(QtConcurrent::run(&m_pool, &KVBackgroundTask::runFunctor, m_current));
            return;
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
    /// The worker's side. Nothing thrown reaches the future.
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

    QThreadPool m_pool;
    QFutureWatcher<T> m_watcher;
    QSharedPointer<Functor> m_current;
    QSharedPointer<Functor> m_pending;
    QSharedPointer<QTimer> m_timer;
    T m_result{};
    bool m_enabled = true;
    bool m_busy = false;
};
