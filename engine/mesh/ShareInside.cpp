// SPDX-License-Identifier: Apache-2.0
#include "ShareInside.h"

#include "WindingIndex.h"
#include <engine/base/Parts.h>

#include <array>

namespace velmora {

double shareInside(const Mesh& mesh, const WindingIndex& solid, const Task& task)
{
    constexpr std::size_t maxFaces = 2048;
    const std::size_t all = mesh.triangles.size(), count = std::min(all, maxFaces);
    double inside = 0.0, total = 0.0;
    forEachIndex(count, task, [&](std::size_t i) {
        std::array<Vec3, 3> p;
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const int vertex = mesh.triangles[i * all / count][corner];
            p[corner] = toVec3(mesh.lab[static_cast<std::size_t>(vertex)]);
        }
        const double area = length(cross(p[1] - p[0], p[2] - p[0]));
        total += area;
        if (solid.isInside((1.0 / 3.0) * (p[0] + p[1] + p[2])))
            inside += area;
    });
    return total > 0.0 ? inside / total : 0.0;
}

} // namespace velmora
