// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TetrahedronOnLines.h"
#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <vector>

namespace velmora {

/// An interval of a line that lies in the solid, and the tetrahedra in which it ends.
struct Interval
{
    float low;  ///< coordinate along the line
    float high; ///< likewise
    std::int32_t lowTetrahedron;
    std::int32_t highTetrahedron;
};

/// The intervals of each line that lie in the solid, disjoint and ascending.
struct LineIntervals
{
    std::vector<std::uint32_t> first; ///< line c has the intervals first[c] to first[c + 1]
    std::vector<Interval> intervals;
};

/// Limits how many intersections of lines and tetrahedra are computed for one gamut. Solids of real devices
/// need about 1 million; a solid of four channels that winds more than once needs 11 million. A table of
/// random values, in which each tetrahedron is as large as the whole solid, would need hundreds of millions.
struct CastBudget
{
    static constexpr std::size_t maxPerCast = 3'000'000; ///< in one call of castThrough(), which stores them
    std::size_t left = 12'500'000;                       ///< for all further calls
};

/// The intervals of lines that lie in the union of tetrahedra. The first coordinate of @p points is along
/// the lines. Fails with Cancelled, or with TooManyOverlaps if @p budget is exceeded.
[[nodiscard]] Result<LineIntervals> castThrough(const std::vector<Vec3>& points,
                                                const std::vector<std::array<int, 4>>& tetrahedra,
                                                const LineGrid& grid, CastBudget& budget, const Task& task);

} // namespace velmora
