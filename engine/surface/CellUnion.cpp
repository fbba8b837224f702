// SPDX-License-Identifier: Apache-2.0
#include "CellUnion.h"

#include <engine/base/Parts.h>
#include <engine/mesh/LinesBeyond.h>

#include <algorithm>
#include <numeric>

namespace velmora {
namespace {

struct Box
{
    Vec3 low, high;

    explicit Box(const Vec3& p) : low(p), high(p) {}
    void add(const Vec3& p)
    {
        low = {std::min(low.L, p.L), std::min(low.a, p.a), std::min(low.b, p.b)};
        high = {std::max(high.L, p.L), std::max(high.a, p.a), std::max(high.b, p.b)};
    }
};

// The grid of a device's nodes; a point's index counts the last channel fastest.
class NodeGrid
{
public:
    explicit NodeGrid(const DeviceNodes& nodes) : m_nodes(nodes), m_strides(nodes.size())
    {
        std::size_t stride = 1;
        for (std::size_t c = nodes.size(); c-- > 0; stride *= nodes[c].size())
            m_strides[c] = stride;
        m_size = stride;
    }

    std::size_t size() const { return m_size; }
    std::size_t channels() const { return m_nodes.size(); }
    std::size_t stride(std::size_t channel) const { return m_strides[channel]; }
    std::size_t lastCell(std::size_t channel) const { return m_nodes[channel].size() - 2; }

    // Incomplete if the task is cancelled.
    std::vector<float> colours(const Task& task) const
    {
        std::vector<float> device;
        device.reserve(m_size * channels());
        for (std::size_t i = 0; i < m_size && !task.isCancelled(); ++i)
            for (std::size_t c = 0; c < channels(); ++c)
                device.push_back(m_nodes[c][i / m_strides[c] % m_nodes[c].size()]);
        return device;
    }

private:
    const DeviceNodes& m_nodes;
    std::vector<std::size_t> m_strides;
    std::size_t m_size = 1;
};

// The cells in an order that is spread over the whole device, so that the interior is soon covered.
class CellOrder
{
public:
    explicit CellOrder(const NodeGrid& grid)
    {
        for (std::size_t c = 0; c < grid.channels(); ++c)
            m_count *= grid.lastCell(c) + 1;
        constexpr std::size_t step = 2'654'435'761; // a prime: 2^32 divided by the golden ratio
        m_step = step % m_count;
        while (std::gcd(m_step, m_count) != 1)
            ++m_step;
    }

    std::size_t count() const { return m_count; }
    std::size_t cell(std::size_t i) const { return i * m_step % m_count; }

private:
    std::size_t m_count = 1;
    std::size_t m_step = 1;
};

// Lines at the centres of squares over the projection of the points.
LineGrid linesOver(const std::vector<Vec3>& points, int linesAcross, const Task& task)
{
    Box box(points.front());
    forEachIndex(points.size(), task, [&](std::size_t i) { box.add(points[i]); });
    constexpr double minExtent = 1e-3;
    constexpr double maxLinesAcross = 1024.0; // of a solid that is thin when seen along the lines
    const double a = std::max(box.high.a - box.low.a, minExtent);
    const double b = std::max(box.high.b - box.low.b, minExtent);
    LineGrid lines;
    lines.step = std::max(std::sqrt(a * b) / linesAcross, std::max(a, b) / maxLinesAcross);
    lines.na = static_cast<int>(a / lines.step) + 1;
    lines.nb = static_cast<int>(b / lines.step) + 1;
    lines.a0 = box.low.a + 0.5 * lines.step;
    lines.b0 = box.low.b + 0.5 * lines.step;
    return lines;
}

class Union
{
public:
    /// @param margin cells and tetrahedra are left out only if what is within this distance is covered
    Union(const NodeGrid& grid, const std::vector<Vec3>& points, const LineGrid& lines, double margin,
          const Task& task)
        : m_grid(grid), m_points(points), m_cover(lines), m_hull(m_cover), m_margin(margin), m_task(task)
    {
        const std::size_t n = grid.channels();
        for (unsigned corner = 0; corner < 1u << n; ++corner) {
            std::size_t offset = 0;
            for (std::size_t c = 0; c < n; ++c)
                offset += corner >> c & 1u ? grid.stride(c) : 0;
            m_corners.push_back(offset);
        }
        m_places.reserve(points.size());
        forEachIndex(points.size(), task,
                     [&](std::size_t i) { m_places.push_back(LinesBeyond::placeOf(points[i], lines)); });
    }

    // @return the number of intersections; incomplete if the task is cancelled
    std::size_t addCell(std::size_t cell)
    {
        const std::size_t n = m_grid.channels();
        std::size_t low = 0;
        unsigned atEnd = 0; // channels in which this is the last cell
        for (std::size_t c = n; c-- > 0;) {
            const std::size_t count = m_grid.lastCell(c) + 1;
            const std::size_t place = cell % count;
            low += place * m_grid.stride(c);
            atEnd |= place == m_grid.lastCell(c) ? 1u << c : 0u;
            cell /= count;
        }
        m_hull.setPoints(&m_places[low], m_corners);
        if (isCancelledAfter(m_hull.lineCount() * m_corners.size() / 128))
            return 0;
        if (m_margin > 0.0 ? m_hull.isBoxCovered(m_margin) : !m_hull.any())
            return 0;
        std::size_t count = 0;
        for (std::size_t u = 0; u < n; ++u)
            for (std::size_t v = u + 1; v < n; ++v)
                for (std::size_t w = v + 1; w < n; ++w)
                    count += addFaces(low, {u, v, w}, atEnd);
        return count;
    }

    LineCover takeCover() { return std::move(m_cover); }
    std::size_t tetrahedraCount() const { return m_tetrahedra.size(); }
    /// With a margin: those that were not left out.
    std::vector<std::array<int, 4>> takeTetrahedra() { return std::move(m_tetrahedra); }

private:
    // A face between two cells belongs to the one that is higher; those at the end of a channel to the last
    // one.
    std::size_t addFaces(std::size_t low, std::array<std::size_t, 3> free, unsigned atEnd)
    {
        const unsigned freeMask = 1u << free[0] | 1u << free[1] | 1u << free[2];
        std::size_t count = 0;
        for (unsigned corner = 0; corner < m_corners.size(); ++corner)
            if (!(corner & freeMask) && !(corner & ~atEnd) && !isCancelledAfter(1))
                count += addFace(low + m_corners[corner], free);
        return count;
    }

    std::size_t addFace(std::size_t low, const std::array<std::size_t, 3>& free)
    {
        const std::array<std::size_t, 3> step{m_grid.stride(free[0]), m_grid.stride(free[1]),
                                              m_grid.stride(free[2])};
        const std::size_t high = step[0] + step[1] + step[2];
        const std::array<std::size_t, 8> corners{
            0, step[0], step[1], step[2], step[0] + step[1], step[1] + step[2], step[0] + step[2], high};
        m_hull.setPoints(&m_places[low], corners);
        if (isCancelledAfter(m_hull.lineCount() / 16))
            return 0;
        if (m_margin > 0.0 && m_hull.isBoxCovered(m_margin))
            return 0;
        const auto& lines = m_margin > 0.0 ? m_hull.allOfBox() : m_hull.all();
        if (lines.empty() && m_margin <= 0.0)
            return 0;
        std::size_t count = 0;
        for (const auto& path : kuhnPaths) {
            const std::size_t second = low + step[path[0]], third = second + step[path[1]];
            if (m_margin > 0.0)
                m_tetrahedra.push_back({static_cast<int>(low), static_cast<int>(second),
                                        static_cast<int>(third), static_cast<int>(low + high)});
            if (isCancelledAfter(lines.size() / 16))
                break;
            count += addTetrahedron({low, second, third, low + high}, lines);
        }
        return count;
    }

    // Adds it on those of the lines that cross it.
    std::size_t addTetrahedron(const std::array<std::size_t, 4>& corners,
                               const std::vector<LinesBeyond::Line>& lines)
    {
        const auto point = [&](std::size_t i) -> const Vec3& { return m_points[corners[i]]; };
        const LineRange range(m_cover.grid(), point(0), point(1), point(2), point(3));
        const auto isInRange = [&range](const LinesBeyond::Line& line) {
            return range.i0 <= line.i && line.i <= range.i1 && range.j0 <= line.j && line.j <= range.j1;
        };
        auto line = std::find_if(lines.begin(), lines.end(), isInRange);
        if (line == lines.end())
            return 0;
        const TetrahedronOnLines tetrahedron(point(0), point(1), point(2), point(3));
        if (tetrahedron.isDegenerate())
            return 0;
        std::size_t count = 0;
        for (; line != lines.end(); ++line)
            if (isInRange(*line)) {
                m_cover.add(line->i, line->j, tetrahedron);
                ++count;
            }
        return count;
    }

    // Looks for cancellation once in a millisecond. Work is counted in faces; to intersect 16 lines takes as
    // long as a face that is covered.
    bool isCancelledAfter(std::size_t work)
    {
        constexpr std::size_t workBetweenLooks = 1024;
        m_work += work;
        if (m_work >= workBetweenLooks) {
            m_work = 0;
            m_isCancelled = m_task.isCancelled();
        }
        return m_isCancelled;
    }

    const NodeGrid& m_grid;
    const std::vector<Vec3>& m_points;
    std::vector<LinesBeyond::Place> m_places; // of the points
    LineCover m_cover;
    LinesBeyond m_hull; // of a cell or a face
    const double m_margin;
    const Task& m_task;
    std::size_t m_work = 0; // since the last look
    bool m_isCancelled = false;
    std::vector<std::array<int, 4>> m_tetrahedra;
    std::vector<std::size_t> m_corners; // of a cell, relative to its lowest
};

Result<void> addCells(Union& all, const NodeGrid& grid, UnionBudget& budget, const Task& task)
{
    const CellOrder order(grid);
    constexpr std::size_t cellsBetweenLooks = 16;
    constexpr std::size_t maxTetrahedra = 700'000; // no lattice surface can be made of more
    for (std::size_t i = 0; i < order.count(); ++i) {
        if (i % cellsBetweenLooks == 0 && task.isCancelled())
            return failure(KVProblemCode::Cancelled);
        const std::size_t count = all.addCell(order.cell(i));
        if (count > budget.left || all.tetrahedraCount() > maxTetrahedra)
            return failure(KVProblemCode::TooManyOverlaps);
        budget.left -= count;
    }
    return {};
}

} // namespace

Vec3 turned(const Vec3& p)
{
    static const double c = std::cos(0.5), s = std::sin(0.5);
    return {p.L, c * p.a - s * p.b, s * p.a + c * p.b};
}

std::vector<float> gridColours(const DeviceNodes& nodes, const Task& task)
{
    return NodeGrid(nodes).colours(task);
}

Result<LineCover> cellUnion(const DeviceTransform& transform, const DeviceNodes& nodes, int linesAcross,
                            UnionBudget& budget, const Task& task)
{
    const NodeGrid grid(nodes);
    auto points = transform.toLab(grid.colours(task), task.part(0.0, 0.3));
    if (!points)
        return failure(points);
    forEachIndex(points->size(), task, [&](std::size_t i) { (*points)[i] = turned((*points)[i]); });
    Union all(grid, *points, linesOver(*points, linesAcross, task), 0.0, task);
    if (const auto added = addCells(all, grid, budget, task); !added)
        return failure(added);
    return all.takeCover();
}

Result<DeviceSolid> cellSolid(const DeviceTransform& transform, const DeviceNodes& nodes, UnionBudget& budget,
                              const Task& task)
{
    constexpr int linesAcross = 96;
    const NodeGrid grid(nodes);
    DeviceSolid solid;
    solid.channels = transform.channels();
    solid.device = grid.colours(task);
    auto points = transform.toLab(solid.device, task);
    if (!points)
        return failure(points);
    solid.points = std::move(*points);
    const LineGrid lines = linesOver(solid.points, linesAcross, task);
    Union all(grid, solid.points, lines, lines.step, task);
    if (const auto added = addCells(all, grid, budget, task); !added)
        return failure(added);
    solid.tetrahedra = all.takeTetrahedra();
    return solid;
}

} // namespace velmora
