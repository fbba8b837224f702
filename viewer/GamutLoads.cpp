// SPDX-License-Identifier: Apache-2.0
#include <viewer/GamutLoads.h>

#include <QtCore/QPointer>

#include <utility>

namespace {
constexpr int progressIntervalMs = 50;
} // namespace

GamutLoads::GamutLoads(std::function<void(const QString&)> prepare) : m_prepare(std::move(prepare))
{
    m_progressTimer.setInterval(progressIntervalMs);
    connect(&m_progressTimer, &QTimer::timeout, this, qOverload<>(&GamutLoads::reportProgress));
}

GamutLoads::~GamutLoads() = default;

void GamutLoads::start(KV3DGamutObject& gamut, const GamutRequest& request,
                       const QHash<QString, QVariant>& params, KV3DGamutObject::ContextGuard contextGuard,
                       EndFunction onEnd)
{
    const QString id = gamut.id();
    const bool wasLoading = isLoading();
    if (isLoading(id))
        reportReplaced(take(id).onEnd);

    const quint64 number = ++m_lastNumber;
    const auto protocol = gamut.load(
        request, params,
        [loads = QPointer<GamutLoads>(this), id, number](const KV3DGamutObject::LoadEnd& end) {
            if (loads)
                loads->finish(id, number, end);
        },
        std::move(contextGuard));
    m_loads.insert(id, Load{std::move(onEnd), protocol, 0.0f, number});
    m_progressTimer.start();
    if (!wasLoading)
        Q_EMIT loadingChanged();
}

/// Reports from the event loop, because the host is inside the call that starts the new load.
void GamutLoads::reportReplaced(EndFunction onEnd)
{
    QMetaObject::invokeMethod(
        this,
        [onEnd = std::move(onEnd)] {
            onEnd({KVProblem{KVProblemCode::Cancelled, {}, {}}, false, true});
        },
        Qt::QueuedConnection);
}

void GamutLoads::cancel(const QString& id)
{
    const auto load = m_loads.constFind(id);
    if (load != m_loads.constEnd())
        load->protocol->cancel();
}

void GamutLoads::forget(const QString& id)
{
    if (!isLoading(id))
        return;
    const Load load = take(id);
    if (!isLoading())
        Q_EMIT loadingChanged();
}

float GamutLoads::progress(const QString& id) const
{
    const auto load = m_loads.constFind(id);
    return load == m_loads.constEnd() ? 1.0f : load->protocol->progress();
}

GamutLoads::Load GamutLoads::take(const QString& id)
{
    Load load = m_loads.take(id);
    if (m_loads.isEmpty())
        m_progressTimer.stop();
    return load;
}

void GamutLoads::finish(const QString& id, quint64 number, const KV3DGamutObject::LoadEnd& end)
{
    if (m_loads.value(id).number != number) // removed, but its scene object still exists
        return;
    m_prepare(id);
    const QPointer<GamutLoads> self(this); // the host may destroy the viewer in each of the calls below
    if (!end.problem)
        reportProgress(id, 1.0f);
    if (!self || m_loads.value(id).number != number)
        return;
    const Load load = take(id);
    load.onEnd({end.problem, end.thrown, false});
    if (self && end.problem)
        Q_EMIT failed(id, *end.problem);
    else if (self)
        Q_EMIT loaded(id);
    if (self && !isLoading())
        Q_EMIT loadingChanged();
}

void GamutLoads::reportProgress()
{
    const QPointer<GamutLoads> self(this);
    const QStringList ids = m_loads.keys(); // a slot may start and cancel loads
    for (const QString& id : ids) {
        if (self && isLoading(id))
            reportProgress(id, progress(id));
    }
}

void GamutLoads::reportProgress(const QString& id, float progress)
{
    float& last = m_loads[id].progress;
    if (progress <= last)
        return;
    last = progress;
    Q_EMIT progressChanged(id, progress);
}
