// SPDX-License-Identifier: Apache-2.0
#include "Mesh.h"

#include <map>
#include <utility>

namespace velmora {

std::vector<LatticePoint> latticePoints(const Mesh& mesh)
{
    std::vector<LatticePoint> points;
    points.reserve(mesh.lab.size());
    for (const LabPoint& v : mesh.lab)
        points.push_back(toLattice(v));
    return points;
}

void flip(Mesh& mesh)
{
    for (Triangle& t : mesh.triangles)
        std::swap(t[1], t[2]);
}

void dropUnusedVertices(Mesh& mesh)
{
    std::vector<int> renamed(mesh.lab.size(), -1);
    for (const Triangle& t : mesh.triangles)
        for (int v : t)
            renamed[static_cast<std::size_t>(v)] = 0;

    const auto channels = mesh.device.empty() ? 0 : static_cast<std::size_t>(mesh.channels);
    std::size_t kept = 0;
    for (std::size_t v = 0; v < mesh.lab.size(); ++v) {
        if (renamed[v] < 0)
            continue;
        renamed[v] = static_cast<int>(kept);
        mesh.lab[kept] = mesh.lab[v];
        for (std::size_t c = 0; c < channels; ++c)
            mesh.device[kept * channels + c] = mesh.device[v * channels + c];
        ++kept;
    }
    mesh.lab.resize(kept);
    mesh.device.resize(kept * channels);
    for (Triangle& t : mesh.triangles)
        for (int& v : t)
            v = renamed[static_cast<std::size_t>(v)];
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
