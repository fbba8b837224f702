// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutMeshes.h>
#include <gamut/WireframeMaker.h>

#include <utility>

/// Shared by both threads. The worker writes the geometry before its run ends.
struct WireframeMaker::Work
{
    const KVGamut::GamutObject gamut;
    const VertexStyle style;
    const KVCompletionProtocolPtr protocol;
    GeometryData geometry;
};

class WireframeMaker::Functor : public KVBackgroundTask<void*>::Functor
{
public:
    explicit Functor(std::shared_ptr<Work> work) : m_work(std::move(work)) {}

    void* run() override
    {
        m_work->geometry = kvGamutWireframe(m_work->gamut, m_work->style,
                                            [this] { return m_work->protocol->isCancelled(); });
        return nullptr;
    }

    void cancel() override { m_work->protocol->cancel(); }

private:
    const std::shared_ptr<Work> m_work;
};

WireframeMaker::WireframeMaker() = default;

WireframeMaker::~WireframeMaker()
{
    cancel();
}

void WireframeMaker::start(const KVGamut::GamutObject& gamut, const VertexStyle& style, MadeFunction onMade)
{
    cancel();
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("GamutWireframe"));
    const std::shared_ptr<Work> work(new Work{gamut, style, std::move(protocol), {}});
    const QSharedPointer<KVBackgroundTask<void*>> task(new KVBackgroundTask<void*>);
    QObject::connect(task.data(), &KVBackgroundTaskBase::finished, task.data(),
                     [this, work, onMade = std::move(onMade)] {
                         m_work.reset();
                         onMade(work->geometry);
                     });
    task->start(QSharedPointer<KVBackgroundTask<void*>::Functor>(new Functor(work)), 0);
    m_task = task;
    m_work = work;
}

void WireframeMaker::cancel()
{
    m_task.reset();
    m_work.reset();
}
