// SPDX-License-Identifier: Apache-2.0
#include "NearestIndex.h"

#include <engine/base/Parts.h>

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

Vec3 lowest(Vec3 p, Vec3 q)
{
    return {std::min(p.L, q.L), std::min(p.a, q.a), std::min(p.b, q.b)};
}

Vec3 highest(Vec3 p, Vec3 q)
{
    return {std::max(p.L, q.L), std::max(p.a, q.a), std::max(p.b, q.b)};
}

double along(Vec3 p, int axis)
{
    return axis == 0 ? p.L : axis == 1 ? p.a : p.b;
}

template <typename Triangles>
std::pair<Vec3, Vec3> boundsOf(const Triangles& triangles)
{
    Vec3 low = triangles[0][0], high = low;
    for (const auto& t : triangles)
        for (const Vec3& p : t) {
            low = lowest(low, p);
            high = highest(high, p);
        }
    return {low, high};
}

// Sorts the triangles so that those in one half lie below those in the other along the longest side of their
// box. @return the number in the first half
template <typename Triangles>
std::size_t split(const Triangles& triangles)
{
    const auto [low, high] = boundsOf(triangles);
    const Vec3 size = high - low;
    const int axis = size.L >= size.a && size.L >= size.b ? 0 : size.a >= size.b ? 1 : 2;
    const auto middle = [axis](const auto& t) {
        return along(t[0], axis) + along(t[1], axis) + along(t[2], axis);
    };
    const std::size_t half = triangles.size() / 2;
    std::nth_element(triangles.begin(), triangles.begin() + static_cast<std::ptrdiff_t>(half),
                     triangles.end(), [&](const auto& s, const auto& t) { return middle(s) < middle(t); });
    return half;
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

NearestIndex::NearestIndex(const Mesh& mesh, const Task& task)
{
    m_triangles.reserve(mesh.triangles.size());
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t i) {
        const Triangle& t = mesh.triangles[i];
        m_triangles.push_back({toVec3(mesh.lab[static_cast<std::size_t>(t[0])]),
                               toVec3(mesh.lab[static_cast<std::size_t>(t[1])]),
                               toVec3(mesh.lab[static_cast<std::size_t>(t[2])])});
    });
    m_nodes.reserve(m_triangles.size() / 4 + 1);
    m_leaves.reserve(m_triangles.size() / 2 + 1);
    if (!m_triangles.empty())
        buildNode(m_triangles, 0, task);
}

// first is the number of the first of the triangles. The median splits make at most 17 levels of nodes.
int NearestIndex::buildNode(std::span<TrianglePoints> triangles, int first, const Task& task)
{
    const auto place = m_nodes.size();
    m_nodes.emplace_back();
    constexpr std::size_t minToLook = 512;
    if (triangles.size() >= minToLook && task.isCancelled())
        return static_cast<int>(place);
    std::vector<std::span<TrianglePoints>> parts{triangles};
    while (parts.size() < laneCount) {
        const auto largest = std::max_element(
            parts.begin(), parts.end(), [](const auto& p, const auto& q) { return p.size() < q.size(); });
        if (largest->size() <= TriangleGroup::maxCount)
            break;
        const std::size_t half = split(*largest);
        const auto second = largest->subspan(half);
        *largest = largest->first(half);
        parts.insert(largest + 1, second);
    }
    Node node;
    constexpr double far = std::numeric_limits<double>::infinity();
    for (int lane = 0; lane < laneCount; ++lane) {
        if (static_cast<std::size_t>(lane) >= parts.size()) {
            node.low.set(lane, {far, far, far});
            node.high.set(lane, {far, far, far});
            continue;
        }
        const auto& part = parts[static_cast<std::size_t>(lane)];
        const auto [low, high] = boundsOf(part); // exact: the mesh is in single precision
        node.low.set(lane, low);
        node.high.set(lane, high);
        const auto offset = static_cast<int>(part.data() - triangles.data());
        node.children[static_cast<std::size_t>(lane)] = buildChild(part, first + offset, task);
    }
    m_nodes[place] = node;
    return static_cast<int>(place);
}

int NearestIndex::buildChild(std::span<TrianglePoints> triangles, int first, const Task& task)
{
    if (triangles.size() > TriangleGroup::maxCount)
        return buildNode(triangles, first, task);
    m_leaves.push_back({TriangleGroup(triangles), first, static_cast<int>(triangles.size())});
    return ~static_cast<int>(m_leaves.size() - 1);
}

void NearestIndex::searchLeaf(const Leaf& leaf, Vec3 x, Found& best) const
{
    const Lanes estimates = leaf.group.squaredDistances(x);
    const float limit = TriangleGroup::farthest(best.squaredDistance);
    for (int i = 0; i < leaf.count; ++i) {
        if (estimates[i] > limit)
            continue;
        const auto& [p, q, r] = m_triangles[static_cast<std::size_t>(leaf.first + i)];
        const Vec3 candidate = nearestOnTriangle(x, p, q, r);
        if (const double squared = squaredLength(candidate - x); squared < best.squaredDistance)
            best = {candidate, squared};
    }
}

// For points that are too far away for estimates in single precision.
Vec3 NearestIndex::nearestOfAll(Vec3 x) const
{
    Found best{m_triangles.front()[0], std::numeric_limits<double>::infinity()};
    for (const auto& [p, q, r] : m_triangles) {
        const Vec3 candidate = nearestOnTriangle(x, p, q, r);
        if (const double squared = squaredLength(candidate - x); squared < best.squaredDistance)
            best = {candidate, squared};
    }
    return best.point;
}

Vec3 NearestIndex::nearest(Vec3 x) const
{
    if (std::max({std::abs(x.L), std::abs(x.a), std::abs(x.b)}) > TriangleGroup::maxDistance / 2.0)
        return nearestOfAll(x);
    struct Open
    {
        int child;
        float squaredDistance;
    };
    const LanesVec3 point = LanesVec3::all(x);
    std::array<Open, 64> open; // children still to visit, at most three for each level and four
    std::size_t count = 0;
    open[count++] = {0, 0.0f};
    Found best{m_triangles.front()[0], squaredLength(m_triangles.front()[0] - x)};
    float limit = TriangleGroup::farthest(best.squaredDistance);
    while (count > 0) {
        const Open next = open[--count];
        if (next.squaredDistance > limit)
            continue;
        if (next.child < 0) {
            searchLeaf(m_leaves[static_cast<std::size_t>(~next.child)], x, best);
            limit = TriangleGroup::farthest(best.squaredDistance);
            continue;
        }
        const Node& node = m_nodes[static_cast<std::size_t>(next.child)];
        const Lanes distances = node.squaredDistances(point);
        const std::size_t begin = count;
        for (int lane = 0; lane < laneCount; ++lane) {
            if (!(distances[lane] <= limit))
                continue;
            std::size_t at = count++; // the nearest one last, to be visited first
            for (; at > begin && open[at - 1].squaredDistance < distances[lane]; --at)
                open[at] = open[at - 1];
            open[at] = {node.children[static_cast<std::size_t>(lane)], distances[lane]};
        }
    }
    return best.point;
}

} // namespace velmora
