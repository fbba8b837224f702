// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CellUnion.h"
#include <engine/mesh/Mesh.h>

namespace velmora {

/// What a device's colours cover of parallel lines, see cellUnion().
struct CoveredLines
{
    LineGrid lines;
    double length = 0.0; ///< of the covered parts of all lines
};
/// @return fails as cellUnion()
[[nodiscard]] Result<CoveredLines> coveredLines(const DeviceTransform& transform, const DeviceNodes& nodes,
                                                UnionBudget& budget, const Task& task);

/// Volume of all colours that a device reaches, in dE76 cubed.
///
/// It is measured along lines parallel to L*. The volume of @p surface, which should be near the solid's
/// surface, is known exactly; only the difference between both is measured, on the same lines. So most of the
/// error of the measurement cancels: it is about a hundredth of that without the surface.
/// @return fails only if @p task is cancelled
[[nodiscard]] Result<double> coveredVolume(const CoveredLines& covered, const Mesh& surface,
                                           const Task& task);

} // namespace velmora
