// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

namespace velmora {

/// Rounding may leave a gap of this size between adjacent tetrahedra.
inline constexpr float minGap = 1e-4f;

/// Parallel lines along the first coordinate: line (i, j) is at (a0 + i step, b0 + j step).
struct LineGrid
{
    double a0 = 0.0;
    double b0 = 0.0;
    double step = 1.0;
    int na = 0;
    int nb = 0;

    std::size_t size() const { return static_cast<std::size_t>(na) * static_cast<std::size_t>(nb); }
};

/// The lines of a grid that may cross a tetrahedron: columns i0..i1, rows j0..j1.
struct LineRange
{
    int i0, i1, j0, j1;

    LineRange(const LineGrid& grid, const Vec3& p, const Vec3& q, const Vec3& r, const Vec3& s)
        : i0(first((std::min({p.a, q.a, r.a, s.a}) - grid.a0) / grid.step, grid.na)),
          i1(last((std::max({p.a, q.a, r.a, s.a}) - grid.a0) / grid.step, grid.na)),
          j0(first((std::min({p.b, q.b, r.b, s.b}) - grid.b0) / grid.step, grid.nb)),
          j1(last((std::max({p.b, q.b, r.b, s.b}) - grid.b0) / grid.step, grid.nb))
    {
    }
    bool isEmpty() const { return i0 > i1 || j0 > j1; }

    /// The first of @p count lines at or above a place, and the last at or below it. By conversions, because
    /// std::ceil and std::floor are calls on processors without SSE 4.1.
    static int first(double place, int count)
    {
        const double within = std::clamp(place, 0.0, double(count));
        const int below = static_cast<int>(within);
        return below + (double(below) < within);
    }
    static int last(double place, int count)
    {
        return static_cast<int>(std::clamp(place, -1.0, double(count - 1)) + 1.0) - 1;
    }
};

/// The lines of each row of a grid that may cross a tetrahedron: fewer than LineRange where it is oblique.
class RowRanges
{
public:
    struct Columns
    {
        int i0, i1;
    };

    RowRanges(const LineGrid& grid, const Vec3& p, const Vec3& q, const Vec3& r, const Vec3& s)
        : m_count(grid.na)
    {
        const auto placeOf = [&grid](const Vec3& v) {
            return Place{(v.a - grid.a0) / grid.step, (v.b - grid.b0) / grid.step};
        };
        const std::array<Place, 4> corners{placeOf(p), placeOf(q), placeOf(r), placeOf(s)};
        std::size_t edge = 0;
        for (std::size_t from = 0; from < 4; ++from)
            for (std::size_t to = from + 1; to < 4; ++to) {
                const bool isUpwards = corners[from].row <= corners[to].row;
                const Place &low = corners[isUpwards ? from : to], &high = corners[isUpwards ? to : from];
                const double rise = high.row - low.row;
                m_edges[edge++] = {low, high.row, rise > 0.0 ? (high.column - low.column) / rise : 0.0};
            }
    }

    /// The columns of row @p j; i0 is above i1 if there are none.
    Columns of(int j) const
    {
        double low = std::numeric_limits<double>::max(), high = -low;
        for (const Edge& edge : m_edges) {
            const double above = j - edge.low.row;
            if (above < -tolerance || edge.top < j - tolerance)
                continue;
            const double column = edge.low.column + above * edge.slope;
            low = std::min(low, column);
            high = std::max(high, column);
        }
        if (low > high)
            return {0, -1};
        return {LineRange::first(low - tolerance, m_count), LineRange::last(high + tolerance, m_count)};
    }

private:
    static constexpr double tolerance = 1e-6; // steps; more than the rounding
    struct Place
    {
        double column, row;
    };
    struct Edge
    {
        Place low;
        double top; // row
        double slope;
    };
    std::array<Edge, 6> m_edges;
    int m_count;
};

/// Intersects one tetrahedron with many parallel lines. Its barycentric coordinates are linear functions; a
/// point is inside if none is negative.
class TetrahedronOnLines
{
public:
    TetrahedronOnLines(Vec3 p, Vec3 q, Vec3 r, Vec3 s) : m_origin(p)
    {
        const Vec3 u = q - p, v = r - p, w = s - p;
        const double volume = dot(u, cross(v, w));
        const double size = length(u) * length(v) * length(w);
        constexpr double minVolumeRatio = 1e-9;
        m_degenerate = std::abs(volume) <= minVolumeRatio * size;
        if (m_degenerate)
            return;
        std::array<Vec3, 4> gradients;
        gradients[1] = (1.0 / volume) * cross(v, w);
        gradients[2] = (1.0 / volume) * cross(w, u);
        gradients[3] = (1.0 / volume) * cross(u, v);
        gradients[0] = -1.0 * (gradients[1] + gradients[2] + gradients[3]);
        for (std::size_t i = 0; i < 4; ++i) {
            constexpr double tolerance = 1e-9;
            const Vec3& g = gradients[i];
            const double start = (i == 0 ? 1.0 : 0.0) + tolerance;
            Facet& facet = m_facets[i];
            facet.bound = g.L > 0.0 ? Bound::Low : g.L < 0.0 ? Bound::High : Bound::None;
            const double scale = facet.bound == Bound::None ? 1.0 : -1.0 / g.L;
            facet.start = scale * start;
            facet.a = scale * g.a;
            facet.b = scale * g.b;
        }
    }

    /// Whether it is too flat to be intersected.
    bool isDegenerate() const { return m_degenerate; }

    /// The part of the line at (@p a, @p b) that lies inside; false if there is none.
    bool interval(double a, double b, double& low, double& high) const
    {
        low = -std::numeric_limits<double>::infinity();
        high = std::numeric_limits<double>::infinity();
        for (const Facet& facet : m_facets) {
            const double value = facet.start + facet.a * (a - m_origin.a) + facet.b * (b - m_origin.b);
            if (facet.bound == Bound::Low)
                low = std::max(low, value);
            else if (facet.bound == Bound::High)
                high = std::min(high, value);
            else if (value < 0.0)
                return false;
        }
        low += m_origin.L;
        high += m_origin.L;
        return low <= high;
    }

private:
    enum class Bound
    {
        Low,
        High,
        None
    };
    // The first coordinate at which a line crosses the facet; for facets parallel to the lines the
    // barycentric coordinate itself.
    struct Facet
    {
        double start, a, b;
        Bound bound;
    };

    Vec3 m_origin;
    std::array<Facet, 4> m_facets;
    bool m_degenerate = false;
};

} // namespace velmora
