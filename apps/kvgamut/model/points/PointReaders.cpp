// SPDX-License-Identifier: Apache-2.0
#include "PointReaders.h"

#include "model/inputs/InputGate.h"

Result<void> PointReaders::add(PointSet& set, MeasuredPoint point, const KVCompletionProtocolPtr& task)
{
    if (InputGate::isCancelled(task))
        return failure(KVProblemCode::Cancelled);
    if (set.points.size() >= InputLimits::maxPoints)
        return failure(ProblemCode::TooManyPoints, {QString::number(InputLimits::maxPoints)});
    point.name.truncate(InputLimits::maxNameLength);
    set.points.append(std::move(point));
    return {};
}
