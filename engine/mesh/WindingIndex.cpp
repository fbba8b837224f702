// SPDX-License-Identifier: Apache-2.0
#include "WindingIndex.h"

#include "Columns.h"
#include <engine/base/Parts.h>

#include <algorithm>
#include <numeric>

namespace velmora {

// About 128 cells along the longer side. For a display gamut a cell is then 2 dE wide and lists about ten
// faces.
WindingIndex::WindingIndex(const Mesh& mesh, const Task& task)
    : m_points(latticePoints(mesh, task)), m_triangles(mesh.triangles)
{
    if (task.isCancelled())
        m_points.clear();
    if (m_points.empty())
        return;
    const LatticeBox box = boundsOf(m_points);
    m_low = box.low;
    m_high = box.high;
    const auto extent = std::max(m_high.a - m_low.a, m_high.b - m_low.b);
    constexpr int wantedCells = 128;
    while ((extent >> m_shift) > wantedCells)
        ++m_shift;
    m_columns = ((m_high.a - m_low.a) >> m_shift) + 1;
    const int rows = ((m_high.b - m_low.b) >> m_shift) + 1;

    const auto forCells = [this](const Triangle& t, const auto& visit) {
        const LatticePoint& p = m_points[static_cast<std::size_t>(t[0])];
        const LatticePoint& q = m_points[static_cast<std::size_t>(t[1])];
        const LatticePoint& r = m_points[static_cast<std::size_t>(t[2])];
        if (orientationAb(p, q, r) == 0)
            return; // parallel to L*: no column crosses it
        const int i0 = (std::min({p.a, q.a, r.a}) - m_low.a) >> m_shift;
        const int i1 = (std::max({p.a, q.a, r.a}) - m_low.a) >> m_shift;
        const int j0 = (std::min({p.b, q.b, r.b}) - m_low.b) >> m_shift;
        const int j1 = (std::max({p.b, q.b, r.b}) - m_low.b) >> m_shift;
        for (int j = j0; j <= j1; ++j)
            for (int i = i0; i <= i1; ++i)
                visit(static_cast<std::size_t>(j) * static_cast<std::size_t>(m_columns) +
                      static_cast<std::size_t>(i));
    };
    m_first.assign(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(rows) + 1, 0);
    forEachIndex(m_triangles.size(), task, [&](std::size_t f) {
        forCells(m_triangles[f], [this](std::size_t cell) { ++m_first[cell + 1]; });
    });
    std::partial_sum(m_first.begin(), m_first.end(), m_first.begin());
    m_listed.resize(static_cast<std::size_t>(m_first.back()));
    std::vector<int> next(m_first.begin(), m_first.end() - 1);
    // if the counts are incomplete, this loop is cancelled at its beginning
    const bool complete = forEachIndex(m_triangles.size(), task, [&](std::size_t f) {
        forCells(m_triangles[f], [&](std::size_t cell) {
            m_listed[static_cast<std::size_t>(next[cell]++)] = static_cast<int>(f);
        });
    });
    if (!complete)
        m_points.clear();
}

bool WindingIndex::isInside(Vec3 point) const
{
    if (m_points.empty() || !isFinite(point))
        return false;
    if (std::max({std::abs(point.L), std::abs(point.a), std::abs(point.b)}) > maxLab)
        return false;
    const LatticePoint x{toLattice(point.L), toLattice(point.a), toLattice(point.b)};
    if (x.L < m_low.L || x.L > m_high.L || x.a < m_low.a || x.a > m_high.a || x.b < m_low.b || x.b > m_high.b)
        return false;
    const auto cell =
        static_cast<std::size_t>((x.b - m_low.b) >> m_shift) * static_cast<std::size_t>(m_columns) +
        static_cast<std::size_t>((x.a - m_low.a) >> m_shift);
    int winding = 0;
    for (int i = m_first[cell]; i < m_first[cell + 1]; ++i) {
        const Triangle& t = m_triangles[static_cast<std::size_t>(m_listed[static_cast<std::size_t>(i)])];
        const LatticePoint& p = m_points[static_cast<std::size_t>(t[0])];
        const LatticePoint& q = m_points[static_cast<std::size_t>(t[1])];
        const LatticePoint& r = m_points[static_cast<std::size_t>(t[2])];
        const int sign = sideAb(p, q, x);
        if (sideAb(q, r, x) != sign || sideAb(r, p, x) != sign)
            continue;
        // A positive sign means that the face faces up; its inner side is then below.
        const int side = orientation3d(p, q, r, x);
        if (side == 0)
            return true;
        if (side * sign < 0)
            winding += sign;
    }
    return winding != 0;
}

} // namespace velmora
