// SPDX-License-Identifier: Apache-2.0
#include "GamutBatch.h"

#include <QtCore/QSemaphore>
#include <QtCore/QThreadPool>

#include <algorithm>

namespace {

constexpr int progressEveryMs = 100;

float meanProgress(const QList<KVCompletionProtocolPtr>& tasks)
{
    float sum = 0.0f;
    for (const auto& task : tasks)
        sum += task->progress();
    return sum / static_cast<float>(std::max<qsizetype>(1, tasks.size()));
}

} // namespace

QList<Result<KVGamut::GamutObject>> GamutBatch::compute(const QList<Result<GamutSource>>& sources,
                                                        const KVGamut::Settings& settings,
                                                        const std::function<void(float)>& progress)
{
    QList<Result<KVGamut::GamutObject>> gamuts(sources.size());
    QList<KVCompletionProtocolPtr> tasks;
    for (const auto& source : sources)
        tasks.append(KVCompletionProtocol::createTask(source ? source->name() : QString()));

    QSemaphore done;
    QThreadPool pool;
    for (qsizetype i = 0; i < sources.size(); ++i)
        pool.start([&source = sources[i], &gamut = gamuts[i], &settings, task = tasks[i], &done]() mutable {
            gamut =
                source.and_then([&](const GamutSource& opened) { return opened.compute(settings, &task); });
            task->setProgress(1.0f);
            done.release();
        });
    const int count = static_cast<int>(sources.size());
    while (!done.tryAcquire(count, progressEveryMs))
        progress(meanProgress(tasks));
    return gamuts;
}
