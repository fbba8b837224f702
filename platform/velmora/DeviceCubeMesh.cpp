#include "DeviceCubeMesh.h"

namespace velmora {

SurfaceMesh deviceCubeMesh(const DeviceTransform& transform, const DeviceNodes& nodes, const Task& task,
                           QString& reason)
{
    const auto n = nodes.front().size();
    const auto last = n - 1;
    SurfaceMesh mesh;
    mesh.channels = 3;

    std::vector<int> vertexAt(n * n * n, -1);
    const auto at = [n](std::size_t i, std::size_t j, std::size_t k) { return (i * n + j) * n + k; };
    int count = 0;
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) {
            const bool rim = i == 0 || i == last || j == 0 || j == last;
            for (std::size_t k = 0; k < n; k += rim ? 1 : last) {
                vertexAt[at(i, j, k)] = count++;
                mesh.device.insert(mesh.device.end(), {nodes[0][i], nodes[1][j], nodes[2][k]});
            }
        }

    std::vector<Vec3> lab(static_cast<std::size_t>(count));
    if (!transform.toLab(mesh.device.data(), lab.data(), lab.size(), task, reason))
        return {};
    mesh.lab.reserve(lab.size());
    for (const Vec3& p : lab)
        mesh.lab.push_back(snapped(p));

    // Seen along the axis u x v, the quad's corners run counter-clockwise.
    const auto addQuad = [&mesh](int p, int q, int r, int s, bool outwards) {
        if (outwards) {
            mesh.triangles.push_back({p, q, r});
            mesh.triangles.push_back({p, r, s});
        } else {
            mesh.triangles.push_back({p, r, q});
            mesh.triangles.push_back({p, s, r});
        }
    };
    mesh.triangles.reserve(12 * last * last);
    for (int axis = 0; axis < 3; ++axis)
        for (std::size_t level : {std::size_t(0), last})
            for (std::size_t u = 0; u < last; ++u)
                for (std::size_t v = 0; v < last; ++v) {
                    const auto vertex = [&](std::size_t i, std::size_t j) {
                        return axis == 0   ? vertexAt[at(level, i, j)]
                               : axis == 1 ? vertexAt[at(j, level, i)]
                                           : vertexAt[at(i, j, level)];
                    };
                    addQuad(vertex(u, v), vertex(u + 1, v), vertex(u + 1, v + 1), vertex(u, v + 1),
                            level == last);
                }
    return mesh;
}

} // namespace velmora
