// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "FileStamp.h"
#include "GamutListModel.h"
#include "model/inputs/GamutSource.h"

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>

#include <optional>

/// Computes the gamuts of a list in the background: opens each input, computes, and reports progress and
/// result to the list. An input whose file has changed is read again. The destructor cancels and waits for
/// the workers; no other function blocks.
///
/// The list must outlive it.
class GamutQueue : public QObject
{
    Q_OBJECT
public:
    explicit GamutQueue(GamutListModel& model, QObject* parent = nullptr);
    ~GamutQueue() override;

    /// Cancels the load of this gamut; the list keeps the gamut that it had before.
    void cancel(const QString& id);
    void cancelAll();
    bool isBusy() const { return !m_jobs.isEmpty(); }
    /// The profile from which the gamut with this id was computed; nullopt if there is none yet.
    std::optional<GamutSource> source(const QString& id) const { return m_sources.value(id).source; }
    /// Mean progress of the loads in progress, 0..1.
    float progress() const;

Q_SIGNALS:
    /// A load failed and was not cancelled; the problem names the input.
    void failed(const Problem& problem);
    /// A load started, progressed or ended: isBusy() and progress() may have changed.
    void progressed();
    /// The last load in progress has ended.
    void idle();

private:
    struct Job
    {
        int ticket = 0; ///< distinguishes this job from a job that it replaced
        KVCompletionProtocolPtr protocol;
    };
    /// An input, and the file that it was read from.
    struct Opened
    {
        std::optional<GamutSource> source; ///< nullopt: not yet
        std::optional<FileStamp> stamp;    ///< nullopt: built-in, or a pipe, which is read only once
    };
    struct Outcome
    {
        Opened opened;
        Result<KVGamut::GamutObject> gamut = failure(KVProblemCode::Cancelled);
    };

    static Outcome compute(const QString& input, const Opened& before, const KVGamut::Settings& settings,
                           KVCompletionProtocolPtr protocol);
    void onRowsInserted(const QModelIndex& parent, int first, int last);
    void onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last);
    void onDataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles);
    void start(int row);
    void stop(const QString& id);
    void finish(const QString& id, int ticket, const Outcome& outcome);
    void reportProgress();
    void announceEnd();

    GamutListModel& m_model;
    QHash<QString, Job> m_jobs;
    QHash<QString, Opened> m_sources; ///< of the gamuts by their id; read again when the file has changed
    QThreadPool m_pool;
    QTimer m_ticker;
    int m_lastTicket = 0;
};
