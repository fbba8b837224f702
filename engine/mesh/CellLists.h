// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Columns.h"
#include "Mesh.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace velmora {

using TrianglePoints = std::array<LatticePoint, 3>;

/// Axis-aligned bounds of a triangle: L*, a*, b* on the lattice.
struct TriangleBounds
{
    std::array<int, 3> low;
    std::array<int, 3> high;
};

[[nodiscard]] TriangleBounds boundsOf(const TrianglePoints& t);

/// The bounds of all triangles of @p mesh, whose vertices are @p points; incomplete if @p task is cancelled.
[[nodiscard]] std::vector<TriangleBounds>
triangleBounds(const Mesh& mesh, const std::vector<LatticePoint>& points, const Task& task);

/// Whether two bounds have a point in common.
inline bool overlap(const TriangleBounds& p, const TriangleBounds& q)
{
    unsigned all = 1; // without branches: searches for pairs spend most of their time here
    for (std::size_t i = 0; i < 3; ++i)
        all &= unsigned(p.low[i] <= q.high[i]) & unsigned(q.low[i] <= p.high[i]);
    return all != 0;
}

/// A cubic grid whose cells list the triangles with overlapping bounds. The surface passes through about as
/// many cells as it has triangles.
class CellLists
{
public:
    /// A triangle in a cell, and the axes along which this cell is the first one of the triangle's bounds. Of
    /// the cells that two triangles share, exactly one is the first of either triangle along each axis; the
    /// pair is to be tested there only: where the bits of both together are 7.
    struct Entry
    {
        std::uint32_t triangle : 29;
        std::uint32_t begins : 3;
    };

    /// Cells for @p bounds, which lie in @p box. The lists are empty.
    CellLists(const std::vector<TriangleBounds>& bounds, const LatticeBox& box);

    /// Number of entries in all lists; fewer if @p task is cancelled.
    std::size_t entriesOf(const std::vector<TriangleBounds>& bounds, const Task& task) const;
    /// Incomplete if @p task is cancelled.
    void fill(const std::vector<TriangleBounds>& bounds, const Task& task);

    /// Number of cells, after fill().
    std::size_t size() const { return m_first.size() - 2; }
    std::span<const Entry> in(std::size_t cell) const
    {
        return {m_entries.data() + m_first[cell], m_first[cell + 1] - m_first[cell]};
    }

private:
    template <typename Visit>
    void forCells(const TriangleBounds& bounds, const Visit& visit) const;
    std::size_t cellAt(int i, int j, int k) const;

    std::array<int, 3> m_origin;
    std::array<int, 3> m_counts{};
    int m_shift = 0;
    std::vector<std::uint32_t> m_first;
    std::vector<Entry> m_entries;
};

} // namespace velmora
