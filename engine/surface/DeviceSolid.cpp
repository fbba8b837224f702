// SPDX-License-Identifier: Apache-2.0
#include "DeviceSolid.h"

#include <algorithm>

namespace velmora {
namespace {

// Appends the tetrahedra of one three-dimensional face, whose points start at `base`. Incomplete if the task
// is cancelled.
void addTetrahedra(std::vector<std::array<int, 4>>& tetrahedra, int base, std::array<int, 3> counts,
                   const Task& task)
{
    const std::array<int, 3> stride{counts[1] * counts[2], counts[2], 1};
    for (int i = 0; i + 1 < counts[0] && !task.isCancelled(); ++i)
        for (int j = 0; j + 1 < counts[1]; ++j)
            for (int k = 0; k + 1 < counts[2]; ++k) {
                const int low = base + i * stride[0] + j * stride[1] + k * stride[2];
                const int high = low + stride[0] + stride[1] + stride[2];
                for (const auto& path : kuhnPaths) {
                    const int second = low + stride[path[0]];
                    tetrahedra.push_back({low, second, second + stride[path[1]], high});
                }
            }
}

// The device colours of one three-dimensional face: the free channels take all nodes, the others the bits of
// a corner. Incomplete if the task is cancelled.
void addColours(std::vector<float>& device, const DeviceNodes& nodes, unsigned corner,
                std::array<std::size_t, 3> free, const Task& task)
{
    std::vector<float> colour(nodes.size());
    for (std::size_t c = 0; c < nodes.size(); ++c)
        colour[c] = static_cast<float>(corner >> c & 1u);
    for (float x : nodes[free[0]]) {
        if (task.isCancelled())
            return;
        for (float y : nodes[free[1]])
            for (float z : nodes[free[2]]) {
                colour[free[0]] = x;
                colour[free[1]] = y;
                colour[free[2]] = z;
                device.insert(device.end(), colour.begin(), colour.end());
            }
    }
}

} // namespace

namespace {

// Number of tetrahedra of a solid with the given number of nodes along each axis.
double tetrahedraOf(const std::vector<std::size_t>& counts)
{
    const std::size_t n = counts.size();
    double sum = 0.0;
    for (std::size_t u = 0; u < n; ++u)
        for (std::size_t v = u + 1; v < n; ++v)
            for (std::size_t w = v + 1; w < n; ++w)
                sum += double(counts[u] - 1) * double(counts[v] - 1) * double(counts[w] - 1);
    return 6.0 * sum * double(1u << (n - 3));
}

} // namespace

Result<DeviceNodes> solidNodes(const DeviceTransform& transform, int nodesPerAxis, const Task& task)
{
    constexpr int maxNodes = 129;
    constexpr double minNodes = 5.0;
    constexpr double maxTetrahedra = 400'000.0;
    const auto fine = equalisedNodes(transform, maxNodes, evenShareOfFolds, task.part(0.0, 0.5));
    if (!fine)
        return failure(fine);
    const auto curvature = axisCurvatures(transform, *fine, task.part(0.5, 1.0));
    if (!curvature)
        return failure(curvature);
    const double target = std::min(maxTetrahedra, tetrahedraOf(std::vector<std::size_t>(
                                                      fine->size(), static_cast<std::size_t>(nodesPerAxis))));
    const auto countsAt = [&](double scale) {
        std::vector<std::size_t> counts;
        counts.reserve(curvature->size());
        for (double b : *curvature)
            counts.push_back(
                static_cast<std::size_t>(std::clamp(scale * std::sqrt(b), minNodes, double(maxNodes))));
        return counts;
    };
    double low = 0.0, high = 1e6;
    constexpr int halvings = 60;
    for (int i = 0; i < halvings; ++i) {
        const double middle = 0.5 * (low + high);
        (tetrahedraOf(countsAt(middle)) <= target ? low : high) = middle;
    }
    const std::vector<std::size_t> counts = countsAt(low);
    DeviceNodes nodes;
    for (std::size_t axis = 0; axis < fine->size(); ++axis)
        nodes.push_back(thinnedAxis((*fine)[axis], counts[axis]));
    return nodes;
}

Result<DeviceSolid> deviceSolid(const DeviceTransform& transform, const DeviceNodes& nodes, const Task& task)
{
    DeviceSolid solid;
    solid.channels = transform.channels();
    const std::size_t n = nodes.size();
    for (std::size_t u = 0; u < n; ++u)
        for (std::size_t v = u + 1; v < n; ++v)
            for (std::size_t w = v + 1; w < n; ++w)
                for (unsigned corner = 0; corner < 1u << n; ++corner) {
                    if (corner & (1u << u | 1u << v | 1u << w))
                        continue;
                    addTetrahedra(solid.tetrahedra, static_cast<int>(solid.device.size() / n),
                                  {static_cast<int>(nodes[u].size()), static_cast<int>(nodes[v].size()),
                                   static_cast<int>(nodes[w].size())},
                                  task);
                    addColours(solid.device, nodes, corner, {u, v, w}, task);
                }
    auto points = transform.toLab(solid.device, task);
    if (!points)
        return failure(points);
    solid.points = std::move(*points);
    return solid;
}

} // namespace velmora
