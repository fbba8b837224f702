// SPDX-License-Identifier: Apache-2.0
#include "MeshComponents.h"

#include "MeshChecks.h"
#include "MeshVolume.h"
#include <engine/base/Parts.h>

namespace velmora {

void removeTinyComponents(Mesh& mesh, const Task& task)
{
    const auto neighbours = triangleNeighbours(mesh, task);
    std::vector<int> part(mesh.triangles.size(), -1);
    std::vector<double> volumes;
    std::vector<std::size_t> open;
    for (std::size_t seed = 0; seed < part.size() && !task.isCancelled(); ++seed) {
        if (part[seed] >= 0)
            continue;
        const auto name = static_cast<int>(volumes.size());
        double volume = 0.0;
        part[seed] = name;
        open.assign(1, seed);
        while (!open.empty() && !task.isCancelled()) {
            const std::size_t f = open.back();
            open.pop_back();
            const auto corner = [&](std::size_t i) {
                return toVec3(mesh.lab[static_cast<std::size_t>(mesh.triangles[f][i])]);
            };
            volume += dot(corner(0), cross(corner(1), corner(2))) / 6.0;
            for (int n : neighbours[f])
                if (part[static_cast<std::size_t>(n)] < 0) {
                    part[static_cast<std::size_t>(n)] = name;
                    open.push_back(static_cast<std::size_t>(n));
                }
        }
        volumes.push_back(volume);
    }
    constexpr double minShare = 1e-4;
    const double minComponent = minShare * signedVolume(mesh, task);
    std::vector<Triangle> kept;
    forEachIndex(part.size(), task, [&](std::size_t f) {
        if (std::abs(volumes[static_cast<std::size_t>(part[f])]) >= minComponent)
            kept.push_back(mesh.triangles[f]);
    });
    mesh.triangles = std::move(kept);
    dropUnusedVertices(mesh, task);
}

} // namespace velmora
