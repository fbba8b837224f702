// SPDX-License-Identifier: Apache-2.0
#include "FoldCheck.h"

#include <algorithm>
#include <array>

namespace velmora {

Result<FoldCheck> checkFolds(const DeviceTransform& transform, const DeviceNodes& nodes, const Task& task)
{
    const std::size_t n = nodes.front().size();
    std::vector<float> device;
    device.reserve(n * n * n * 3);
    for (float x : nodes[0])
        for (float y : nodes[1])
            for (float z : nodes[2])
                device.insert(device.end(), {x, y, z});
    const auto converted = transform.toLab(device, task);
    if (!converted)
        return failure(converted);
    const std::vector<Vec3>& lab = *converted;

    // Each tetrahedron follows the path from the cell's lowest corner to its highest, one axis after the
    // other. Odd permutations of the axes have the opposite orientation.
    const std::array<std::size_t, 3> stride{n * n, n, 1};
    struct Order
    {
        std::size_t first, second;
        double sign;
    };
    constexpr std::array<Order, 6> orders{
        {{0, 1, 1.0}, {1, 2, 1.0}, {2, 0, 1.0}, {1, 0, -1.0}, {2, 1, -1.0}, {0, 2, -1.0}}};
    double forwards = 0.0;
    double backwards = 0.0;
    for (std::size_t i = 0; i + 1 < n; ++i)
        for (std::size_t j = 0; j + 1 < n; ++j)
            for (std::size_t k = 0; k + 1 < n; ++k) {
                const std::size_t low = (i * n + j) * n + k;
                const Vec3 base = lab[low];
                const Vec3 diagonal = lab[low + stride[0] + stride[1] + stride[2]] - base;
                for (const Order& order : orders) {
                    const Vec3 p = lab[low + stride[order.first]] - base;
                    const Vec3 q = lab[low + stride[order.first] + stride[order.second]] - base;
                    const double volume = order.sign * dot(p, cross(q, diagonal)) / 6.0;
                    (volume > 0.0 ? forwards : backwards) += std::abs(volume);
                }
            }
    FoldCheck result;
    result.sweptVolume = forwards + backwards;
    result.foldShare = result.sweptVolume > 0.0 ? std::min(forwards, backwards) / result.sweptVolume : 0.0;
    return result;
}

} // namespace velmora
