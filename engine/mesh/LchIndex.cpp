// SPDX-License-Identifier: Apache-2.0
#include "LchIndex.h"

#include "NearestIndex.h"
#include "NearestPiece.h"

#include <engine/base/Parts.h>

#include <limits>
#include <numbers>
#include <utility>

namespace velmora {
namespace {

// A range around the hue @p middle that contains both.
LchRange united(const LchRange& p, const LchRange& q, double middle)
{
    LchRange range{std::min(p.lowL, q.lowL), std::max(p.highL, q.highL), std::min(p.lowC, q.lowC),
                   std::max(p.highC, q.highC)};
    if (p.hasEveryHue() || q.hasEveryHue())
        return range;
    const double ofP = std::remainder(p.hue - middle, 2.0 * std::numbers::pi);
    const double ofQ = std::remainder(q.hue - middle, 2.0 * std::numbers::pi);
    const double low = std::min(ofP - p.halfWidth, ofQ - q.halfWidth);
    const double high = std::max(ofP + p.halfWidth, ofQ + q.halfWidth);
    range.hue = middle + 0.5 * (low + high);
    range.halfWidth = 0.5 * (high - low);
    return range;
}

// The point of a convex polygon that is nearest to @p x.
Vec3 nearestOnPolygon(Vec3 x, std::span<const Vec3> polygon)
{
    Vec3 best = polygon.front();
    for (std::size_t i = 1; i < polygon.size(); ++i) {
        const Vec3 found = nearestOnTriangle(x, polygon[0], polygon[i - 1], polygon[i]);
        if (squaredLength(found - x) < squaredLength(best - x))
            best = found;
    }
    return best;
}

// A convex polygon with at most six corners.
struct SmallPolygon
{
    std::array<Vec3, 8> corners;
    std::size_t count = 0;

    void add(Vec3 corner) { corners[count++] = corner; }
    [[nodiscard]] std::span<const Vec3> span() const { return {corners.data(), count}; }
};

// The part of @p polygon where @p height is not negative. Corners in between get the height 0 exactly.
template <typename Height>
SmallPolygon clipped(const SmallPolygon& polygon, double Vec3::*coordinate, const Height& height)
{
    SmallPolygon part;
    for (std::size_t i = 0; i < polygon.count; ++i) {
        const Vec3& p = polygon.corners[i];
        const Vec3& q = polygon.corners[(i + 1) % polygon.count];
        const double hp = height(p), hq = height(q);
        if (hp >= 0.0)
            part.add(p);
        if ((hp > 0.0 && hq < 0.0) || (hp < 0.0 && hq > 0.0)) {
            Vec3 between = p + hp / (hp - hq) * (q - p);
            between.*coordinate = 0.0;
            part.add(between);
        }
    }
    return part;
}

// The half-plane of a hue, with coordinates in which it is b = 0, a >= 0. Without a hue: the L* axis.
class HalfPlane
{
public:
    explicit HalfPlane(Vec3 x) : m_chroma(std::hypot(x.a, x.b))
    {
        if (m_chroma > 0.0) {
            m_cos = x.a / m_chroma;
            m_sin = x.b / m_chroma;
        }
    }
    [[nodiscard]] bool isAxis() const { return m_chroma == 0.0; }
    [[nodiscard]] double hue() const { return std::atan2(m_sin, m_cos); }
    [[nodiscard]] Vec3 turned(Vec3 p) const
    {
        return {p.L, m_cos * p.a + m_sin * p.b, m_cos * p.b - m_sin * p.a};
    }
    [[nodiscard]] Vec3 turnedBack(Vec3 p) const
    {
        return {p.L, m_cos * p.a - m_sin * p.b, m_sin * p.a + m_cos * p.b};
    }

    // The common part with a triangle, in turned coordinates.
    [[nodiscard]] SmallPolygon section(const std::array<Vec3, 3>& triangle) const
    {
        SmallPolygon part;
        for (const Vec3& p : triangle)
            part.add(turned(p));
        part = clipped(part, &Vec3::b, [](const Vec3& p) { return p.b; });
        part = clipped(part, &Vec3::b, [](const Vec3& p) { return -p.b; });
        constexpr double rounding = 1e-9; // points on the axis belong to the half-plane
        part = clipped(part, &Vec3::a, [](const Vec3& p) { return p.a + rounding; });
        return isAxis() ? clipped(part, &Vec3::a, [](const Vec3& p) { return rounding - p.a; }) : part;
    }

private:
    double m_chroma;
    double m_cos = 1.0;
    double m_sin = 0.0;
};

// dE76 to the nearest colour in a range of L* and chroma, whatever the hue
double distanceTo(const LchRange& range, double lightness, double chroma)
{
    return std::hypot(std::max({0.0, range.lowL - lightness, lightness - range.highL}),
                      std::max({0.0, range.lowC - chroma, chroma - range.highC}));
}

} // namespace

LchIndex::LchIndex(const Mesh& mesh, const Task& task)
{
    m_leaves.reserve(mesh.triangles.size());
    forEachIndex(mesh.triangles.size(), task, [&](std::size_t i) {
        const Triangle& t = mesh.triangles[i];
        const TrianglePoints points{toVec3(mesh.lab[static_cast<std::size_t>(t[0])]),
                                    toVec3(mesh.lab[static_cast<std::size_t>(t[1])]),
                                    toVec3(mesh.lab[static_cast<std::size_t>(t[2])])};
        m_leaves.push_back({points, lchRangeOf(points)});
    });
    m_nodes.reserve(2 * m_leaves.size());
    if (!m_leaves.empty())
        build(m_leaves, 0, static_cast<int>(m_leaves.size()), task);
}

// Splits at the median along the longest side of the box in Lab, as NearestIndex does. The range of a node is
// that of its children, so nodes are filled in from the leaves upwards.
void LchIndex::build(std::vector<Leaf>& leaves, int first, int count, const Task& task)
{
    const auto place = m_nodes.size();
    const auto begin = leaves.begin() + first;
    m_nodes.push_back({begin->range, 0, first});
    constexpr int minToLook = 512;
    if (count == 1 || (count >= minToLook && task.isCancelled()))
        return;
    const auto middle = [](const Leaf& leaf) { return leaf.points[0] + leaf.points[1] + leaf.points[2]; };
    Vec3 low = middle(*begin), high = low, sum;
    for (auto leaf = begin; leaf != begin + count; ++leaf) {
        const Vec3 m = middle(*leaf);
        low = {std::min(low.L, m.L), std::min(low.a, m.a), std::min(low.b, m.b)};
        high = {std::max(high.L, m.L), std::max(high.a, m.a), std::max(high.b, m.b)};
        sum = sum + m;
    }
    const Vec3 size = high - low;
    const auto axis = size.L >= size.a && size.L >= size.b ? &Vec3::L
                      : size.a >= size.b                   ? &Vec3::a
                                                           : &Vec3::b;
    const int half = count / 2;
    std::nth_element(begin, begin + half, begin + count,
                     [&](const Leaf& p, const Leaf& q) { return middle(p).*axis < middle(q).*axis; });
    build(leaves, first, half, task);
    const auto second = m_nodes.size();
    build(leaves, first + half, count - half, task);
    m_nodes[place].secondChild = static_cast<int>(second);
    m_nodes[place].range = united(m_nodes[place + 1].range, m_nodes[second].range, std::atan2(sum.b, sum.a));
}

// Visits the leaves whose bound is below the limit that @p visit returns, the nearer child first.
template <typename Bound, typename Visit>
void LchIndex::search(const Bound& bound, const Visit& visit) const
{
    struct Open
    {
        int node;
        double bound;
    };
    std::array<Open, 64> open; // at most one for each level and one more
    std::size_t count = 0;
    double limit = visit(nullptr);
    const auto opened = [&](int node) {
        return Open{node, bound(m_nodes[static_cast<std::size_t>(node)].range)};
    };
    open[count++] = opened(0);
    while (count > 0) {
        const Open next = open[--count];
        if (!(next.bound < limit))
            continue;
        const Node& node = m_nodes[static_cast<std::size_t>(next.node)];
        if (node.secondChild == 0) {
            limit = visit(&m_leaves[static_cast<std::size_t>(node.leaf)]);
            continue;
        }
        Open nearer = opened(next.node + 1), farther = opened(node.secondChild);
        if (farther.bound < nearer.bound)
            std::swap(nearer, farther);
        open[count++] = farther;
        open[count++] = nearer;
    }
}

Vec3 LchIndex::nearestByCiede2000(Vec3 x, Vec3 start) const
{
    Ciede2000Search nearest(x, start);
    search(nearest.bound(), [&nearest](const Leaf* leaf) {
        if (leaf)
            nearest.improveOn(leaf->points, leaf->range);
        return nearest.difference();
    });
    return nearest.point();
}

std::optional<Vec3> LchIndex::nearestAtHue(Vec3 x) const
{
    const HalfPlane plane(x);
    const Vec3 turned = plane.turned(x);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    std::optional<Vec3> best;
    double smallest = infinity;
    const auto bound = [&](const LchRange& range) {
        const bool isMet = plane.isAxis() ? range.lowC == 0.0 : range.containsHue(plane.hue());
        return isMet ? distanceTo(range, turned.L, turned.a) : infinity;
    };
    search(bound, [&](const Leaf* leaf) {
        const SmallPolygon section = leaf ? plane.section(leaf->points) : SmallPolygon();
        if (section.count == 0)
            return smallest;
        const Vec3 found = nearestOnPolygon(turned, section.span());
        if (const double distance = length(found - turned); distance < smallest) {
            best = plane.turnedBack(found);
            smallest = distance;
        }
        return smallest;
    });
    return best;
}

} // namespace velmora
