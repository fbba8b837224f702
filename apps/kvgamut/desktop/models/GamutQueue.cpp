// SPDX-License-Identifier: Apache-2.0
#include "GamutQueue.h"

#include "desktop/models/Threads.h"
#include "model/inputs/BuiltInNames.h"
#include "model/inputs/InputName.h"

#include <QtCore/QFuture>
#include <QtCore/QThread>

#include <algorithm>

namespace {

constexpr int shareReportMs = 80;

/// Of the file of an input. A cancelled task has none.
std::optional<FileStamp> stampOf(const QString& input, const KVCompletionProtocolPtr& task)
{
    const Result<InputName> name = InputName::of(input);
    if (!name || BuiltInNames::all().contains(name->file))
        return {};
    return FileStamp::of(name->file, task);
}

} // namespace

GamutQueue::GamutQueue(GamutListModel& model, QObject* parent) : QObject(parent), m_model(model)
{
    // leave one processor for the window
    m_pool.setMaxThreadCount(std::max(1, QThread::idealThreadCount() - 1));
    m_ticker.setInterval(shareReportMs);
    connect(&m_ticker, &QTimer::timeout, this, &GamutQueue::reportProgress);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &GamutQueue::onRowsInserted);
    connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &GamutQueue::onRowsAboutToBeRemoved);
    connect(&model, &QAbstractItemModel::dataChanged, this, &GamutQueue::onDataChanged);
}

GamutQueue::~GamutQueue()
{
    for (const Job& job : std::as_const(m_jobs))
        job.protocol->cancel();
    m_pool.waitForDone();
}

void GamutQueue::cancel(const QString& id)
{
    if (!m_jobs.contains(id))
        return;
    stop(id);
    m_model.abandonLoad(m_model.rowOf(id));
    announceEnd();
}

void GamutQueue::cancelAll()
{
    const QStringList ids = m_jobs.keys();
    for (const QString& id : ids)
        cancel(id);
}

float GamutQueue::progress() const
{
    float sum = 0.0f;
    for (const Job& job : m_jobs)
        sum += job.protocol->progress();
    return m_jobs.isEmpty() ? 0.0f : sum / static_cast<float>(m_jobs.size());
}

void GamutQueue::onRowsInserted(const QModelIndex&, int first, int last)
{
    for (int row = first; row <= last; ++row)
        start(row);
}

void GamutQueue::onRowsAboutToBeRemoved(const QModelIndex&, int first, int last)
{
    for (int row = first; row <= last; ++row) {
        const QString id = m_model.at(row).id;
        m_sources.remove(id);
        if (!m_jobs.contains(id))
            continue;
        stop(id);
        announceEnd();
    }
}

void GamutQueue::onDataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles)
{
    if (!roles.contains(GamutListModel::SettingsRole))
        return;
    for (int row = first.row(); row <= last.row(); ++row)
        start(row);
}

/// Runs on a worker.
GamutQueue::Outcome GamutQueue::compute(const QString& input, const Opened& before,
                                        const KVGamut::Settings& settings, KVCompletionProtocolPtr protocol)
{
    Outcome outcome;
    if (protocol->isCancelled()) // cancelled while it waited for a thread
        return outcome;
    outcome.opened = before;
    const std::optional<FileStamp> stamp = stampOf(input, protocol);
    if (!before.source || before.stamp != stamp) {
        Result<GamutSource> opened = GamutSource::open(input, protocol);
        if (!opened) {
            outcome.gamut = failure(opened.error());
            return outcome;
        }
        outcome.opened = {*std::move(opened), stamp};
    }
    outcome.gamut = outcome.opened.source->compute(settings, &protocol);
    return outcome;
}

void GamutQueue::start(int row)
{
    const GamutEntry& entry = m_model.at(row);
    const QString id = entry.id;
    stop(id);
    const Job job{++m_lastTicket, KVCompletionProtocol::createTask(entry.title)};
    m_jobs.insert(id, job);
    Threads::run(m_pool, &GamutQueue::compute, entry.input, m_sources.value(id), entry.settings, job.protocol)
        .then(this, [this, id, ticket = job.ticket](const Outcome& outcome) { finish(id, ticket, outcome); });
    m_ticker.start();
    Q_EMIT progressed();
}

/// Cancels the job and removes it; finish() ignores its result.
void GamutQueue::stop(const QString& id)
{
    const Job job = m_jobs.take(id);
    if (job.protocol)
        job.protocol->cancel();
}

void GamutQueue::finish(const QString& id, int ticket, const Outcome& outcome)
{
    if (m_jobs.value(id).ticket != ticket)
        return;
    m_jobs.remove(id);
    const int row = m_model.rowOf(id);
    if (outcome.gamut) {
        m_sources.insert(id, outcome.opened);
        m_model.setGamut(row, *outcome.gamut);
    } else {
        m_model.abandonLoad(row);
        Q_EMIT failed(outcome.gamut.error());
    }
    announceEnd();
}

void GamutQueue::reportProgress()
{
    for (auto job = m_jobs.cbegin(); job != m_jobs.cend(); ++job)
        m_model.setProgress(m_model.rowOf(job.key()), job->protocol->progress());
    Q_EMIT progressed();
}

void GamutQueue::announceEnd()
{
    if (m_jobs.isEmpty())
        m_ticker.stop();
    Q_EMIT progressed();
    if (m_jobs.isEmpty())
        Q_EMIT idle();
}
