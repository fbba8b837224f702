// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TetrahedronOnLines.h"

#include <vector>

namespace velmora {

/// The union of many solids along the lines of a grid: for each line the disjoint intervals that they cover.
class LineCover
{
public:
    explicit LineCover(const LineGrid& grid) : m_grid(grid), m_lines(grid.size()) {}

    const LineGrid& grid() const { return m_grid; }

    /// Whether all lines through the box from @p low to @p high are covered where they are inside the box.
    /// Also if there are no such lines.
    [[nodiscard]] bool covers(const Vec3& low, const Vec3& high) const;
    /// Adds a tetrahedron.
    /// @return how many lines were intersected
    std::size_t add(const Vec3& p, const Vec3& q, const Vec3& r, const Vec3& s);

    /// Total length of the intervals of all lines.
    double length() const;

private:
    struct Piece
    {
        float low, high;
    };
    using Pieces = std::vector<Piece>; // ascending

    static void add(Pieces& pieces, Piece added);
    Pieces& lineAt(int i, int j) { return m_lines[indexOf(i, j)]; }
    std::size_t indexOf(int i, int j) const
    {
        return static_cast<std::size_t>(j) * static_cast<std::size_t>(m_grid.na) +
               static_cast<std::size_t>(i);
    }

    LineGrid m_grid;
    std::vector<Pieces> m_lines;
};

} // namespace velmora
