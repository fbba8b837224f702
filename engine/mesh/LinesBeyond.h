// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lanes.h"
#include "LineCover.h"

#include <span>
#include <vector>

namespace velmora {

/// Finds the lines of a grid on which the convex hull of points may reach beyond what is covered.
///
/// It is sure that the hull does not if the box around the points is covered there. Otherwise a plane through
/// the end of what is covered, with the slope of the ends of the neighbouring lines, may have all points
/// below it: where the cover is convex, nothing inside it is found. Or a plane parallel to the lines
/// separates the points from the line.
class LinesBeyond
{
public:
    /// A point relative to a grid of lines, in single precision.
    struct Place
    {
        float i, j; ///< in steps: lines are at integers
        float L;
    };
    [[nodiscard]] static Place placeOf(const Vec3& p, const LineGrid& grid);

    struct Line
    {
        int i, j;
    };

    /// @param cover must outlive this object
    explicit LinesBeyond(const LineCover& cover) : m_cover(cover) {}

    /// Chooses the points first[offset] for all @p offsets; their number is a multiple of four.
    void setPoints(const Place* first, std::span<const std::size_t> offsets);
    /// Whether the box around the points, larger by @p margin dE in all directions, is covered.
    [[nodiscard]] bool isBoxCovered(double margin) const;
    /// How many lines cross the box around the points.
    [[nodiscard]] std::size_t lineCount() const;
    /// Whether there are any such lines.
    [[nodiscard]] bool any() const;
    /// All such lines.
    [[nodiscard]] const std::vector<Line>& all();
    /// The lines through the box around the points on which the box is not covered: more, but soon found.
    [[nodiscard]] const std::vector<Line>& allOfBox();

private:
    struct Range
    {
        int i0, i1, j0, j1;
    };
    Range rangeOf(float margin) const;
    template <typename Visit>
    bool visitLines(float margin, const Visit& visit) const;
    bool isBeyond(int i, int j) const;
    bool isCovered(std::size_t line, float low, float high) const;
    template <bool IsUpper>
    bool isWithinPlane(int i, int j) const;
    template <bool IsUpper>
    float reach(int i, int j, float slopeI, float slopeJ) const;
    bool isBeside(int i, int j) const;

    const LineCover& m_cover;
    std::vector<Lanes> m_i, m_j, m_L; // the points, four in each
    Place m_low{}, m_high{};
    std::vector<Line> m_found;
};

} // namespace velmora
