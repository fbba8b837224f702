// SPDX-License-Identifier: Apache-2.0
#include "Mesh.h"

#include <engine/base/Parts.h>

#include <map>
#include <utility>

namespace velmora {

std::vector<LatticePoint> latticePoints(const Mesh& mesh, const Task& task)
{
    std::vector<LatticePoint> points(mesh.lab.size());
    forEachIndex(points.size(), task, [&](std::size_t v) { points[v] = toLattice(mesh.lab[v]); });
    return points;
}

std::vector<KVGamut::LabPoint> snappedAll(std::span<const Vec3> points, const Task& task)
{
    std::vector<KVGamut::LabPoint> snappedPoints(points.size());
    forEachIndex(points.size(), task, [&](std::size_t i) { snappedPoints[i] = snapped(points[i]); });
    return snappedPoints;
}

void flip(Mesh& mesh, const Task& task)
{
    forEachIndex(mesh.triangles.size(), task,
                 [&mesh](std::size_t f) { std::swap(mesh.triangles[f][1], mesh.triangles[f][2]); });
}

void dropUnusedVertices(Mesh& mesh, const Task& task)
{
    std::vector<int> renamed(mesh.lab.size(), -1);
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        for (int v : mesh.triangles[f])
            renamed[static_cast<std::size_t>(v)] = 0;
    });

    const auto channels = mesh.device.empty() ? 0 : static_cast<std::size_t>(mesh.channels);
    std::size_t kept = 0;
    forEachIndex(mesh.lab.size(), task, [&](std::size_t v) {
        if (renamed[v] < 0)
            return;
        renamed[v] = static_cast<int>(kept);
        mesh.lab[kept] = mesh.lab[v];
        for (std::size_t c = 0; c < channels; ++c)
            mesh.device[kept * channels + c] = mesh.device[v * channels + c];
        ++kept;
    });
    mesh.lab.resize(kept);
    mesh.device.resize(kept * channels);
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        for (int& v : mesh.triangles[f])
            v = renamed[static_cast<std::size_t>(v)];
    });
}

} // namespace velmora

KVGamut::Mesh KVGamut::weldedMesh(const Mesh& mesh)
{
    std::map<velmora::LatticePoint, int> firstAt;
    std::vector<int> renamed(mesh.lab.size());
    for (std::size_t v = 0; v < mesh.lab.size(); ++v)
        renamed[v] = firstAt.try_emplace(velmora::toLattice(mesh.lab[v]), static_cast<int>(v)).first->second;

    Mesh welded = mesh;
    welded.triangles.clear();
    for (const Mesh::Triangle& t : mesh.triangles) {
        const Mesh::Triangle merged{renamed[static_cast<std::size_t>(t[0])],
                                    renamed[static_cast<std::size_t>(t[1])],
                                    renamed[static_cast<std::size_t>(t[2])]};
        if (merged[0] != merged[1] && merged[1] != merged[2] && merged[2] != merged[0])
            welded.triangles.push_back(merged);
    }
    velmora::dropUnusedVertices(welded);
    return welded;
}
