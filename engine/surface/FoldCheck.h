// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// How much of a three-channel device map reverses orientation.
struct FoldCheck
{
    double foldShare = 1.0;   ///< share of the tetrahedra of the minority orientation in the volume, 0..0.5
    double sweptVolume = 0.0; ///< sum of the tetrahedra's absolute volumes, dE76 cubed
};

/// Divides the device cube into (N-1)^3 cells of six tetrahedra each (Kuhn 1960) and compares the signs of
/// their images' volumes, which approximate the sign of the map's Jacobian determinant. Without a fold all
/// signs are equal; then the image of the cube's surface bounds the image of the cube.
/// @param nodes three axes of N nodes each
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<FoldCheck> checkFolds(const DeviceTransform& transform, const DeviceNodes& nodes,
                                           const Task& task);

} // namespace velmora
