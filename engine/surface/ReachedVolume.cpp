// SPDX-License-Identifier: Apache-2.0
#include "ReachedVolume.h"

#include "Refinement.h"
#include <engine/mesh/MeshVolume.h>

#include <cmath>

namespace velmora {

Result<double> reachedVolume(const Mesh& mesh, const DeviceTransform& transform, const Task& task)
{
    Mesh images = mesh;
    if (const auto halved = halveBridges(images, transform, task); !halved)
        return failure(halved);
    return signedVolume(images);
}

Result<void> checkFilled(const Mesh& hull, const Mesh& coarse, const DeviceTransform& transform,
                         const Task& task)
{
    constexpr double reachedTolerance = 0.02, gridTolerance = 0.1;
    const auto reached = reachedVolume(hull, transform, task);
    if (!reached)
        return failure(reached);
    const double volume = signedVolume(hull);
    if (std::abs(*reached - volume) > reachedTolerance * volume ||
        std::abs(signedVolume(coarse) - volume) > gridTolerance * volume)
        return failure(KVProblemCode::UnresolvedConcavity);
    return {};
}

} // namespace velmora
