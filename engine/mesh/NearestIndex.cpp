// SPDX-License-Identifier: Apache-2.0
#include "NearestIndex.h"

#include <engine/base/Parts.h>

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

Vec3 lower(Vec3 p, Vec3 q)
{
    return {std::min(p.L, q.L), std::min(p.a, q.a), std::min(p.b, q.b)};
}

Vec3 upper(Vec3 p, Vec3 q)
{
    return {std::max(p.L, q.L), std::max(p.a, q.a), std::max(p.b, q.b)};
}

double along(Vec3 p, int axis)
{
    return axis == 0 ? p.L : axis == 1 ? p.a : p.b;
}

} // namespace

// The foot of the perpendicular if it lies in the triangle, else the nearest point of the edges that have x
// on their outer side: the nearest point of a convex polygon never lies inside of an edge whose inner side
// has x. In slivers the tests are subject to rounding; there the foot and the nearest edge are about equally
// near.
Vec3 nearestOnTriangle(Vec3 x, Vec3 p, Vec3 q, Vec3 r)
{
    const Vec3 normal = cross(q - p, r - p);
    const double size = squaredLength(normal);
    const auto isOutside = [&](Vec3 from, Vec3 to) {
        return !(dot(cross(to - from, x - from), normal) >= 0.0);
    };
    const bool any = !(size > 0.0); // without an area all edges count
    const bool pq = any || isOutside(p, q), qr = any || isOutside(q, r), rp = any || isOutside(r, p);
    if (!pq && !qr && !rp)
        return x - dot(x - p, normal) / size * normal;
    Vec3 best = p;
    double bestSquared = std::numeric_limits<double>::infinity();
    const auto take = [&](Vec3 point) {
        if (const double squared = squaredLength(point - x); squared < bestSquared) {
            best = point;
            bestSquared = squared;
        }
    };
    if (pq)
        take(nearestOnSegment(x, p, q));
    if (qr)
        take(nearestOnSegment(x, q, r));
    if (rp)
        take(nearestOnSegment(x, r, p));
    return best;
}

double NearestIndex::Box::squaredDistance(Vec3 x) const
{
    return squaredLength(x - upper(low, lower(high, x)));
}

NearestIndex::NearestIndex(const Mesh& mesh, const Task& task)
{
    m_triangles.reserve(mesh.triangles.size());
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t i) {
        const Triangle& t = mesh.triangles[i];
        m_triangles.push_back({toVec3(mesh.lab[static_cast<std::size_t>(t[0])]),
                               toVec3(mesh.lab[static_cast<std::size_t>(t[1])]),
                               toVec3(mesh.lab[static_cast<std::size_t>(t[2])])});
    });
    m_nodes.reserve(m_triangles.size());
    if (!m_triangles.empty())
        build(m_triangles, 0, static_cast<int>(m_triangles.size()), task);
}

// Splits at the median along the longest side of the box. With 2^31 triangles the depth is 30.
int NearestIndex::build(std::vector<TrianglePoints>& triangles, int first, int count, const Task& task)
{
    const int place = static_cast<int>(m_nodes.size());
    m_nodes.emplace_back();
    const auto begin = triangles.begin() + first;
    Box box{(*begin)[0], (*begin)[0]};
    for (auto t = begin; t != begin + count; ++t)
        for (const Vec3& p : *t)
            box = {lower(box.low, p), upper(box.high, p)};
    m_nodes[static_cast<std::size_t>(place)] = {box, 0, 0, first, count};
    constexpr int minToLook = 512;
    if (count >= minToLook && task.isCancelled())
        return place;
    if (count <= TriangleGroup::size) {
        m_nodes[static_cast<std::size_t>(place)].group = static_cast<int>(m_groups.size());
        m_groups.emplace_back(
            std::span(triangles).subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(count)));
        return place;
    }

    const Vec3 size = box.high - box.low;
    const int axis = size.L >= size.a && size.L >= size.b ? 0 : size.a >= size.b ? 1 : 2;
    const auto middle = [axis](const TrianglePoints& t) {
        return along(t[0], axis) + along(t[1], axis) + along(t[2], axis);
    };
    const int half = count / 2;
    std::nth_element(begin, begin + half, begin + count,
                     [&](const TrianglePoints& s, const TrianglePoints& t) { return middle(s) < middle(t); });
    build(triangles, first, half, task);
    const int second = build(triangles, first + half, count - half, task);
    m_nodes[static_cast<std::size_t>(place)].count = 0;
    m_nodes[static_cast<std::size_t>(place)].secondChild = second;
    return place;
}

void NearestIndex::searchLeaf(const Node& leaf, Vec3 x, Vec3& best, double& bestSquared) const
{
    const auto estimates = m_groups[static_cast<std::size_t>(leaf.group)].squaredDistances(x);
    const float limit = TriangleGroup::farthest(bestSquared);
    for (int i = 0; i < leaf.count; ++i) {
        if (estimates[i] > limit)
            continue;
        const TrianglePoints& t = m_triangles[static_cast<std::size_t>(leaf.first + i)];
        const Vec3 candidate = nearestOnTriangle(x, t[0], t[1], t[2]);
        if (const double distance = squaredLength(candidate - x); distance < bestSquared) {
            best = candidate;
            bestSquared = distance;
        }
    }
}

Vec3 NearestIndex::nearest(Vec3 x) const
{
    struct Open
    {
        int node;
        double squaredDistance;
    };
    std::array<Open, 64> open; // nodes still to visit, at most one for each level and one more
    std::size_t count = 0;
    open[count++] = {0, m_nodes.front().box.squaredDistance(x)};
    Vec3 best = m_triangles.front()[0];
    double bestSquared = squaredLength(best - x);
    while (count > 0) {
        const Open next = open[--count];
        if (next.squaredDistance > bestSquared)
            continue;
        const Node& node = m_nodes[static_cast<std::size_t>(next.node)];
        if (node.count > 0) {
            searchLeaf(node, x, best, bestSquared);
            continue;
        }
        Open nearer{next.node + 1, m_nodes[static_cast<std::size_t>(next.node) + 1].box.squaredDistance(x)};
        Open farther{node.secondChild,
                     m_nodes[static_cast<std::size_t>(node.secondChild)].box.squaredDistance(x)};
        if (farther.squaredDistance < nearer.squaredDistance)
            std::swap(nearer, farther);
        open[count++] = farther;
        open[count++] = nearer;
    }
    return best;
}

} // namespace velmora
