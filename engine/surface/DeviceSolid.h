// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/mesh/Columns.h>
#include <engine/profile/DeviceNodes.h>

namespace velmora {

/// All colours of a device as tetrahedra in CIELAB: the images of the three-dimensional faces of the device
/// hypercube (with three channels, the cube itself), divided into cells of six tetrahedra each (Kuhn 1960).
/// The gamut is their union, even if the device map folds or winds.
struct DeviceSolid
{
    int channels = 0;
    std::vector<float> device;                  ///< `channels` values for each point
    std::vector<Vec3> points;                   ///< Lab
    std::vector<std::array<int, 4>> tetrahedra; ///< point indices
};

/// With more channels there are too many three-dimensional faces.
inline constexpr int maxSolidChannels = 6;

/// Chooses the nodes of a solid. The number of tetrahedra is about the same as with @p nodesPerAxis nodes
/// along each axis, and at most 400,000. Axes along which the map is curved get more nodes than linear ones:
/// the error of a chord is proportional to the second difference and to the square of the step, and the total
/// error is least if it is the same along all axes.
/// @return fails as DeviceTransform::toLab()
[[nodiscard]] Result<DeviceNodes> solidNodes(const DeviceTransform& transform, int nodesPerAxis,
                                             const Task& task);

/// The solid of a device, with the three-dimensional faces divided at @p nodes. Fails as
/// DeviceTransform::toLab().
[[nodiscard]] Result<DeviceSolid> deviceSolid(const DeviceTransform& transform, const DeviceNodes& nodes,
                                              const Task& task);

/// An interval of a line that lies in the solid, and the tetrahedra in which it ends.
struct Interval
{
    float low;  ///< coordinate along the line
    float high; ///< likewise
    std::int32_t lowTetrahedron;
    std::int32_t highTetrahedron;
};

/// The intervals of each line that lie in the solid, disjoint and ascending.
struct LineIntervals
{
    std::vector<std::uint32_t> first; ///< line c has the intervals first[c] to first[c + 1]
    std::vector<Interval> intervals;
};

/// Parallel lines along the first coordinate: line (i, j) is at (a0 + i step, b0 + j step).
struct LineGrid
{
    double a0 = 0.0;
    double b0 = 0.0;
    double step = 1.0;
    int na = 0;
    int nb = 0;

    std::size_t size() const { return static_cast<std::size_t>(na) * static_cast<std::size_t>(nb); }
};

/// Limits how many intersections of lines and tetrahedra are computed for one gamut. Solids of real devices
/// need about 1 million; a solid of four channels that winds more than once needs 11 million. A table of
/// random values, in which each tetrahedron is as large as the whole solid, would need hundreds of millions.
struct CastBudget
{
    static constexpr std::size_t maxPerCast = 3'000'000; ///< in one call of castThrough(), which stores them
    std::size_t left = 12'500'000;                       ///< for all further calls
};

/// The intervals of lines that lie in the union of tetrahedra. The first coordinate of @p points is along
/// the lines. Fails with Cancelled, or with TooManyOverlaps if @p budget is exceeded.
[[nodiscard]] Result<LineIntervals> castThrough(const std::vector<Vec3>& points,
                                                const std::vector<std::array<int, 4>>& tetrahedra,
                                                const LineGrid& grid, CastBudget& budget, const Task& task);

/// Volume of the union of the tetrahedra in dE76 cubed, integrated over columns along L*. Fails as
/// castThrough().
[[nodiscard]] Result<double> coveredVolume(const DeviceSolid& solid, CastBudget& budget, const Task& task);

} // namespace velmora
