// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TetrahedronOnLines.h"

#include <span>
#include <vector>

namespace velmora {

/// The union of many solids along the lines of a grid: for each line the disjoint intervals that they cover.
class LineCover
{
public:
    struct Piece
    {
        float low = std::numeric_limits<float>::max(); ///< above high if there is none
        float high = -std::numeric_limits<float>::max();
        bool isEmpty() const { return low > high; }
    };

    explicit LineCover(const LineGrid& grid) : m_grid(grid), m_lines(grid.size()), m_longest(grid.size()) {}

    const LineGrid& grid() const { return m_grid; }
    std::size_t indexOf(int i, int j) const
    {
        return static_cast<std::size_t>(j) * static_cast<std::size_t>(m_grid.na) +
               static_cast<std::size_t>(i);
    }

    /// The intervals of a line, ascending.
    std::span<const Piece> pieces(std::size_t line) const { return m_lines[line]; }
    /// The longest interval of a line.
    const Piece& longest(std::size_t line) const { return m_longest[line]; }

    /// Adds the part of a line that is inside a tetrahedron.
    void add(int i, int j, const TetrahedronOnLines& tetrahedron)
    {
        double low = 0.0, high = 0.0;
        if (tetrahedron.interval(m_grid.a0 + i * m_grid.step, m_grid.b0 + j * m_grid.step, low, high))
            add(indexOf(i, j), {static_cast<float>(low), static_cast<float>(high)});
    }

    /// Total length of the intervals of all lines.
    double length() const;

private:
    void add(std::size_t line, Piece added);

    LineGrid m_grid;
    std::vector<std::vector<Piece>> m_lines;
    std::vector<Piece> m_longest;
};

} // namespace velmora
