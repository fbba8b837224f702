// SPDX-License-Identifier: Apache-2.0
#include "Mesh.h"

#include <engine/base/Parts.h>

#include <numeric>
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

void weld(Mesh& mesh, const Task& task)
{
    const auto points = latticePoints(mesh, task);
    std::vector<int> order(points.size());
    std::iota(order.begin(), order.end(), 0);
    const auto at = [&points](int v) { return points[static_cast<std::size_t>(v)]; };
    sortInParts(
        order, [&at](int p, int q) { return std::pair(at(p), p) < std::pair(at(q), q); }, task);
    std::vector<int> renamed(points.size());
    int first = 0; // of the vertices at one place
    forEachIndex(order.size(), task, [&](std::size_t i) {
        if (i == 0 || at(order[i]) != at(order[i - 1]))
            first = order[i];
        renamed[static_cast<std::size_t>(order[i])] = first;
    });
    std::size_t kept = 0;
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        Triangle t = mesh.triangles[f];
        for (int& v : t)
            v = renamed[static_cast<std::size_t>(v)];
        if (t[0] != t[1] && t[1] != t[2] && t[2] != t[0])
            mesh.triangles[kept++] = t;
    });
    mesh.triangles.resize(kept);
    dropUnusedVertices(mesh, task);
}

} // namespace velmora

KVGamut::Mesh KVGamut::weldedMesh(const Mesh& mesh)
{
    Mesh welded = mesh;
    velmora::weld(welded);
    return welded;
}
