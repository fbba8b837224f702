// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVExport.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>

#include <atomic>

/// @file
/// The core services that the viewer and the colour engine stand on: one log line, the base of
/// background tasks, and the protocol that carries progress and cancellation across threads.

/// Writes @p message to the debug log, in the logging category "kv.core".
/// A host silences it with the filter rule "kv.core.debug=false".
/// Callable from any thread.
KVCORECOMMON_EXPORT void KVLogDebug(const QString& message);

/// QObject base of KVBackgroundTask: a class template cannot carry a meta-object, this can.
class KVCORECOMMON_EXPORT KVBackgroundTaskBase : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    ~KVBackgroundTaskBase() override;

Q_SIGNALS:
    /// A start has come to its end: with a result, aborted, or with nothing left to run.
    /// Emitted on the thread that owns the task, once per start.
    void finished();

protected Q_SLOTS:
    /// The scheduling timer fired: submit what is pending.
    virtual void onSchedule() = 0;
    /// The run that is being watched came to its end.
    virtual void onFinished() = 0;
};

class KVCompletionProtocol;
/// Shared handle on a running computation; the computation is listed until the last handle goes.
using KVCompletionProtocolPtr = QSharedPointer<KVCompletionProtocol>;

/// Progress and cancellation of one computation, shared by who computes and who waits.
///
/// Every operation may be called from any thread at any time.
class KVCORECOMMON_EXPORT KVCompletionProtocol
{
public:
    /// Creates the handle of a new computation and lists it among the running tasks.
    static KVCompletionProtocolPtr createTask(const QString& name);

    /// The computations of this process whose handle is still held by someone, oldest first.
    /// The handles in the answer keep their tasks listed: drop them after use.
    static QList<KVCompletionProtocolPtr> runningTasks();

    ~KVCompletionProtocol();
    Q_DISABLE_COPY_MOVE(KVCompletionProtocol)

    /// What is being computed, for a progress bar; fixed at creation.
    QString name() const { return m_name; }

    /// Asks the computation to stop. It stops at its next check; asking twice changes nothing.
    void cancel() { m_cancelled.store(true, std::memory_order_relaxed); }
    /// Whether someone asked to stop; for the computation to look at now and then.
    bool isCancelled() const { return m_cancelled.load(std::memory_order_relaxed); }

    /// Share of the work done, 0..1. Never decreases.
    float progress() const { return m_progress.load(std::memory_order_relaxed); }
    /// Reports progress. Values are held to 0..1; a value below the present one, or one that is not
    /// a number, changes nothing.
    void setProgress(float value);

private:
    explicit KVCompletionProtocol(const QString& name);

    const QString m_name;
    std::atomic<float> m_progress{0.0f};
    std::atomic<bool> m_cancelled{false};
};
