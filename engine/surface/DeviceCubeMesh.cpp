// SPDX-License-Identifier: Apache-2.0
#include "DeviceCubeMesh.h"

#include <engine/base/Parts.h>

#include <array>

namespace velmora {
namespace {

// The vertices on the surface of a cube with n nodes along each axis, in the order of i, j, k.
class CubeVertices
{
public:
    explicit CubeVertices(std::size_t n) : m_n(n) {}

    std::size_t count() const { return 2 * m_n * m_n + (m_n - 2) * ofRing(); }

    // Calls visit(i, j, k) for the vertices in their order; not for all of them if the task is cancelled.
    template <typename Visit>
    void forEach(const Task& task, const Visit& visit) const
    {
        const std::size_t last = m_n - 1;
        forEachIndex(m_n * m_n, task, [&](std::size_t row) {
            const std::size_t i = row / m_n, j = row % m_n;
            const bool rim = i == 0 || i == last || j == 0 || j == last;
            for (std::size_t k = 0; k < m_n; k += rim ? 1 : last)
                visit(i, j, k);
        });
    }

    // The place of a node on the surface in that order.
    int at(std::size_t i, std::size_t j, std::size_t k) const
    {
        const std::size_t last = m_n - 1;
        if (i == 0)
            return static_cast<int>(j * m_n + k);
        const std::size_t before = m_n * m_n + (i - 1) * ofRing();
        if (i == last)
            return static_cast<int>(before + j * m_n + k);
        if (j == 0)
            return static_cast<int>(before + k);
        return static_cast<int>(before + m_n + 2 * (j - 1) + (j == last || k == 0 ? k : 1));
    }

private:
    // Nodes on the rim of a square: between the two ends of the cube only those are on its surface.
    std::size_t ofRing() const { return 4 * (m_n - 1); }

    std::size_t m_n;
};

std::vector<Triangle> cubeTriangles(const CubeVertices& vertices, std::size_t n, const Task& task)
{
    const std::size_t last = n - 1;
    std::vector<Triangle> triangles;
    triangles.reserve(12 * last * last);
    // The vertices of a quad are counter-clockwise, seen from the positive end of the axis u x v.
    const auto addQuad = [&triangles](int p, int q, int r, int s, bool outwards) {
        if (outwards) {
            triangles.push_back({p, q, r});
            triangles.push_back({p, r, s});
        } else {
            triangles.push_back({p, r, q});
            triangles.push_back({p, s, r});
        }
    };
    for (int axis = 0; axis < 3; ++axis)
        for (std::size_t level : {std::size_t(0), last})
            for (std::size_t u = 0; u < last && !task.isCancelled(); ++u)
                for (std::size_t v = 0; v < last; ++v) {
                    const auto vertex = [&](std::size_t i, std::size_t j) {
                        return axis == 0   ? vertices.at(level, i, j)
                               : axis == 1 ? vertices.at(j, level, i)
                                           : vertices.at(i, j, level);
                    };
                    addQuad(vertex(u, v), vertex(u + 1, v), vertex(u + 1, v + 1), vertex(u, v + 1),
                            level == last);
                }
    return triangles;
}

} // namespace

Result<Mesh> deviceCubeMesh(const DeviceTransform& transform, const DeviceNodes& nodes, const Task& task)
{
    const auto n = nodes.front().size();
    const CubeVertices vertices(n);
    Mesh mesh;
    mesh.channels = 3;
    mesh.device.reserve(3 * vertices.count());
    vertices.forEach(task, [&](std::size_t i, std::size_t j, std::size_t k) {
        mesh.device.insert(mesh.device.end(), {nodes[0][i], nodes[1][j], nodes[2][k]});
    });
    const auto lab = transform.toLab(mesh.device, task);
    if (!lab)
        return failure(lab);
    mesh.lab = snappedAll(*lab, task);
    mesh.triangles = cubeTriangles(vertices, n, task);
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    return mesh;
}

Mesh thinnedCubeMesh(const Mesh& mesh, std::size_t nodesPerAxis, std::size_t count, const Task& task)
{
    const CubeVertices all(nodesPerAxis), kept(count);
    const auto place = [=](std::size_t i) { return thinnedPlace(i, nodesPerAxis, count); };
    Mesh thin;
    thin.channels = mesh.channels;
    kept.forEach(task, [&](std::size_t i, std::size_t j, std::size_t k) {
        const int vertex = all.at(place(i), place(j), place(k));
        thin.lab.push_back(mesh.lab[static_cast<std::size_t>(vertex)]);
        thin.device.insert(thin.device.end(), mesh.deviceOf(vertex), mesh.deviceOf(vertex) + mesh.channels);
    });
    thin.triangles = cubeTriangles(kept, count, task);
    return thin;
}

} // namespace velmora
