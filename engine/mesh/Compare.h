// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include <engine/base/Task.h>

namespace velmora {

/// Volume of the intersection of two closed meshes, in dE76 cubed; exact except for rounding.
///
/// The winding number of a solid at a point is the number of faces above the point that face up, minus the
/// number that face down. The common volume is therefore a sum over all pairs of faces, one of each solid:
/// the integral of the lower face's L* over the part of the ab plane that both cover, positive if both face
/// the same way (up or down), else negative. A pair covers a convex polygon of at most six vertices, on
/// which the minimum of two linear functions is integrated in closed form. An ab grid finds the pairs.
/// Identical meshes give their volume, disjoint meshes exactly 0.
/// If @p task is cancelled, the result has no meaning.
[[nodiscard]] double intersectionVolume(const Mesh& first, const Mesh& second, const Task& task = {});

} // namespace velmora
