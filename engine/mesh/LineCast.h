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

/// A part of a line.
struct LinePart
{
    float low = 0.0f;   ///< coordinate along the line
    float high = -1.0f; ///< below low if the part is empty

    static LinePart whole()
    {
        return {-std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    }
    bool isWhole() const { return high == std::numeric_limits<float>::max(); }
    float length() const { return high - low; }
    bool contains(const LinePart& other) const { return low <= other.low && other.high <= high; }
    /// Becomes the union with a part that overlaps it, otherwise the longer one of both.
    void unite(const LinePart& other)
    {
        if (other.low <= high && low <= other.high)
            *this = {std::min(low, other.low), std::max(high, other.high)};
        else if (other.length() > length())
            *this = other;
    }
};

/// The intervals of lines that lie in the union of tetrahedra. The first coordinate of @p points is along
/// the lines. Fails with Cancelled, or with TooManyOverlaps if @p budget is exceeded.
/// @param known a part of each line that is known to lie in the solid: tetrahedra inside it are left out
[[nodiscard]] Result<LineIntervals> castThrough(const std::vector<Vec3>& points,
                                                const std::vector<std::array<int, 4>>& tetrahedra,
                                                const LineGrid& grid, std::vector<LinePart> known,
                                                CastBudget& budget, const Task& task);
/// The same if no parts are known.
[[nodiscard]] Result<LineIntervals> castThrough(const std::vector<Vec3>& points,
                                                const std::vector<std::array<int, 4>>& tetrahedra,
                                                const LineGrid& grid, CastBudget& budget, const Task& task);

} // namespace velmora
