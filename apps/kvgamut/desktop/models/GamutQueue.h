// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutListModel.h"
#include "model/inputs/GamutSource.h"

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>

#include <optional>

/// Computes the gamuts that a list asks for, in the background: opens the input, computes, reports
/// progress and result to the list. The GUI thread never waits for it, but in the destructor, which
/// cancels and waits until the workers have noticed.
///
/// The model must outlive it.
class GamutQueue : public QObject
{
    Q_OBJECT
public:
    explicit GamutQueue(GamutListModel& model, QObject* parent = nullptr);
    ~GamutQueue() override;

    /// Gives up the load in progress of this gamut; the list goes back to the gamut that is there.
    void cancel(const QString& id);
    void cancelAll();
    bool isBusy() const { return !m_jobs.isEmpty(); }
    /// Mean progress of the loads in progress, 0..1.
    float progress() const;

Q_SIGNALS:
    /// A load ended without a gamut and was not cancelled: why, naming the input.
    void failed(Problem problem);
    /// Loads have begun, moved on or ended: isBusy() and progress() answer anew.
    void progressed();
    /// The last load in progress has ended.
    void idle();

private:
    struct Job
    {
        int ticket = 0; ///< tells a report of this run from one of a run that was replaced
        KVCompletionProtocolPtr protocol;
    };
    struct Outcome
    {
        std::optional<GamutSource> source;
        Result<KVGamut::GamutObject> gamut = failure(KVProblemCode::Cancelled);
    };

    static Outcome compute(const QString& input, std::optional<GamutSource> source,
                           const GamutSettings& settings, KVCompletionProtocolPtr protocol);
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
    QHash<QString, std::optional<GamutSource>>
        m_sources; ///< opened once: what was looked at first is what is reloaded
    QThreadPool m_pool;
    QTimer m_ticker;
    int m_lastTicket = 0;
};
