// SPDX-License-Identifier: Apache-2.0
#include <gamut/GeometryMaker.h>

#include <utility>

/// Shared by both threads. The worker writes the geometry before its run ends.
struct GeometryMaker::Work
{
    const MakeFunction make;
    const KVCompletionProtocolPtr protocol;
    GeometryData geometry;
};

class GeometryMaker::Functor : public KVBackgroundTask<void*>::Functor
{
public:
    explicit Functor(std::shared_ptr<Work> work) : m_work(std::move(work)) {}

    void* run() override
    {
        m_work->geometry = m_work->make([this] { return m_work->protocol->isCancelled(); });
        return nullptr;
    }

    void cancel() override { m_work->protocol->cancel(); }

private:
    const std::shared_ptr<Work> m_work;
};

GeometryMaker::GeometryMaker(QString taskName) : m_taskName(std::move(taskName)) {}

GeometryMaker::~GeometryMaker()
{
    cancel();
}

void GeometryMaker::start(MakeFunction make, MadeFunction onMade)
{
    cancel();
    auto protocol = KVCompletionProtocol::createTask(m_taskName);
    const std::shared_ptr<Work> work(new Work{std::move(make), std::move(protocol), {}});
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

void GeometryMaker::cancel()
{
    m_task.reset();
    m_work.reset();
}
