// SPDX-License-Identifier: Apache-2.0
#include <platform/KVCoreCommon.h>

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

#include <algorithm>
#include <vector>

namespace {

// Weak references to every task, in the order of creation. Kept alive until the process ends and
// never destroyed: tasks may end after static destruction has begun.
struct Registry
{
    QMutex mutex;
    std::vector<QWeakPointer<KVCompletionProtocol>> tasks;

    void forgetEnded()
    {
        std::erase_if(tasks, [](const auto& task) { return task.isNull(); });
    }
};

Registry& registry()
{
    static auto* theRegistry = new Registry;
    return *theRegistry;
}

} // namespace

KVCompletionProtocol::KVCompletionProtocol(const QString& name) : m_name(name) {}

KVCompletionProtocol::~KVCompletionProtocol() = default;

KVCompletionProtocolPtr KVCompletionProtocol::createTask(const QString& name)
{
    KVCompletionProtocolPtr task(new KVCompletionProtocol(name));
    auto& all = registry();
    const QMutexLocker lock(&all.mutex);
    all.forgetEnded();
    all.tasks.push_back(task);
    return task;
}

QList<KVCompletionProtocolPtr> KVCompletionProtocol::runningTasks()
{
    QList<KVCompletionProtocolPtr> running;
    auto& all = registry();
    const QMutexLocker lock(&all.mutex);
    all.forgetEnded();
    for (const auto& weak : all.tasks)
        if (auto task = weak.toStrongRef())
            running.append(std::move(task));
    return running;
}

void KVCompletionProtocol::setProgress(float value)
{
    value = std::min(value, 1.0f);
    float present = m_progress.load(std::memory_order_relaxed);
    // Comparisons with NaN are false, so NaN is ignored.
    while (value > present && !m_progress.compare_exchange_weak(present, value, std::memory_order_relaxed)) {
    }
}
