// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"

namespace velmora {

/// Volume, in dE76 cubed, of what two closed meshes both contain; exact but for rounding.
///
/// A point is in a solid as often as the solid's faces above it look up more than down. So the common
/// volume is the sum over all pairs of faces, one of each solid, of the integral of the lower one's
/// L* over the part of the ab plane that both cover, counted positive when both look the same way
/// (up or down) and negative otherwise. A pair covers a convex polygon of at most six corners, on
/// which the lower of two planes is integrated in closed form. An ab grid finds the pairs.
/// Identical meshes give their volume, meshes apart from each other exactly 0.
double intersectionVolume(const Mesh& first, const Mesh& second);

} // namespace velmora
