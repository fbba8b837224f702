// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CellUnion.h"
#include <engine/mesh/Mesh.h>

namespace velmora {

/// Volume of all colours that a device reaches, see cellUnion(), in dE76 cubed.
///
/// It is measured along lines parallel to L*. The volume of @p surface, which should be near the solid's
/// surface, is known exactly; only the difference between both is measured, on the same lines. So most of the
/// error of the measurement cancels: it is about a hundredth of that without the surface.
/// @return fails as cellUnion()
[[nodiscard]] Result<double> coveredVolume(const DeviceTransform& transform, const DeviceNodes& nodes,
                                           const Mesh& surface, UnionBudget& budget, const Task& task);

} // namespace velmora
