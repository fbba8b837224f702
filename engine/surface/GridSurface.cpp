// SPDX-License-Identifier: Apache-2.0
#include "GridSurface.h"

#include "DeviceCubeMesh.h"
#include <engine/mesh/MeshVolume.h>

#include <cmath>

namespace velmora {
namespace {

using KVGamut::Construction;

constexpr int gridNodes = 11;
constexpr int halfOfGridNodes = 6;

DeviceNodes evenNodes()
{
    std::vector<float> axis;
    for (int i = 0; i < gridNodes; ++i)
        axis.push_back(static_cast<float>(i) / (gridNodes - 1));
    return {axis, axis, axis};
}

// Divides each square along its other diagonal. The two triangles of a square are neighbours: p q r and p r
// s, or p r q and p s r.
void turnDiagonals(std::vector<Triangle>& triangles)
{
    for (std::size_t i = 0; i + 1 < triangles.size(); i += 2) {
        Triangle& first = triangles[i];
        Triangle& second = triangles[i + 1];
        const bool outwards = first[2] == second[1];
        const int p = first[0], q = first[outwards ? 1 : 2], r = first[outwards ? 2 : 1],
                  s = second[outwards ? 2 : 1];
        first = outwards ? Triangle{p, q, s} : Triangle{p, s, q};
        second = outwards ? Triangle{q, r, s} : Triangle{q, s, r};
    }
}

Mesh dividedAs(Construction construction, Mesh mesh, const Task& task)
{
    if (construction == Construction::Grid11Falling)
        turnDiagonals(mesh.triangles);
    if (signedVolume(mesh, task) < 0.0)
        flip(mesh, task);
    return mesh;
}

} // namespace

Result<FoundSurface> gridSurface(const DeviceTransform& transform, Construction construction,
                                 const Task& task)
{
    if (transform.channels() != 3)
        return failure(KVProblemCode::NotThreeChannels, {QString::number(transform.channels())});
    const auto sampled = deviceCubeMesh(transform, evenNodes(), task);
    if (!sampled)
        return failure(sampled);
    const Mesh half =
        dividedAs(construction, thinnedCubeMesh(*sampled, gridNodes, halfOfGridNodes, task), task);
    FoundSurface found;
    found.mesh = dividedAs(construction, *sampled, task);
    found.method = KVGamut::Method::DeviceMesh;
    found.gridPoints = gridNodes;
    found.volume = signedVolume(found.mesh, task);
    found.uncertainty = std::abs(found.volume - signedVolume(half, task));
    return found;
}

} // namespace velmora
