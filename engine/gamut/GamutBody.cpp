// SPDX-License-Identifier: Apache-2.0
#include "GamutBody.h"

#include "Comparing.h"
#include "GamutData.h"
#include <engine/mesh/MeshBody.h>

#include <algorithm>
#include <cmath>

namespace velmora {

using KVGamut::GamutData;

Result<QSharedDataPointer<const GamutData>> bodyData(const GamutData& first, const GamutData* second,
                                                     KVGamut::Body body, const Task& task)
{
    const KVGamut::ComparisonReport comparison = compared(&first, second, task.part(0.0, 0.2));
    if (comparison.problem)
        return tl::unexpected(*comparison.problem);
    auto mesh = bodyOf(first.record.mesh, second ? second->record.mesh : Mesh(), body, task.part(0.2, 0.9));
    if (!mesh)
        return failure(mesh);
    if (mesh->isEmpty())
        return QSharedDataPointer<const GamutData>();

    GamutRecord record = first.record;
    record.mesh = *std::move(mesh);
    record.decorated = true;
    record.primaries.clear();
    record.seconds = 0.0;
    record.volume = double(comparison.values.intersection);
    record.volumeUncertainty = comparison.uncertainty.intersection;
    if (body == KVGamut::Body::Outside) {
        record.volume = std::max(0.0, first.record.volume - record.volume);
        record.volumeUncertainty = std::hypot(first.record.volumeUncertainty, record.volumeUncertainty);
    }
    const QSharedDataPointer<const GamutData> data(new GamutData(std::move(record), task));
    data->outline(task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    task.setProgress(1.0);
    return data;
}

} // namespace velmora
