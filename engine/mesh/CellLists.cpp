// SPDX-License-Identifier: Apache-2.0
#include "CellLists.h"

#include <engine/base/Parts.h>

#include <algorithm>
#include <cmath>

namespace velmora {

TriangleBounds boundsOf(const TrianglePoints& t)
{
    return {{std::min({t[0].L, t[1].L, t[2].L}), std::min({t[0].a, t[1].a, t[2].a}),
             std::min({t[0].b, t[1].b, t[2].b})},
            {std::max({t[0].L, t[1].L, t[2].L}), std::max({t[0].a, t[1].a, t[2].a}),
             std::max({t[0].b, t[1].b, t[2].b})}};
}

std::vector<TriangleBounds> triangleBounds(const Mesh& mesh, const std::vector<LatticePoint>& points,
                                           const Task& task)
{
    std::vector<TriangleBounds> bounds;
    growInParts(bounds, mesh.triangles.size(), {}, task);
    for (std::size_t f = 0; f < bounds.size() && !task.isCancelled(); ++f) {
        const Triangle& t = mesh.triangles[f];
        bounds[f] = boundsOf(TrianglePoints{points[static_cast<std::size_t>(t[0])],
                                            points[static_cast<std::size_t>(t[1])],
                                            points[static_cast<std::size_t>(t[2])]});
    }
    return bounds;
}

CellLists::CellLists(const std::vector<TriangleBounds>& bounds, const LatticeBox& box)
    : m_origin{box.low.L, box.low.a, box.low.b}
{
    const std::array<int, 3> extent{box.high.L - box.low.L, box.high.a - box.low.a, box.high.b - box.low.b};
    const int wantedCells = std::clamp(static_cast<int>(std::sqrt(double(bounds.size()) / 2.0)), 4, 128);
    while ((*std::max_element(extent.begin(), extent.end()) >> m_shift) > wantedCells)
        ++m_shift;
    for (std::size_t i = 0; i < 3; ++i)
        m_counts[i] = (extent[i] >> m_shift) + 1;
}

std::size_t CellLists::entriesOf(const std::vector<TriangleBounds>& bounds, const Task& task) const
{
    std::size_t sum = 0;
    forEachIndex(bounds.size(), task, [&](std::size_t f) {
        const TriangleBounds& b = bounds[f];
        std::size_t cells = 1;
        for (std::size_t i = 0; i < 3; ++i)
            cells *= static_cast<std::size_t>(((b.high[i] - m_origin[i]) >> m_shift) -
                                              ((b.low[i] - m_origin[i]) >> m_shift) + 1);
        sum += cells;
    });
    return sum;
}

void CellLists::fill(const std::vector<TriangleBounds>& bounds, const Task& task)
{
    const std::size_t cells = static_cast<std::size_t>(m_counts[0]) * static_cast<std::size_t>(m_counts[1]) *
                              static_cast<std::size_t>(m_counts[2]);
    // While the lists are filled, m_first[cell + 1] is the next place in the list of the cell; at the end
    // it is the first place of the next list.
    growInParts(m_first, cells + 2, 0u, task);
    for (std::size_t f = 0; f < bounds.size() && !task.isCancelled(); ++f)
        forCells(bounds[f], [&](std::size_t cell, unsigned) { ++m_first[cell + 2]; });
    if (!forEachIndex(cells + 1, task, [this](std::size_t i) { m_first[i + 1] += m_first[i]; }))
        return;
    growInParts(m_entries, m_first.back(), {}, task);
    for (std::size_t f = 0; f < bounds.size() && !task.isCancelled(); ++f)
        forCells(bounds[f], [&](std::size_t cell, unsigned begins) {
            m_entries[m_first[cell + 1]++] = {static_cast<std::uint32_t>(f) & 0x1fffffffu, begins & 7u};
        });
}

template <typename Visit>
void CellLists::forCells(const TriangleBounds& bounds, const Visit& visit) const
{
    std::array<int, 3> low{}, high{};
    for (std::size_t i = 0; i < 3; ++i) {
        low[i] = (bounds.low[i] - m_origin[i]) >> m_shift;
        high[i] = (bounds.high[i] - m_origin[i]) >> m_shift;
    }
    for (int i = low[0]; i <= high[0]; ++i)
        for (int j = low[1]; j <= high[1]; ++j)
            for (int k = low[2]; k <= high[2]; ++k)
                visit(cellAt(i, j, k),
                      unsigned(i == low[0]) | unsigned(j == low[1]) << 1 | unsigned(k == low[2]) << 2);
}

std::size_t CellLists::cellAt(int i, int j, int k) const
{
    const auto row = static_cast<std::size_t>(i) * static_cast<std::size_t>(m_counts[1]);
    const auto column = (row + static_cast<std::size_t>(j)) * static_cast<std::size_t>(m_counts[2]);
    return column + static_cast<std::size_t>(k);
}

} // namespace velmora
