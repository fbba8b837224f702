// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceSolid.h"
#include <engine/mesh/LineCover.h>

namespace velmora {

/// The device colours of all nodes, with the last channel counting fastest. Incomplete if @p task is
/// cancelled.
[[nodiscard]] std::vector<float> gridColours(const DeviceNodes& nodes, const Task& task);

/// Limits how many intersections of lines and tetrahedra are computed for one gamut.
struct UnionBudget
{
    std::size_t left = 80'000'000;
};

/// @p p turned around the L* axis by 0.5 radians. The lines of cellUnion() are at equal distances in this
/// frame: a facet of a solid that is parallel to L* and to another axis would lie between two rows of lines.
[[nodiscard]] Vec3 turned(const Vec3& p);

/// All colours that a device reaches, along lines parallel to L*: the union of the images of all cells of the
/// device grid with @p nodes, those in the interior of the hypercube included.
///
/// The image of a cell is that of its three-dimensional faces, each divided into six tetrahedra (Kuhn 1960):
/// a continuous map that covers a point of space with the cell also covers it with the cell's boundary, and
/// so on down to three dimensions. Cells whose image lies where the lines are covered already are left out,
/// so that the time is about proportional to the number of cells at the surface.
/// @param linesAcross the number of lines is about the square of it; they are parallel to L* and at equal
///        distances in the frame of turned()
/// @return fails as DeviceTransform::toLab(), and with TooManyOverlaps if @p budget is exceeded
[[nodiscard]] Result<LineCover> cellUnion(const DeviceTransform& transform, const DeviceNodes& nodes,
                                          int linesAcross, UnionBudget& budget, const Task& task);

/// The tetrahedra of cellUnion() that are at the surface of the solid or near it, and some of its interior:
/// they cover what all cells cover.
/// @return fails as cellUnion()
[[nodiscard]] Result<DeviceSolid> cellSolid(const DeviceTransform& transform, const DeviceNodes& nodes,
                                            UnionBudget& budget, const Task& task);

} // namespace velmora
