// SPDX-License-Identifier: Apache-2.0
#include "DeviceCells.h"

#include <algorithm>

namespace velmora {
namespace {

// Nodes along each axis. A table is followed node by node if it has no more nodes than maxOfTable.
struct Count
{
    std::size_t nodes;
    std::size_t maxOfTable;
};
constexpr std::array<std::array<Count, 4>, 5> fromThreeChannels{{
    {{{17, 17}, {49, 33}, {49, 65}, {3, 65}}},
    {{{9, 9}, {25, 17}, {25, 29}, {3, 29}}},
    {{{6, 6}, {11, 9}, {11, 10}, {3, 10}}},
    {{{5, 5}, {7, 7}, {7, 9}, {3, 9}}},
    {{{4, 4}, {7, 6}, {7, 7}, {3, 6}}},
}};

Count countOf(int channels, DeviceCells::Grid grid)
{
    return fromThreeChannels[static_cast<std::size_t>(channels - 3)][static_cast<std::size_t>(grid)];
}

} // namespace

DeviceCells::DeviceCells(const DeviceTransform& transform, double fineness, const Task& task)
    : m_transform(transform), m_fineness(std::min(1.0, fineness)), m_task(task)
{
}

Result<void> DeviceCells::equalise()
{
    constexpr int finest = 129;
    if (m_equalised)
        return {};
    const double evenShare = m_transform.channels() == 3 ? evenShareOfFolds : minEvenShare;
    auto nodes = equalisedNodes(m_transform, finest, evenShare, m_task);
    if (!nodes)
        return failure(nodes);
    auto curvatures = axisCurvatures(m_transform, *nodes, m_task);
    if (!curvatures)
        return failure(curvatures);
    auto turns = m_transform.channels() == 3 ? Result<std::vector<float>>(std::vector<float>(3, 1.0f))
                                             : turningPoints(m_transform, m_task);
    if (!turns)
        return failure(turns);
    m_equalised = std::move(*nodes);
    m_curvatures = std::move(*curvatures);
    m_turns = std::move(*turns);
    return {};
}

Result<DeviceNodes> DeviceCells::nodes(Grid grid)
{
    if (const auto equalised = equalise(); !equalised)
        return failure(equalised);
    const Count count = countOf(m_transform.channels(), grid);
    const auto average = static_cast<std::size_t>(double(count.nodes) * m_fineness);
    auto counts = nodeCounts(m_curvatures, std::max<std::size_t>(3, average));
    if (grid == Grid::Coarse)
        for (std::size_t& nodes : counts)
            nodes = (nodes + 1) / 2;
    return alignedNodes(m_transform, *m_equalised, m_turns, counts, count.maxOfTable);
}

Result<std::vector<float>> DeviceCells::turns()
{
    return equalise().map([this] { return m_turns; });
}

Result<DeviceNodes> DeviceCells::nodesOfMesh(std::size_t count)
{
    if (const auto equalised = equalise(); !equalised)
        return failure(equalised);
    DeviceNodes nodes = alignedNodes(m_transform, *m_equalised, m_turns, std::vector<std::size_t>(3, count),
                                     countOf(3, Grid::Fine).maxOfTable);
    const bool same = std::all_of(nodes.begin(), nodes.end(), [&nodes](const std::vector<float>& axis) {
        return axis.size() == nodes.front().size();
    });
    return same ? nodes : DeviceNodes();
}

Result<bool> DeviceCells::isLinearBetweenNodesOfTable()
{
    if (maxTableNodes() > countOf(m_transform.channels(), Grid::OfTable).maxOfTable)
        return false;
    return isLinearBetweenTableNodes(m_transform, m_task);
}

std::size_t DeviceCells::maxTableNodes() const
{
    std::size_t most = 0;
    for (const auto& axis : m_transform.tableNodes())
        most = std::max(most, axis.size());
    return most;
}

Result<double> DeviceCells::volume(Grid grid, const Mesh& surface, const Task& task)
{
    auto& covered = m_covered[static_cast<std::size_t>(grid)];
    if (!covered) {
        const auto chosen = nodes(grid);
        if (!chosen)
            return failure(chosen);
        const auto lines = coveredLines(m_transform, *chosen, m_budget, task);
        if (!lines)
            return failure(lines);
        covered = *lines;
    }
    return coveredVolume(*covered, surface, task);
}

Result<DeviceSolid> DeviceCells::solid(Grid grid)
{
    const auto chosen = nodes(grid);
    if (!chosen)
        return failure(chosen);
    return cellSolid(m_transform, *chosen, m_budget, m_task);
}

} // namespace velmora
