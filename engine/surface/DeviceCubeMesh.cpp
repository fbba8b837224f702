// SPDX-License-Identifier: Apache-2.0
#include "DeviceCubeMesh.h"

#include <array>

namespace velmora {
namespace {

// The vertices on the surface of a cube with n nodes along each axis, in the order of i, j, k.
class CubeVertices
{
public:
    explicit CubeVertices(std::size_t n) : m_n(n), m_at(n * n * n, -1)
    {
        const std::size_t last = n - 1;
        for (std::size_t i = 0; i < n; ++i)
            for (std::size_t j = 0; j < n; ++j) {
                const bool rim = i == 0 || i == last || j == 0 || j == last;
                for (std::size_t k = 0; k < n; k += rim ? 1 : last) {
                    m_at[(i * n + j) * n + k] = static_cast<int>(m_nodes.size());
                    m_nodes.push_back({i, j, k});
                }
            }
    }

    const std::vector<std::array<std::size_t, 3>>& nodes() const { return m_nodes; }
    int at(std::size_t i, std::size_t j, std::size_t k) const { return m_at[(i * m_n + j) * m_n + k]; }

private:
    std::size_t m_n;
    std::vector<int> m_at;
    std::vector<std::array<std::size_t, 3>> m_nodes;
};

std::vector<Triangle> cubeTriangles(const CubeVertices& vertices, std::size_t n)
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
            for (std::size_t u = 0; u < last; ++u)
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
    if (task.isCancelled()) // up to two million nodes are numbered
        return failure(KVProblemCode::Cancelled);
    Mesh mesh;
    mesh.channels = 3;
    for (const auto& [i, j, k] : vertices.nodes())
        mesh.device.insert(mesh.device.end(), {nodes[0][i], nodes[1][j], nodes[2][k]});
    const auto lab = transform.toLab(mesh.device, task);
    if (!lab)
        return failure(lab);
    mesh.lab.reserve(lab->size());
    for (const Vec3& p : *lab)
        mesh.lab.push_back(snapped(p));
    if (task.isCancelled())
        return failure(KVProblemCode::Cancelled);
    mesh.triangles = cubeTriangles(vertices, n);
    return mesh;
}

Mesh thinnedCubeMesh(const Mesh& mesh, std::size_t nodesPerAxis, std::size_t count)
{
    const CubeVertices all(nodesPerAxis), kept(count);
    const auto place = [=](std::size_t i) { return thinnedPlace(i, nodesPerAxis, count); };
    Mesh thin;
    thin.channels = mesh.channels;
    for (const auto& [i, j, k] : kept.nodes()) {
        const int vertex = all.at(place(i), place(j), place(k));
        thin.lab.push_back(mesh.lab[static_cast<std::size_t>(vertex)]);
        thin.device.insert(thin.device.end(), mesh.deviceOf(vertex), mesh.deviceOf(vertex) + mesh.channels);
    }
    thin.triangles = cubeTriangles(kept, count);
    return thin;
}

} // namespace velmora
