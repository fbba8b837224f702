// SPDX-License-Identifier: Apache-2.0
#include "PointQueries.h"

#include "model/jobs/Jobs.h"

#include <functional>

namespace {

using KVGamut::GamutObject;
using KVGamut::LabPoint;
using KVGamut::Nearest;

// Colours between two checks for a cancellation: some milliseconds of work.
constexpr qsizetype de76Part = 2048;
constexpr qsizetype de00Part = 64;

/// Calls @p answer for the colours 0 .. @p count - 1, each time with a copy of @p gamut for the thread.
void answerAll(
    const GamutObject& gamut, std::size_t count, qsizetype partSize, const KVCompletionProtocolPtr& task,
    const std::function<void(const GamutObject& gamut, std::size_t first, std::size_t end)>& answer)
{
    const auto part = [&](qsizetype first, qsizetype end) {
        if (task && task->isCancelled())
            return;
        const GamutObject own = gamut;
        answer(own, static_cast<std::size_t>(first), static_cast<std::size_t>(end));
    };
    std::function<void(float)> progress;
    if (task)
        progress = [&task](float share) { task->setProgress(share); };
    const auto size = static_cast<qsizetype>(count);
    if (size <= partSize) // starting threads would take longer
        part(0, size);
    else
        Jobs::runInParts(size, partSize, part, progress);
}

} // namespace

std::vector<unsigned char> PointQueries::inside(const GamutObject& gamut, std::span<const LabPoint> lab,
                                                const KVCompletionProtocolPtr& task)
{
    std::vector<unsigned char> result(lab.size());
    answerAll(gamut, lab.size(), de76Part, task,
              [&](const GamutObject& own, std::size_t first, std::size_t end) {
                  for (std::size_t i = first; i < end; ++i)
                      result[i] = own.isInside(&lab[i].L) ? 1 : 0;
              });
    return result;
}

std::vector<Nearest> PointQueries::nearest(const GamutObject& gamut, std::span<const LabPoint> lab,
                                           Metric metric, const KVCompletionProtocolPtr& task)
{
    std::vector<Nearest> result(lab.size());
    const bool isDe76 = metric == Metric::De76;
    answerAll(gamut, lab.size(), isDe76 ? de76Part : de00Part, task,
              [&](const GamutObject& own, std::size_t first, std::size_t end) {
                  for (std::size_t i = first; i < end; ++i)
                      result[i] = isDe76 ? own.nearest(&lab[i].L) : own.nearestByCiede2000(&lab[i].L);
              });
    return result;
}
