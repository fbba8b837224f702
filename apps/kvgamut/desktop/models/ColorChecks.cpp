// SPDX-License-Identifier: Apache-2.0
#include "ColorChecks.h"

#include "desktop/models/Threads.h"
#include "model/checks/DeviceRoundTrip.h"

#include <QtCore/QFuture>
#include <QtCore/QMutex>
#include <QtCore/QThread>

#include <algorithm>
#include <array>
#include <atomic>
#include <new>
#include <set>
#include <utility>

namespace {

constexpr int reportMs = 150;
constexpr std::size_t blockSize = 64; // some milliseconds: the time until a cancellation is noticed

ColorChecks::Check checkOf(const KVGamut::LabPoint& lab, const KVGamut::GamutObject& gamut)
{
    const std::array<float, 3> values{lab.L, lab.a, lab.b};
    ColorChecks::Check check{gamut.nearest(values.data()).distance, 0.0f, lab};
    if (check.distance > 0.0f) {
        const KVGamut::Nearest nearest = gamut.nearestByCiede2000(values.data());
        check.de00 = nearest.distance;
        check.nearest = nearest.point;
    }
    return check;
}

} // namespace

struct ColorChecks::Colors
{
    QString file;
    int row = 0; ///< in the point layer
    QList<MeasuredPoint> points;
    qsizetype first = 0; ///< number of its first colour
};

/// The work on one gamut. Workers take the next block of colours, and the GUI thread takes what they computed
/// in the order of the colours.
struct ColorChecks::Job
{
    KVCompletionProtocolPtr task;
    int workers = 0;                         ///< that have not ended; of the GUI thread
    std::size_t collected = 0;               ///< blocks; of the GUI thread
    std::atomic<std::size_t> next{0};        ///< the number of the next block to compute
    QMutex mutex;                            ///< of what follows
    std::map<std::size_t, Results> computed; ///< blocks by their number

    std::vector<Results> takeInOrder();
    void run(const std::vector<KVGamut::LabPoint>& colors, const KVGamut::GamutObject& gamut,
             const KVProfilePtr& profile);
    Results block(std::span<const KVGamut::LabPoint> colors, const KVGamut::GamutObject& gamut,
                  const DeviceRoundTrip* device) const;
};

/// Runs on a worker. Without memory it ends early, and the results that are missing remain unknown.
void ColorChecks::Job::run(const std::vector<KVGamut::LabPoint>& colors, const KVGamut::GamutObject& gamut,
                           const KVProfilePtr& profile)
try {
    if (task->isCancelled())
        return;
    const auto device = DeviceRoundTrip::create(profile, gamut.report().intent); // one for each worker
    const std::size_t blocks = (colors.size() + blockSize - 1) / blockSize;
    for (std::size_t number = next++; number < blocks && !task->isCancelled(); number = next++) {
        const std::size_t first = number * blockSize;
        const std::size_t size = std::min(blockSize, colors.size() - first);
        Results results = block(std::span(colors).subspan(first, size), gamut, device.get());
        const QMutexLocker lock(&mutex);
        computed.emplace(number, std::move(results));
    }
} catch (const std::bad_alloc&) {
    task->cancel();
}

/// What follows the blocks that were taken before, up to the first that is still being computed.
std::vector<ColorChecks::Results> ColorChecks::Job::takeInOrder()
{
    std::vector<Results> taken;
    const QMutexLocker lock(&mutex);
    auto block = computed.begin();
    for (; block != computed.end() && block->first == collected; ++block, ++collected)
        taken.push_back(std::move(block->second));
    computed.erase(computed.begin(), block);
    return taken;
}

ColorChecks::Results ColorChecks::Job::block(std::span<const KVGamut::LabPoint> colors,
                                             const KVGamut::GamutObject& gamut,
                                             const DeviceRoundTrip* device) const
{
    Results results;
    results.checks.reserve(colors.size());
    for (const KVGamut::LabPoint& lab : colors) {
        results.checks.push_back(checkOf(lab, gamut));
        if (!device)
            continue;
        const std::vector<double> made = device->device(lab);
        results.channels = made.size();
        for (const double value : made)
            results.device.push_back(static_cast<float>(value));
    }
    return results;
}

ColorChecks::ColorChecks(const GamutListModel& gamuts, const PointLayer& points, ProfileOf profileOf,
                         QObject* parent)
    : QObject(parent), m_gamuts(gamuts), m_points(points), m_profileOf(std::move(profileOf))
{
    m_pool.setMaxThreadCount(std::max(1, QThread::idealThreadCount()));
    m_ticker.setInterval(reportMs);
    connect(&m_ticker, &QTimer::timeout, this, &ColorChecks::collect);
    connect(&points, &PointLayer::pointsChanged, this, &ColorChecks::takeColors);
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, this, &ColorChecks::refresh);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(GamutListModel::GamutRole))
                    refresh();
            });
    takeColors();
}

ColorChecks::~ColorChecks()
{
    cancelAll();
    m_pool.clear();
    m_pool.waitForDone();
}

const ColorChecks::Colors& ColorChecks::fileOf(qsizetype color) const
{
    const auto after =
        std::upper_bound(m_files.begin(), m_files.end(), color,
                         [](qsizetype number, const Colors& file) { return number < file.first; });
    return *std::prev(after);
}

const MeasuredPoint& ColorChecks::point(qsizetype color) const
{
    const Colors& file = fileOf(color);
    return file.points[color - file.first];
}

QString ColorChecks::file(qsizetype color) const
{
    return fileOf(color).file;
}

PointLayer::Place ColorChecks::place(qsizetype color) const
{
    const Colors& file = fileOf(color);
    return {file.row, color - file.first};
}

qsizetype ColorChecks::colorAt(const PointLayer::Place& place) const
{
    for (const Colors& file : m_files)
        if (file.row == place.row && place.index >= 0 && place.index < file.points.size())
            return file.first + place.index;
    return -1;
}

const ColorChecks::Check* ColorChecks::check(quint64 revision, qsizetype color) const
{
    const auto results = m_results.find(revision);
    const auto at = static_cast<std::size_t>(color);
    return results != m_results.end() && at < results->second.checks.size() ? &results->second.checks[at]
                                                                            : nullptr;
}

std::span<const float> ColorChecks::device(quint64 revision, qsizetype color) const
{
    const auto found = m_results.find(revision);
    if (found == m_results.end())
        return {};
    const Results& results = found->second;
    const std::size_t first = static_cast<std::size_t>(color) * results.channels;
    return first + results.channels <= results.device.size()
               ? std::span(results.device).subspan(first, results.channels)
               : std::span<const float>();
}

float ColorChecks::progress() const
{
    if (m_results.empty() || m_count == 0)
        return 1.0f;
    double done = 0.0;
    for (const auto& [revision, results] : m_results)
        done += static_cast<double>(results.checks.size());
    return static_cast<float>(done / (static_cast<double>(m_count) * static_cast<double>(m_results.size())));
}

void ColorChecks::takeColors()
{
    cancelAll();
    m_results.clear();
    m_files.clear();
    auto lab = std::make_shared<std::vector<KVGamut::LabPoint>>();
    for (int row = 0; row < m_points.rowCount(); ++row) {
        const PointSet& set = m_points.set(row);
        if (set.photo || set.points.isEmpty())
            continue;
        m_files.push_back({set.file, row, set.points, static_cast<qsizetype>(lab->size())});
        for (const MeasuredPoint& point : set.points)
            lab->push_back(point.lab);
    }
    m_count = static_cast<qsizetype>(lab->size());
    m_lab = lab;
    Q_EMIT colorsChanged();
    refresh();
}

/// Starts the work on new gamuts and cancels that on gamuts that are gone.
void ColorChecks::refresh()
{
    std::set<quint64> revisions;
    for (const GamutEntry& entry : m_gamuts.entries())
        if (entry.hasGamut())
            revisions.insert(entry.revision);
    for (const auto& [revision, job] : m_jobs)
        if (!revisions.contains(revision))
            job->task->cancel();
    std::erase_if(m_jobs, [&](const auto& job) { return !revisions.contains(job.first); });
    std::erase_if(m_results, [&](const auto& known) { return !revisions.contains(known.first); });
    const int active = m_gamuts.activeRow();
    if (active >= 0 && active < m_gamuts.rowCount())
        start(m_gamuts.at(active));
    for (const GamutEntry& entry : m_gamuts.entries())
        start(entry);
    Q_EMIT computed();
}

/// Does nothing if there is no gamut, or if the work on it was started already.
void ColorChecks::start(const GamutEntry& entry)
{
    if (!entry.hasGamut() || m_results.contains(entry.revision) || m_count == 0)
        return;
    m_results[entry.revision];
    const auto job = std::make_shared<Job>();
    job->task = KVCompletionProtocol::createTask(entry.title);
    m_jobs[entry.revision] = job;
    m_ticker.start();
    const auto work = [job, colors = m_lab, gamut = entry.gamut, profile = m_profileOf(entry.id)] {
        job->run(*colors, gamut, profile);
        return true; // Threads::run() needs a value
    };
    const qsizetype blocks = (m_count + qsizetype(blockSize) - 1) / qsizetype(blockSize);
    job->workers = static_cast<int>(std::min<qsizetype>(m_pool.maxThreadCount(), blocks));
    for (int worker = job->workers; worker > 0; --worker)
        Threads::run(m_pool, work).then(this, [this, revision = entry.revision, job](bool) {
            if (--job->workers == 0)
                finish(revision, job);
        });
}

void ColorChecks::cancelAll()
{
    for (const auto& [revision, job] : m_jobs)
        job->task->cancel();
    m_jobs.clear();
    m_ticker.stop();
}

/// Takes what the workers have computed since the last call.
void ColorChecks::collect()
{
    for (const auto& [revision, job] : m_jobs) {
        Results& all = m_results[revision];
        for (const Results& block : job->takeInOrder()) {
            all.checks.insert(all.checks.end(), block.checks.begin(), block.checks.end());
            all.channels = block.channels;
            all.device.insert(all.device.end(), block.device.begin(), block.device.end());
        }
    }
    Q_EMIT computed();
}

void ColorChecks::finish(quint64 revision, const std::shared_ptr<Job>& job)
{
    const auto current = m_jobs.find(revision);
    if (current == m_jobs.end() || current->second != job)
        return; // cancelled
    collect();
    m_jobs.erase(revision);
    if (m_jobs.empty())
        m_ticker.stop();
    Q_EMIT computed();
}
