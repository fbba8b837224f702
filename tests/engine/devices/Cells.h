// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ColumnUnion.h"
#include "ProfileMap.h"

namespace kvdevices {

/// The tetrahedra of all cells of a grid over three channels: six around the diagonal of each cell, as Little
/// CMS interpolates.
struct Tetrahedra
{
    double volume; ///< sum of the volumes of all
};
/// Inserts all of them into @p columns.
Tetrahedra insertTetrahedra(const GridImage& image, ColumnUnion& columns);

/// Inserts the images of all cells of a grid over four to seven channels into @p columns.
///
/// Little CMS interpolates the last three channels in six tetrahedra and the others linearly. The image of a
/// product of intervals and a tetrahedron is inside the convex hull of the images of its corners. The
/// intervals are divided into @p slices parts, and the hulls of the parts are inserted, so the union is a
/// little too large by an amount that is proportional to 1 / slices. Cells and parts that are covered already
/// are left out.
void insertCells(const GridImage& image, std::size_t slices, ColumnUnion& columns);

/// How far the map is from being affine in the cells of a grid: the root mean square of the mixed second
/// differences between the channels that are interpolated linearly and all others.
double twistOf(const GridImage& image);

} // namespace kvdevices
