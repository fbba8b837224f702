// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Columns.h>
#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// All that a device can show, as tetrahedra in CIELAB: the three-dimensional faces of the device
/// hypercube, of which a device of three channels has one, divided into cells of six tetrahedra each
/// (Kuhn 1960). The gamut is their union, however the map folds and winds.
struct DeviceSolid
{
    int channels = 0;
    std::vector<float> device; ///< `channels` values for each point
    std::vector<Vec3> points;
    std::vector<std::array<int, 4>> tetrahedra;
};

/// From seven channels on there are too many three-dimensional faces.
inline constexpr int maxSolidChannels = 6;

/// Nodes for a solid of about as many tetrahedra as @p nodesPerAxis along each axis would make, and of
/// at most some hundred thousand. An axis along which the map bends gets more of them than a straight
/// one: the error of a chord is its second difference, which falls with the square of the step, and
/// the best shares of a budget make these alike.
[[nodiscard]] Result<DeviceNodes> solidNodes(const DeviceTransform& transform, int nodesPerAxis,
                                             const Task& task);

/// The solid of a device, with the three-dimensional faces divided at @p nodes.
[[nodiscard]] Result<DeviceSolid> deviceSolid(const DeviceTransform& transform, const DeviceNodes& nodes,
                                              const Task& task);

/// A interval of a column that lies in the solid; values of L* and the tetrahedra that end there.
struct Interval
{
    float low;
    float high;
    std::int32_t lowTetrahedron;
    std::int32_t highTetrahedron;
};

/// The intervals of each column that lie in the solid, apart from each other and rising.
struct LineIntervals
{
    std::vector<std::uint32_t> first; ///< column c has the intervals first[c] to first[c + 1]
    std::vector<Interval> intervals;
};

/// Parallel lines through space: line (i, j) has the places ( . , a0 + i step, b0 + j step).
struct LineGrid
{
    double a0 = 0.0;
    double b0 = 0.0;
    double step = 1.0;
    int na = 0;
    int nb = 0;

    std::size_t size() const { return static_cast<std::size_t>(na) * static_cast<std::size_t>(nb); }
};

/// How often lines may meet tetrahedra while one gamut is computed. Solids of devices need a million
/// meetings, one of four channels that winds around more than once eleven; a table of noise, whose
/// tetrahedra are all as large as the solid, would need hundreds of millions.
struct CastBudget
{
    static constexpr std::size_t maxPerCast = 3'000'000; ///< of one castThrough(); they are kept
    std::size_t left = 12'500'000;
};

/// Where the lines run inside of tetrahedra of @p points, whose first coordinate is along the lines.
/// Fails with Cancelled, or with TooManyOverlaps if @p budget is exceeded.
[[nodiscard]] Result<LineIntervals> castThrough(const std::vector<Vec3>& points,
                                                const std::vector<std::array<int, 4>>& tetrahedra,
                                                const LineGrid& grid, CastBudget& budget, const Task& task);

/// Volume of the union of the tetrahedra in dE76 cubed, by columns along L*. Fails as castThrough().
[[nodiscard]] Result<double> coveredVolume(const DeviceSolid& solid, CastBudget& budget, const Task& task);

} // namespace velmora
