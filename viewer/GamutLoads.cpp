// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutLoads.h>

#include <viewer/EnoughMemory.h>

#include <algorithm>
#include <utility>

namespace {

constexpr int progressIntervalMs = 50;

KVProblem problem(KVProblemCode code)
{
    return KVProblem{code, {}, {}};
}

} // namespace

GamutLoads::GamutLoads(Scene scene) : m_scene(std::move(scene))
{
    m_progressTimer.setInterval(progressIntervalMs);
    connect(&m_progressTimer, &QTimer::timeout, this, qOverload<>(&GamutLoads::reportProgress));
}

GamutLoads::~GamutLoads() = default;

void GamutLoads::start(const QString& id, const GamutRequest& request, const GamutParams& params,
                       EndFunction onEnd)
{
    Loads fresh;
    if (!kvEnoughMemoryFor([&fresh] { fresh.emplace_back(); })) {
        refuse(id, onEnd);
        return;
    }
    const bool wasLoading = isLoading();
    fresh.front().id = id;
    fresh.front().number = ++m_lastNumber;
    fresh.front().onEnd = std::move(onEnd);
    const QPointer<GamutLoads> self = m_self;
    if (!kvEnoughMemoryFor([&] { begin(fresh, request, params); }))
        endLater(fresh, fresh.cbegin(), {problem(KVProblemCode::OutOfMemory), false});
    if (!m_reportPosted)
        reportEnded();
    if (self && isLoading() != wasLoading)
        Q_EMIT loadingChanged();
}

void GamutLoads::begin(Loads& fresh, const GamutRequest& request, const GamutParams& params)
{
    Load& load = fresh.front();
    const auto gamut = m_scene.gamut(load.id);
    if (!gamut)
        return;
    auto contextGuard = m_scene.contextGuard();
    KV3DGamutObject::EndFunction onGamutEnd =
        [loads = m_self, number = load.number](const std::optional<KVProblem>& problem) {
            if (loads)
                loads->finish(number, problem);
        };

    const auto old = find(load.id);
    if (old != m_loads.cend()) {
        old->protocol->cancel(); // if the new load cannot be started, the old one ends all the same
        endLater(m_loads, old, {problem(KVProblemCode::Cancelled), true});
    }
    load.protocol = gamut->load(request, params, std::move(onGamutEnd), std::move(contextGuard));
    m_loads.splice(m_loads.cend(), fresh);
    kvEnoughMemoryFor(
        [this] { m_progressTimer.start(); }); // without it, progress is reported at the end only
}

/// The end is reported from the event loop, because the host is inside the call that starts a load.
void GamutLoads::endLater(Loads& from, Loads::const_iterator load, End end)
{
    m_ended.splice(m_ended.cend(), from, load);
    m_ended.back().end = std::move(end);
    m_reportPosted = m_reportPosted || kvEnoughMemoryFor([this] {
                         QMetaObject::invokeMethod(this, &GamutLoads::reportEnded, Qt::QueuedConnection);
                     });
}

void GamutLoads::reportEnded()
{
    m_reportPosted = false;
    const QPointer<GamutLoads> self = m_self;
    while (self && !m_ended.empty()) {
        Loads ended;
        ended.splice(ended.cend(), m_ended, m_ended.cbegin());
        const Load& load = ended.front();
        load.onEnd(load.end);
        if (self && !load.end.replaced)
            Q_EMIT failed(load.id, *load.end.problem);
    }
}

void GamutLoads::cancel(const QString& id)
{
    const auto load = find(id);
    if (load != m_loads.cend())
        load->protocol->cancel();
}

void GamutLoads::forget(const QString& id)
{
    const bool wasLoading = isLoading();
    Loads forgotten; // destroyed last, because the functions may hold objects of the host
    for (auto load = m_ended.cbegin(); load != m_ended.cend();) {
        const auto next = std::next(load);
        if (load->id == id)
            forgotten.splice(forgotten.cend(), m_ended, load);
        load = next;
    }
    const auto load = find(id);
    if (load != m_loads.cend())
        forgotten.splice(forgotten.cend(), take(load));
    if (isLoading() != wasLoading)
        Q_EMIT loadingChanged();
}

bool GamutLoads::isLoading(const QString& id) const
{
    return find(id) != m_loads.cend();
}

float GamutLoads::progress(const QString& id) const
{
    const auto load = find(id);
    return load == m_loads.cend() ? 1.0f : load->protocol->progress();
}

GamutLoads::Loads::const_iterator GamutLoads::find(const QString& id) const
{
    return std::find_if(m_loads.cbegin(), m_loads.cend(), [&id](const Load& load) { return load.id == id; });
}

GamutLoads::Loads::iterator GamutLoads::find(quint64 number)
{
    return std::find_if(m_loads.begin(), m_loads.end(),
                        [number](const Load& load) { return load.number == number; });
}

GamutLoads::Loads GamutLoads::take(Loads::const_iterator load)
{
    Loads taken;
    taken.splice(taken.cend(), m_loads, load);
    if (m_loads.empty())
        m_progressTimer.stop();
    return taken;
}

void GamutLoads::finish(quint64 number, const std::optional<KVProblem>& problem)
{
    auto load = find(number);
    if (load == m_loads.end()) // removed, but its scene object still exists
        return;
    // What cannot be prepared for lack of memory is missing in the picture.
    kvEnoughMemoryFor([&] { m_scene.prepare(load->id); });
    const QPointer<GamutLoads> self = m_self; // the host may destroy the viewer in each of the calls below
    if (!problem)
        reportProgress(*load, 1.0f);
    if (!self)
        return;
    load = find(number);
    if (load == m_loads.end())
        return;
    const Loads ended = take(load);
    const QString& id = ended.front().id;
    ended.front().onEnd({problem, false});
    if (self && problem)
        Q_EMIT failed(id, *problem);
    else if (self)
        Q_EMIT loaded(id);
    if (self && !isLoading())
        Q_EMIT loadingChanged();
}

void GamutLoads::reportProgress()
{
    // By number, because a slot may start and cancel loads.
    const QPointer<GamutLoads> self = m_self;
    quint64 reported = 0;
    const auto isNext = [&reported](const Load& load) { return load.number > reported; };
    while (self) {
        const auto load = std::find_if(m_loads.begin(), m_loads.end(), isNext); // in the order of numbers
        if (load == m_loads.end())
            return;
        reported = load->number;
        reportProgress(*load, load->protocol->progress());
    }
}

void GamutLoads::reportProgress(Load& load, float progress)
{
    if (progress <= load.progress)
        return;
    load.progress = progress;
    const QString id = load.id; // a slot may end the load
    Q_EMIT progressChanged(id, progress);
}
