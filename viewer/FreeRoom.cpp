// SPDX-License-Identifier: Apache-2.0
#include <viewer/FreeRoom.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>

namespace {

using Sides = std::array<double, 4>; // left, top, right, bottom

QMarginsF marginsOf(const Sides& sides)
{
    return {sides[0], sides[1], sides[2], sides[3]};
}

/// How far a body must stay away from each edge to pass @p rect there.
Sides distancesPast(const QRectF& rect, const QSize& size)
{
    return {rect.right(), rect.bottom(), size.width() - rect.left(), size.height() - rect.top()};
}

/// For each edge the distance that passes all rectangles for which this edge is a good one.
Sides farthestDistances(const QList<QRectF>& taken, const QSize& size)
{
    constexpr double maxCost = 0.5; // of the picture, unless no edge costs less
    Sides farthest{};
    for (const QRectF& rect : taken) {
        const Sides distances = distancesPast(rect, size);
        Sides costs;
        for (std::size_t i = 0; i < costs.size(); ++i)
            costs[i] = distances[i] / (i % 2 == 0 ? size.width() : size.height());
        const double least = *std::min_element(costs.begin(), costs.end());
        for (std::size_t i = 0; i < costs.size(); ++i)
            if (costs[i] <= std::max(maxCost, least))
                farthest[i] = std::max(farthest[i], distances[i]);
    }
    return farthest;
}

double cross(const QPointF& o, const QPointF& p, const QPointF& q)
{
    return (p.x() - o.x()) * (q.y() - o.y()) - (p.y() - o.y()) * (q.x() - o.x());
}

/// One side of the hull of points that are sorted.
template <typename Iterator>
void appendChain(Iterator first, Iterator last, std::vector<QPointF>& hull)
{
    const std::size_t start = hull.size();
    for (; first != last; ++first) {
        while (hull.size() >= start + 2 && cross(hull[hull.size() - 2], hull.back(), *first) <= 0.0)
            hull.pop_back();
        hull.push_back(*first);
    }
    hull.pop_back(); // the other side begins with it
}

struct Range
{
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double value)
    {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    bool overlaps(const Range& other) const { return low < other.high && other.low < high; }
};

Range rangeAlong(const std::vector<QPointF>& points, const QPointF& direction)
{
    Range range;
    for (const QPointF& point : points)
        range.add(QPointF::dotProduct(point, direction));
    return range;
}

std::vector<QPointF> cornersOf(const QRectF& rect)
{
    return {rect.topLeft(), rect.topRight(), rect.bottomRight(), rect.bottomLeft()};
}

/// Two convex shapes are apart if a line along one of their edges separates them.
bool overlap(const std::vector<QPointF>& hull, const QRectF& rect)
{
    if (hull.empty())
        return false;
    const std::vector<QPointF> corners = cornersOf(rect);
    const auto isSeparated = [&](const QPointF& direction) {
        return !rangeAlong(hull, direction).overlaps(rangeAlong(corners, direction));
    };
    if (isSeparated({1.0, 0.0}) || isSeparated({0.0, 1.0}))
        return false;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const QPointF edge = hull[(i + 1) % hull.size()] - hull[i];
        if (!edge.isNull() && isSeparated({edge.y(), -edge.x()}))
            return false;
    }
    return true;
}

} // namespace

std::vector<QMarginsF> kvRoomChoices(const QList<QRectF>& taken, const QSize& size)
{
    constexpr int steps = 4; // from the edge to the far side of what is taken
    const Sides farthest = farthestDistances(taken, size);
    std::vector<Sides> choices{Sides{}};
    for (std::size_t side = 0; side < farthest.size(); ++side) {
        if (!(farthest[side] > 0.0))
            continue;
        const std::size_t count = choices.size();
        for (int step = 1; step <= steps; ++step)
            for (std::size_t i = 0; i < count; ++i) {
                choices.push_back(choices[i]);
                choices.back()[side] = farthest[side] * step / steps;
            }
    }
    std::vector<QMarginsF> result;
    std::transform(choices.begin(), choices.end(), std::back_inserter(result), marginsOf);
    return result;
}

// Andrew's monotone chain
std::vector<QPointF> kvConvexHull(std::vector<QPointF> points)
{
    const auto isBefore = [](const QPointF& p, const QPointF& q) {
        return p.x() < q.x() || (p.x() == q.x() && p.y() < q.y());
    };
    std::sort(points.begin(), points.end(), isBefore);
    points.erase(
        std::unique(points.begin(), points.end(),
                    [](const QPointF& p, const QPointF& q) { return p.x() == q.x() && p.y() == q.y(); }),
        points.end());
    if (points.size() < 3)
        return points;
    std::vector<QPointF> hull;
    appendChain(points.begin(), points.end(), hull);
    appendChain(points.rbegin(), points.rend(), hull);
    return hull;
}

bool kvIsRoomFree(const SeenShapes& seen, const QList<QRectF>& taken)
{
    const std::vector<QPointF> hull = kvConvexHull(seen.points);
    return std::none_of(taken.begin(), taken.end(), [&](const QRectF& rect) {
        return overlap(hull, rect) ||
               std::any_of(seen.rects.begin(), seen.rects.end(),
                           [&](const QRectF& label) { return label.intersects(rect); });
    });
}
