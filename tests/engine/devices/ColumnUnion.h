// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Points.h"

#include <optional>
#include <vector>

namespace kvdevices {

struct Interval
{
    double low;
    double high;
};

/// The intersection of half spaces.
class Polytope
{
public:
    /// Adds the half space of the points p with dot(normal, p) <= limit.
    void cut(const Point& normal, double limit);
    /// The part of the column at (x, y) along the third axis; nullopt if it is empty.
    std::optional<Interval> at(double x, double y) const;

private:
    struct Plane
    {
        double slopeX, slopeY, height;
        double atPlace(double x, double y) const { return height + slopeX * x + slopeY * y; }
    };
    std::vector<Plane> m_above, m_below, m_walls;
};

/// Measures the volume of a union of solids with parallel columns along the third axis.
///
/// The columns stand on a square grid over the first two coordinates. In each column the union of intervals
/// is exact; only the integral over the columns is approximate.
class ColumnUnion
{
public:
    /// About @p columns columns over @p bounds.
    ColumnUnion(const Box& bounds, std::size_t columns);

    struct Range
    {
        int low;
        int high;
    };
    /// Columns whose first or second coordinate is within the limits.
    Range columnsX(double low, double high) const { return columnsOf(low, high, m_low[0], m_wide); }
    Range columnsY(double low, double high) const { return columnsOf(low, high, m_low[1], m_high); }
    double placeX(int i) const { return m_low[0] + (i + 0.5) * m_pitch; }
    double placeY(int j) const { return m_low[1] + (j + 0.5) * m_pitch; }

    void insert(int i, int j, Interval interval);
    bool covers(int i, int j, Interval interval) const;
    /// Whether all columns through a box are covered between its ends.
    bool coversBox(const Box& box);

    struct Volume
    {
        double volume;
        double error; ///< standard error, from four subsets of the columns
    };
    Volume volume() const;
    /// The sum of the lengths of all inserted intervals, less the volume: what solids cover repeatedly.
    Volume overlap() const;
    /// What both cover. Both have the same columns.
    Volume common(const ColumnUnion& other) const;

private:
    struct Tile
    {
        Interval core{0.0, 0.0}; // covered in all columns of the tile
        bool isCurrent = false;
    };
    Range columnsOf(double low, double high, double start, int count) const;
    const Interval& coreOf(int tileX, int tileY);
    bool coversBoxInTile(const Box& box, Range x, Range y) const;
    std::size_t indexOf(int i, int j) const { return std::size_t(j) * std::size_t(m_wide) + std::size_t(i); }
    /// The integral of a function of the index of the column.
    template <typename Length>
    Volume integral(const Length& length) const;

    Point m_low;
    double m_pitch;
    int m_wide;
    int m_high;
    int m_tilesWide;
    std::vector<std::vector<Interval>> m_covered; // disjoint, ascending
    std::vector<double> m_inserted;               // sum of the lengths
    std::vector<Tile> m_tiles;
};

} // namespace kvdevices
