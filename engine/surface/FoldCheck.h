// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// How much of a three-channel device map runs backwards.
struct FoldCheck
{
    double foldShare = 1.0;   ///< volume of the tetrahedra of the minority orientation over all, 0..0.5
    double sweptVolume = 0.0; ///< sum of the tetrahedra's absolute volumes, dE76 cubed
};

/// Divides the device cube into (N-1)^3 cells of six tetrahedra each (Kuhn 1960) and looks at the
/// signs of their images' volumes, which stand for the sign of the map's Jacobian determinant. A map
/// without a fold gives one sign; then the image of the cube's surface bounds the image of the cube.
[[nodiscard]] Result<FoldCheck> checkFolds(const DeviceTransform& transform, const DeviceNodes& nodes,
                                           const Task& task);

} // namespace velmora
