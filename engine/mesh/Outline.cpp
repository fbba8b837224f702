// SPDX-License-Identifier: Apache-2.0
#include "Outline.h"

#include "MeshChecks.h"
#include <engine/base/Parts.h>

#include <polyclipping/clipper.hpp>

#include <map>
#include <unordered_map>

namespace velmora {
namespace {

struct Edge
{
    int from;
    int to;
};

std::vector<Edge> silhouette(const Mesh& mesh, const std::vector<LatticePoint>& points, const Task& task)
{
    const auto facesUp = [&](int f) {
        const Triangle& t = mesh.triangles[static_cast<std::size_t>(f)];
        return orientationAb(points[static_cast<std::size_t>(t[0])], points[static_cast<std::size_t>(t[1])],
                             points[static_cast<std::size_t>(t[2])]) > 0;
    };
    const auto neighbours = triangleNeighbours(mesh, task);
    std::vector<Edge> edges;
    for (int f = 0; f < static_cast<int>(mesh.triangles.size()) && !task.isCancelled(); ++f) {
        if (!facesUp(f))
            continue;
        for (std::size_t e = 0; e < 3; ++e) {
            const int n = neighbours[static_cast<std::size_t>(f)][e];
            if (n < 0 || !facesUp(n))
                edges.push_back({mesh.triangles[static_cast<std::size_t>(f)][e],
                                 mesh.triangles[static_cast<std::size_t>(f)][(e + 1) % 3]});
        }
    }
    return edges;
}

// As many edges start at each vertex as end there, so following them always returns to the start.
std::vector<std::vector<int>> chained(const std::vector<Edge>& edges, const Task& task)
{
    std::unordered_multimap<int, std::size_t> leaving;
    forEachIndex(edges.size(), task, [&](std::size_t e) { leaving.emplace(edges[e].from, e); });
    std::vector<bool> used(edges.size(), false);
    std::vector<std::vector<int>> loops;
    for (std::size_t seed = 0; seed < edges.size() && !task.isCancelled(); ++seed) {
        if (used[seed])
            continue;
        std::vector<int> loop;
        std::size_t e = seed;
        while (!used[e]) {
            used[e] = true;
            loop.push_back(edges[e].from);
            const auto [begin, end] = leaving.equal_range(edges[e].to);
            std::size_t best = edges.size(); // the lowest unused one: the map's order is unspecified
            for (auto next = begin; next != end; ++next)
                if (!used[next->second])
                    best = std::min(best, next->second);
            if (best == edges.size())
                break;
            e = best;
        }
        loops.push_back(std::move(loop));
    }
    return loops;
}

// L at a crossing of two silhouette edges: that of the nearest edge.
float lightnessAt(const ClipperLib::IntPoint& x, const std::vector<Edge>& edges,
                  const std::vector<LatticePoint>& points)
{
    double best = std::numeric_limits<double>::max();
    double L = 0.0;
    for (const Edge& e : edges) {
        const LatticePoint& p = points[static_cast<std::size_t>(e.from)];
        const LatticePoint& q = points[static_cast<std::size_t>(e.to)];
        const double da = q.a - p.a, db = q.b - p.b;
        const double xa = double(x.X - p.a), xb = double(x.Y - p.b);
        const double size = da * da + db * db;
        const double t = size > 0.0 ? std::clamp((xa * da + xb * db) / size, 0.0, 1.0) : 0.0;
        const double distance = (xa - t * da) * (xa - t * da) + (xb - t * db) * (xb - t * db);
        if (distance < best) {
            best = distance;
            L = p.L + t * (q.L - p.L);
        }
    }
    return static_cast<float>(L / latticeScale);
}

bool unite(const ClipperLib::Paths& paths, ClipperLib::Paths& merged)
{
    ClipperLib::Clipper clipper;
    clipper.AddPaths(paths, ClipperLib::ptSubject, true);
    return clipper.Execute(ClipperLib::ctUnion, merged, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
}

} // namespace

std::vector<OutlineLoop> outlineOf(const Mesh& mesh, const Task& task)
{
    const auto points = latticePoints(mesh, task);
    const auto edges = silhouette(mesh, points, task);
    ClipperLib::Paths paths;
    std::map<std::pair<std::int64_t, std::int64_t>, int> vertexAt;
    for (const auto& loop : chained(edges, task)) {
        ClipperLib::Path path;
        for (int v : loop) {
            const LatticePoint& p = points[static_cast<std::size_t>(v)];
            path.emplace_back(p.a, p.b);
            vertexAt.emplace(std::pair<std::int64_t, std::int64_t>(p.a, p.b), v);
        }
        paths.push_back(std::move(path));
    }
    // Clipper catches std::bad_alloc and returns no paths. The second attempt may find memory.
    ClipperLib::Paths merged;
    if (task.isCancelled())
        return {};
    if (!unite(paths, merged))
        unite(paths, merged);

    std::vector<OutlineLoop> outline;
    for (const auto& path : merged) {
        OutlineLoop loop;
        for (const auto& x : path) {
            if (task.isCancelled())
                return outline;
            OutlinePoint point;
            const auto vertex = vertexAt.find({x.X, x.Y});
            if (vertex != vertexAt.end()) {
                point.vertex = vertex->second;
                point.lab = mesh.lab[static_cast<std::size_t>(vertex->second)];
            } else {
                point.lab = {lightnessAt(x, edges, points), fromLattice(x.X), fromLattice(x.Y)};
            }
            loop.push_back(point);
        }
        outline.push_back(std::move(loop));
    }
    return outline;
}

} // namespace velmora
