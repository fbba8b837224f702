// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <vector>

namespace velmora {

/// A rectangle of vertical lines through CIELAB, at equal distances on the ab lattice.
struct ColumnGrid
{
    std::int64_t a0 = 0; ///< lattice coordinates of the first column
    std::int64_t b0 = 0;
    std::int64_t step = 1; ///< distance of neighbouring columns, lattice units
    int na = 0;
    int nb = 0;

    double area() const { return double(step) * double(step) / (latticeScale * latticeScale); }
    std::size_t size() const { return static_cast<std::size_t>(na) * static_cast<std::size_t>(nb); }
};

/// Bounds of a mesh on the lattice.
struct LatticeBox
{
    LatticePoint low;
    LatticePoint high;
};
LatticeBox boundsOf(const std::vector<LatticePoint>& points);

/// The columns at the middles of squares that cover @p box (in a and b), squares of about
/// @p pitch dE.
ColumnGrid columnsOver(const LatticeBox& box, double pitch);

/// Where a column passes through a surface.
struct Crossing
{
    float L;
    std::int32_t sign; ///< +1 where it leaves the solid upwards, -1 where it enters
};

/// All crossings of the columns of a grid with a surface, sorted by rising L within each column.
struct ColumnCrossings
{
    std::vector<std::uint32_t> first; ///< column c has the crossings first[c] to first[c + 1]
    std::vector<Crossing> crossings;
};

/// Every column passes a closed surface's edges and vertices on a definite side (sideAb()), so the
/// signs of a column always sum to zero.
/// Fails if @p task is cancelled.
[[nodiscard]] Result<ColumnCrossings> castColumns(const Mesh& mesh, const ColumnGrid& grid, const Task& task);

/// How a surface winds around the points of space.
struct WindingCheck
{
    double insideVolume = 0.0;   ///< where the winding number is 1
    double invalidVolume = 0.0;  ///< where it is neither 0 nor 1: the surface passes through itself
    double coveredArea = 0.0;    ///< of the ab plane, below the surface
    double coincidentArea = 0.0; ///< where sheets of the surface lie upon each other
};
WindingCheck checkWinding(const ColumnCrossings& columns, const ColumnGrid& grid);

} // namespace velmora
