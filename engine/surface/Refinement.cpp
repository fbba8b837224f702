// SPDX-License-Identifier: Apache-2.0
#include "Refinement.h"

#include <engine/base/Parts.h>

#include <unordered_map>

namespace velmora {
namespace {

// Larger meshes are not refined.
constexpr std::size_t maxTriangles = 2'000'000;

bool onOneDeviceFace(const float* p, const float* q, int channels)
{
    int free = 0;
    for (int c = 0; c < channels; ++c)
        free += !(p[c] == q[c] && (p[c] == 0.0f || p[c] == 1.0f));
    return free <= 2;
}

class Round
{
public:
    enum class Edges
    {
        WithinDeviceFaces,
        AcrossDeviceFaces
    };

    Round(Mesh& mesh, double maxEdge, Edges edges) : m_mesh(mesh), m_maxEdge(maxEdge), m_edges(edges) {}

    // Appends the device colours of the new vertices to those of the mesh.
    Result<void> findMidpoints(const Task& task)
    {
        for (const Triangle& t : m_mesh.triangles) {
            if (task.isCancelled())
                return failure(KVProblemCode::Cancelled);
            for (std::size_t e = 0; e < 3; ++e)
                consider(t[e], t[(e + 1) % 3]);
        }
        return {};
    }

    Result<void> evaluate(const DeviceTransform& transform, const Task& task)
    {
        const auto known = m_mesh.lab.size() * static_cast<std::size_t>(m_mesh.channels);
        const auto lab = transform.toLab(std::span<const float>(m_mesh.device).subspan(known), task);
        if (!lab)
            return failure(lab);
        const auto added = snappedAll(*lab, task);
        m_mesh.lab.insert(m_mesh.lab.end(), added.begin(), added.end());
        return {};
    }

    bool found() const { return !m_midpoint.empty(); }

    // Incomplete if the task is cancelled.
    void split(const Task& task)
    {
        std::vector<Triangle> result;
        result.reserve(m_mesh.triangles.size() * 2);
        forEachIndex(m_mesh.triangles.size(), task, [&](std::size_t f) {
            const Triangle& t = m_mesh.triangles[f];
            const std::array<int, 3> m{midpoint(t[0], t[1]), midpoint(t[1], t[2]), midpoint(t[2], t[0])};
            const int splitEdges = (m[0] >= 0) + (m[1] >= 0) + (m[2] >= 0);
            if (splitEdges == 0) {
                result.push_back(t);
            } else if (splitEdges == 3) {
                result.insert(
                    result.end(),
                    {{t[0], m[0], m[2]}, {m[0], t[1], m[1]}, {m[2], m[1], t[2]}, {m[0], m[1], m[2]}});
            } else {
                // Rotated so that edge 0 is split, and the second split edge, if any, is edge 1.
                std::size_t k = 0;
                while (m[k] < 0 || (splitEdges == 2 && m[(k + 1) % 3] < 0))
                    ++k;
                const int p = t[k], q = t[(k + 1) % 3], r = t[(k + 2) % 3];
                const int pq = m[k], qr = m[(k + 1) % 3];
                if (splitEdges == 1)
                    result.insert(result.end(), {{p, pq, r}, {pq, q, r}});
                else
                    result.insert(result.end(), {{pq, q, qr}, {p, pq, qr}, {p, qr, r}});
            }
        });
        m_mesh.triangles = std::move(result);
    }

private:
    static std::uint64_t key(int p, int q)
    {
        const auto [low, high] = std::minmax(p, q);
        return static_cast<std::uint64_t>(low) << 32 | static_cast<std::uint64_t>(high);
    }

    void consider(int p, int q)
    {
        const Vec3 edge =
            toVec3(m_mesh.lab[static_cast<std::size_t>(p)]) - toVec3(m_mesh.lab[static_cast<std::size_t>(q)]);
        if (dot(edge, edge) <= m_maxEdge * m_maxEdge)
            return;
        if (onOneDeviceFace(m_mesh.deviceOf(p), m_mesh.deviceOf(q), m_mesh.channels) !=
            (m_edges == Edges::WithinDeviceFaces))
            return;
        const int next = static_cast<int>(m_mesh.lab.size() + m_midpoint.size());
        if (!m_midpoint.emplace(key(p, q), next).second)
            return;
        for (int c = 0; c < m_mesh.channels; ++c)
            m_mesh.device.push_back(0.5f * (m_mesh.deviceOf(p)[c] + m_mesh.deviceOf(q)[c]));
    }

    int midpoint(int p, int q) const
    {
        const auto found = m_midpoint.find(key(p, q));
        return found == m_midpoint.end() ? -1 : found->second;
    }

    Mesh& m_mesh;
    double m_maxEdge;
    Edges m_edges;
    std::unordered_map<std::uint64_t, int> m_midpoint;
};

Result<void> orCancelled(const Task& task)
{
    return task.isCancelled() ? Result<void>(failure(KVProblemCode::Cancelled)) : Result<void>();
}

} // namespace

Result<void> refine(Mesh& mesh, const DeviceTransform& transform, double maxEdge, int rounds,
                    const Task& task)
{
    for (int i = 0; i < rounds && mesh.triangles.size() * 4 <= maxTriangles; ++i) {
        Round round(mesh, maxEdge, Round::Edges::WithinDeviceFaces);
        if (auto searched = round.findMidpoints(task); !searched)
            return searched;
        if (!round.found())
            return {};
        if (const auto evaluated = round.evaluate(transform, task); !evaluated)
            return failure(evaluated);
        round.split(task);
    }
    return orCancelled(task);
}

Result<void> halveBridges(Mesh& mesh, const DeviceTransform& transform, const Task& task)
{
    Round round(mesh, 0.0, Round::Edges::AcrossDeviceFaces);
    if (auto searched = round.findMidpoints(task); !searched)
        return searched;
    if (const auto evaluated = round.evaluate(transform, task); !evaluated)
        return failure(evaluated);
    round.split(task);
    return orCancelled(task);
}

} // namespace velmora
