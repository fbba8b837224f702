// SPDX-License-Identifier: Apache-2.0
#include "MeshChecks.h"

#include <engine/base/Parts.h>

#include <algorithm>
#include <numeric>
#include <tuple>

namespace velmora {
namespace {

bool indicesAreValid(const Mesh& mesh, const Task& task)
{
    const int count = static_cast<int>(mesh.lab.size());
    bool valid = true;
    const bool all = forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        const Triangle& t = mesh.triangles[f];
        const bool exist = std::all_of(t.begin(), t.end(), [count](int v) { return v >= 0 && v < count; });
        valid = valid && exist && t[0] != t[1] && t[1] != t[2] && t[2] != t[0];
    });
    return valid && all;
}

// An edge that starts at a vertex.
struct HalfEdge
{
    int other; // the vertex at the edge's far end
    int triangle;
    int edge;
};

// The edges that start at each vertex, in the order of the triangles: those of vertex v are first[v] to
// first[v + 1].
struct EdgeTable
{
    std::vector<int> first;
    std::vector<HalfEdge> edges;
};

EdgeTable edgesByOrigin(const Mesh& mesh, const Task& task)
{
    EdgeTable table;
    // While the table is filled, first[v + 1] is the next place for an edge of v; at the end it is the first
    // place for those of v + 1.
    table.first.assign(mesh.lab.size() + 2, 0);
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t f) {
        for (int v : mesh.triangles[f])
            ++table.first[static_cast<std::size_t>(v) + 2];
    });
    std::partial_sum(table.first.begin(), table.first.end(), table.first.begin());
    growInParts(table.edges, mesh.triangles.size() * 3, {}, task);
    for (std::size_t f = 0; f < mesh.triangles.size() && !task.isCancelled(); ++f)
        for (int e = 0; e < 3; ++e) {
            const Triangle& t = mesh.triangles[f];
            const auto place = table.first[static_cast<std::size_t>(t[static_cast<std::size_t>(e)]) + 1]++;
            table.edges[static_cast<std::size_t>(place)] = {t[static_cast<std::size_t>((e + 1) % 3)],
                                                            static_cast<int>(f), e};
        }
    table.first.pop_back();
    return table;
}

using Neighbours = std::vector<std::array<int, 3>>;

// Closed: no edge occurs twice in the same direction, and each occurs in the opposite one, too.
bool isClosed(const EdgeTable& table, const Neighbours& neighbours, const Task& task)
{
    std::vector<int> ends;
    for (std::size_t v = 0; v + 1 < table.first.size() && !task.isCancelled(); ++v) {
        ends.clear();
        for (int e = table.first[v]; e < table.first[v + 1]; ++e)
            ends.push_back(table.edges[static_cast<std::size_t>(e)].other);
        std::sort(ends.begin(), ends.end());
        if (std::adjacent_find(ends.begin(), ends.end()) != ends.end())
            return false;
    }
    bool closed = true;
    forEachIndex(neighbours.size(), task, [&](std::size_t f) {
        const std::array<int, 3>& n = neighbours[f];
        closed = closed && n[0] >= 0 && n[1] >= 0 && n[2] >= 0;
    });
    return closed;
}

Neighbours neighboursIn(const EdgeTable& table, const Mesh& mesh, const Task& task)
{
    Neighbours neighbours;
    growInParts(neighbours, mesh.triangles.size(), {-1, -1, -1}, task);
    for (std::size_t f = 0; f < mesh.triangles.size() && !task.isCancelled(); ++f)
        for (std::size_t e = 0; e < 3; ++e) {
            const int from = mesh.triangles[f][e];
            const int to = mesh.triangles[f][(e + 1) % 3];
            const auto begin = table.edges.begin() + table.first[static_cast<std::size_t>(to)];
            const auto end = table.edges.begin() + table.first[static_cast<std::size_t>(to) + 1];
            const auto back = std::find_if(begin, end, [from](const HalfEdge& c) { return c.other == from; });
            neighbours[f][e] = back == end ? -1 : back->triangle;
        }
    return neighbours;
}

// Manifold: a walk around a vertex from triangle to triangle reaches all of its triangles.
bool isManifoldAt(int vertex, const Mesh& mesh, const EdgeTable& table, const Neighbours& neighbours)
{
    const auto v = static_cast<std::size_t>(vertex);
    const int degree = table.first[v + 1] - table.first[v];
    if (degree == 0)
        return true;
    const int start = table.edges[static_cast<std::size_t>(table.first[v])].triangle;
    int current = start;
    int met = 0;
    do {
        const Triangle& t = mesh.triangles[static_cast<std::size_t>(current)];
        const auto corner = static_cast<std::size_t>(std::find(t.begin(), t.end(), vertex) - t.begin());
        current = neighbours[static_cast<std::size_t>(current)][corner];
        ++met;
    } while (current != start && met <= degree);
    return met == degree;
}

// Connected components, by flood fill.
int componentsOf(const Neighbours& neighbours, const Task& task)
{
    int components = 0;
    std::vector<bool> seen(neighbours.size(), false);
    std::vector<int> open;
    for (std::size_t seed = 0; seed < neighbours.size() && !task.isCancelled(); ++seed) {
        if (seen[seed])
            continue;
        ++components;
        seen[seed] = true;
        open.assign(1, static_cast<int>(seed));
        while (!open.empty() && !task.isCancelled()) {
            const auto f = static_cast<std::size_t>(open.back());
            open.pop_back();
            for (int n : neighbours[f])
                if (!seen[static_cast<std::size_t>(n)]) {
                    seen[static_cast<std::size_t>(n)] = true;
                    open.push_back(n);
                }
        }
    }
    return components;
}

} // namespace

std::vector<std::array<int, 3>> triangleNeighbours(const Mesh& mesh, const Task& task)
{
    return neighboursIn(edgesByOrigin(mesh, task), mesh, task);
}

MeshTopology topology(const Mesh& mesh, const Task& task)
{
    MeshTopology result;
    result.indicesValid = indicesAreValid(mesh, task);
    if (!result.indicesValid || mesh.triangles.empty())
        return result;
    const EdgeTable table = edgesByOrigin(mesh, task);
    const Neighbours neighbours = neighboursIn(table, mesh, task);
    result.closed = !task.isCancelled() && isClosed(table, neighbours, task);
    if (!result.closed)
        return result;

    result.manifold = true;
    int used = 0;
    for (int v = 0; v < static_cast<int>(mesh.lab.size()) && !task.isCancelled(); ++v) {
        result.manifold = result.manifold && isManifoldAt(v, mesh, table, neighbours);
        used += table.first[static_cast<std::size_t>(v) + 1] > table.first[static_cast<std::size_t>(v)];
    }
    result.components = componentsOf(neighbours, task);
    const int faces = static_cast<int>(mesh.triangles.size());
    result.eulerCharacteristic = used - faces * 3 / 2 + faces;
    return result;
}

} // namespace velmora
