// SPDX-License-Identifier: Apache-2.0
#include "MeshVolume.h"

#include <engine/base/Parts.h>

namespace velmora {

double signedVolume(const Mesh& mesh, const Task& task)
{
    if (mesh.lab.empty())
        return 0.0;
    const Vec3 origin = toVec3(mesh.lab.front());
    double sum = 0.0;
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        const Triangle& t = mesh.triangles[f];
        const Vec3 p = toVec3(mesh.lab[static_cast<std::size_t>(t[0])]) - origin;
        const Vec3 q = toVec3(mesh.lab[static_cast<std::size_t>(t[1])]) - origin;
        const Vec3 r = toVec3(mesh.lab[static_cast<std::size_t>(t[2])]) - origin;
        sum += dot(p, cross(q, r));
    });
    return sum / 6.0;
}

} // namespace velmora
