// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVExport.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>

#include <atomic>

/// @file
/// Core services of the viewer and the colour engine: logging, the base class of background tasks, and
/// progress and cancellation across threads.

/// Writes @p message to the debug log, in the logging category "kv.core".
/// The filter rule "kv.core.debug=false" disables it.
/// Callable from any thread.
KVCORECOMMON_EXPORT void KVLogDebug(const QString& message);

/// QObject base of KVBackgroundTask, which is a class template and cannot have a meta-object itself.
class KVCORECOMMON_EXPORT KVBackgroundTaskBase : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    ~KVBackgroundTaskBase() override;

Q_SIGNALS:
    /// A start is completed: its run ended with or without a result, or there was nothing to run.
    /// Emitted on the thread of the task, once for each start that was not replaced by a newer one.
    void finished();

protected Q_SLOTS:
    /// The scheduling timer fired: starts the pending run.
    virtual void onSchedule() = 0;
    /// The current run has ended.
    virtual void onFinished() = 0;
};

class KVCompletionProtocol;
/// Shared handle of a computation. The computation is listed until the last handle is destroyed.
using KVCompletionProtocolPtr = QSharedPointer<KVCompletionProtocol>;

/// Progress and cancellation of one computation, shared between the computing and the waiting side.
///
/// All functions may be called on any thread at any time.
class KVCORECOMMON_EXPORT KVCompletionProtocol
{
public:
    /// Creates the handle of a new computation and lists it among the running tasks.
    static KVCompletionProtocolPtr createTask(const QString& name);

    /// The computations of this process that still have a handle, oldest first. The returned handles keep
    /// their computations listed; do not store them.
    static QList<KVCompletionProtocolPtr> runningTasks();

    ~KVCompletionProtocol();
    Q_DISABLE_COPY_MOVE(KVCompletionProtocol)

    /// Name of the computation, for a progress display; fixed at creation.
    QString name() const { return m_name; }

    /// Requests cancellation. The computation stops at its next check; further calls have no effect.
    void cancel() { m_cancelled.store(true, std::memory_order_relaxed); }
    /// Whether cancellation was requested. The computation checks this regularly.
    bool isCancelled() const { return m_cancelled.load(std::memory_order_relaxed); }

    /// Finished share of the work, 0..1. Never decreases.
    float progress() const { return m_progress.load(std::memory_order_relaxed); }
    /// Reports progress. Values are clamped to 0..1; a value below the current one, or NaN, has no effect.
    void setProgress(float value);

private:
    explicit KVCompletionProtocol(const QString& name);

    const QString m_name;
    std::atomic<float> m_progress{0.0f};
    std::atomic<bool> m_cancelled{false};
};
