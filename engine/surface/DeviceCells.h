// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CoveredVolume.h"

#include <array>
#include <optional>

namespace velmora {

/// The grids of a device's cells with which its colours are measured: how many nodes, and where.
class DeviceCells
{
public:
    /// With more channels there are too many cells.
    static constexpr int maxChannels = 7;

    enum class Grid
    {
        Look,   ///< few nodes
        Coarse, ///< half as many steps along each axis as Fine
        Fine,   ///< for a measurement
        OfTable ///< only the nodes of the device's table, if it has one that is not too large
    };

    /// @param fineness share of the nodes that are taken, at most 1
    DeviceCells(const DeviceTransform& transform, double fineness, const Task& task);

    /// The nodes of a grid. It has the nodes of the device's table, unless those are too many. Fails as
    /// DeviceTransform::toLab().
    [[nodiscard]] Result<DeviceNodes> nodes(Grid grid);
    /// See turningPoints(). Fails as DeviceTransform::toLab().
    [[nodiscard]] Result<std::vector<float>> turns();
    /// Nodes of a device mesh: the same number along all axes, at the nodes of the table and between them.
    /// @return empty if the tables of the axes have different numbers of nodes, and more than @p count
    [[nodiscard]] Result<DeviceNodes> nodesOfMesh(std::size_t count);
    /// Whether the nodes of the table are enough; see isLinearBetweenTableNodes().
    [[nodiscard]] Result<bool> isLinearBetweenNodesOfTable();
    /// Largest number of table nodes along an axis.
    [[nodiscard]] std::size_t maxTableNodes() const;

    /// Volume of all colours, see coveredVolume(). What the cells of a grid cover is computed once.
    [[nodiscard]] Result<double> volume(Grid grid, const Mesh& surface, const Task& task);
    /// The cells at the surface, see cellSolid().
    [[nodiscard]] Result<DeviceSolid> solid(Grid grid);

private:
    Result<void> equalise();

    const DeviceTransform& m_transform;
    const double m_fineness;
    const Task m_task;
    std::optional<DeviceNodes> m_equalised; // many nodes
    std::vector<double> m_curvatures;       // along each axis
    std::vector<float> m_turns;             // see turningPoints()
    UnionBudget m_budget;
    std::array<std::optional<CoveredLines>, 4> m_covered; // by grid
};

} // namespace velmora
