// SPDX-License-Identifier: Apache-2.0
#include "GamutBatch.h"

#include "model/jobs/Jobs.h"

#include <algorithm>

namespace {

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
                                                        const std::function<void(float)>& progress,
                                                        KVGamut::Construction construction)
{
    QList<Result<KVGamut::GamutObject>> gamuts(sources.size());
    QList<KVCompletionProtocolPtr> tasks;
    for (const auto& source : sources)
        tasks.append(KVCompletionProtocol::createTask(source ? source->name() : QString()));

    Result<KVGamut::GamutObject>* results = gamuts.data(); // a list that is shared would be copied
    const auto job = [&, results](qsizetype i) {
        KVCompletionProtocolPtr task = tasks.at(i);
        results[i] = sources.at(i).and_then(
            [&](const GamutSource& opened) { return opened.compute(settings, &task, construction); });
        task->setProgress(1.0f);
    };
    Jobs::run(sources.size(), job, [&](qsizetype) { progress(meanProgress(tasks)); });
    return gamuts;
}
