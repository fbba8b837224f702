// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Mesh.h"
#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <vector>

namespace velmora {

/// A rectangular grid of columns: lines parallel to L*, at equal distances on the ab lattice.
struct ColumnGrid
{
    std::int64_t a0 = 0;   ///< lattice coordinates of the first column
    std::int64_t b0 = 0;   ///< likewise
    std::int64_t step = 1; ///< distance of neighbouring columns, lattice units
    int na = 0;            ///< columns along a*
    int nb = 0;            ///< columns along b*

    /// Area of the ab plane for which a column stands, dE76 squared.
    double area() const { return double(step) * double(step) / (latticeScale * latticeScale); }
    std::size_t size() const { return static_cast<std::size_t>(na) * static_cast<std::size_t>(nb); }
};

/// Axis-aligned bounding box on the lattice.
struct LatticeBox
{
    LatticePoint low;
    LatticePoint high;
};
[[nodiscard]] LatticeBox boundsOf(const std::vector<LatticePoint>& points);

/// Columns at the centres of squares that cover @p box in a and b. The side of a square is @p pitch in dE,
/// rounded to the lattice.
[[nodiscard]] ColumnGrid columnsOver(const LatticeBox& box, double pitch);

/// A point where a column crosses a surface.
struct Crossing
{
    float L;
    std::int32_t sign; ///< +1 where the column leaves the solid upwards, -1 where it enters
};

/// All crossings of a grid's columns with a surface, sorted by ascending L within each column.
struct ColumnCrossings
{
    std::vector<std::uint32_t> first; ///< column c has the crossings first[c] to first[c + 1]
    std::vector<Crossing> crossings;
};

/// Intersects the columns of a grid with a mesh. No column meets an edge or a vertex exactly (see sideAb()),
/// so the signs of the crossings of a column with a closed surface always sum to zero. Fails if @p task is
/// cancelled.
[[nodiscard]] Result<ColumnCrossings> castColumns(const Mesh& mesh, const ColumnGrid& grid, const Task& task);

/// Measures of a surface's winding numbers; volumes in dE76 cubed, areas in dE76 squared.
struct WindingCheck
{
    double insideVolume = 0.0;   ///< where the winding number is 1
    double invalidVolume = 0.0;  ///< where it is neither 0 nor 1: the surface self-intersects
    double coveredArea = 0.0;    ///< of the surface's projection onto the ab plane
    double coincidentArea = 0.0; ///< where two sheets of the surface coincide
};
[[nodiscard]] WindingCheck checkWinding(const ColumnCrossings& columns, const ColumnGrid& grid);

} // namespace velmora
