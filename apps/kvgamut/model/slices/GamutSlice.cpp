// SPDX-License-Identifier: Apache-2.0
#include "GamutSlice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <tuple>
#include <vector>

namespace {

using KVGamut::LabPoint;
using KVGamut::SectionLoop;

std::array<float, 4> coefficients(const SlicePlane& plane)
{
    if (plane.kind == SlicePlane::Lightness)
        return {1.0f, 0.0f, 0.0f, static_cast<float>(-plane.value)};
    const double h = plane.value * std::numbers::pi / 180.0;
    return {0.0f, static_cast<float>(-std::sin(h)), static_cast<float>(std::cos(h)), 0.0f};
}

bool isBefore(const LabPoint& p, const LabPoint& q)
{
    return std::tie(p.L, p.a, p.b) < std::tie(q.L, q.a, q.b);
}

/// The loops of a cut. Each starts at its lexicographically smallest point, and the loops are sorted by these
/// points, so that the result does not depend on the order of the mesh.
std::vector<SectionLoop> sortedLoops(const KVGamut::Mesh& surface, const SlicePlane& plane)
{
    std::vector<SectionLoop> loops = KVGamut::sectionLoops(coefficients(plane).data(), surface);
    for (SectionLoop& loop : loops)
        std::rotate(loop.begin(), std::min_element(loop.begin(), loop.end(), isBefore), loop.end());
    std::sort(loops.begin(), loops.end(),
              [](const SectionLoop& a, const SectionLoop& b) { return isBefore(a.front(), b.front()); });
    return loops;
}

double radians(const SlicePlane& plane)
{
    return plane.value * std::numbers::pi / 180.0;
}

QPointF flat(const LabPoint& lab, const SlicePlane& plane)
{
    if (plane.kind == SlicePlane::Lightness)
        return {double(lab.a), double(lab.b)};
    const double h = radians(plane);
    return {double(lab.a) * std::cos(h) + double(lab.b) * std::sin(h), double(lab.L)};
}

/// The intersection of the line through @p from and @p to with the axis x = 0.
QPointF onAxis(const QPointF& from, const QPointF& to)
{
    const double t = from.x() / (from.x() - to.x());
    return {0.0, from.y() + t * (to.y() - from.y())};
}

/// Appends the parts of @p ring at x >= 0, each from the axis back to the axis, to @p parts. A ring that lies
/// entirely on that side goes to @p whole.
void splitAtAxis(const QPolygonF& ring, QList<QPolygonF>& parts, QList<QPolygonF>& whole)
{
    const auto isRight = [](const QPointF& p) { return p.x() >= 0.0; };
    const qsizetype size = ring.size();
    qsizetype entry = -1; // first point right of the axis after one left of it
    for (qsizetype i = 0; i < size && entry < 0; ++i)
        if (!isRight(ring[i]) && isRight(ring[(i + 1) % size]))
            entry = (i + 1) % size;
    if (entry < 0) {
        if (isRight(ring[0]))
            whole.append(ring);
        return;
    }
    QPolygonF part;
    for (qsizetype i = 0; i < size; ++i) {
        const QPointF& before = ring[(entry + i + size - 1) % size];
        const QPointF& here = ring[(entry + i) % size];
        if (isRight(here) != isRight(before))
            part.append(onAxis(before, here));
        if (isRight(here)) {
            part.append(here);
        } else if (!part.isEmpty()) {
            parts.append(part);
            part.clear();
        }
    }
}

/// Joins parts that begin and end on the axis into rings, along the intervals of the axis inside the gamut.
/// With the ends sorted along the axis these lie between the first and second end, the third and fourth, etc.
QList<QPolygonF> joinedAlongAxis(const QList<QPolygonF>& parts)
{
    struct End
    {
        double y;
        qsizetype part;
        bool isStart;
    };
    QList<End> ends;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        ends.append({parts[i].first().y(), i, true});
        ends.append({parts[i].last().y(), i, false});
    }
    std::stable_sort(ends.begin(), ends.end(), [](const End& a, const End& b) { return a.y < b.y; });
    QList<qsizetype> follower(parts.size(), -1); // for each part, the next part of its ring
    for (qsizetype i = 0; i + 1 < ends.size(); i += 2) {
        const End& one = ends[i];
        const End& other = ends[i + 1];
        if (one.isStart != other.isStart)
            follower[one.isStart ? other.part : one.part] = one.isStart ? one.part : other.part;
    }
    QList<QPolygonF> rings;
    QList<bool> used(parts.size(), false);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        QPolygonF ring;
        for (qsizetype at = i; at >= 0 && !used[at]; at = follower[at]) {
            used[at] = true;
            ring += parts[at];
        }
        if (ring.size() > 2)
            rings.append(ring);
    }
    return rings;
}

/// @p ring without consecutive duplicate points.
QPolygonF withoutRepeats(QPolygonF ring)
{
    const auto same = [](const QPointF& a, const QPointF& b) { return a.x() == b.x() && a.y() == b.y(); };
    const auto kept = std::unique(ring.begin(), ring.end(), same);
    ring.resize(std::distance(ring.begin(), kept));
    while (ring.size() > 1 && ring.first().x() == ring.last().x() && ring.first().y() == ring.last().y())
        ring.removeLast();
    return ring;
}

} // namespace

double ringArea(const QPolygonF& ring)
{
    double twice = 0.0;
    for (qsizetype i = 0; i < ring.size(); ++i) {
        const QPointF& a = ring[i];
        const QPointF& b = ring[(i + 1) % ring.size()];
        twice += a.x() * b.y() - b.x() * a.y();
    }
    return 0.5 * twice;
}

PlaneLab labOf(const QPointF& place, const SlicePlane& plane)
{
    if (plane.kind == SlicePlane::Lightness)
        return {plane.value, place.x(), place.y()};
    const double h = radians(plane);
    return {place.y(), place.x() * std::cos(h), place.x() * std::sin(h)};
}

PlaneView viewOf(const LabPoint& lab, const SlicePlane& plane)
{
    QPointF place = flat(lab, plane);
    if (plane.kind == SlicePlane::Hue)
        place.setX(std::max(place.x(), 0.0)); // the half-plane ends at the axis
    const PlaneLab nearest = labOf(place, plane);
    return {place,
            std::hypot(double(lab.L) - nearest.L, double(lab.a) - nearest.a, double(lab.b) - nearest.b)};
}

double GamutSlice::area() const
{
    double sum = 0.0;
    for (const QPolygonF& ring : rings)
        sum += ringArea(ring);
    return sum;
}

GamutSlice gamutSlice(const KVGamut::Mesh& surface, const SlicePlane& plane)
{
    GamutSlice slice;
    QList<QPolygonF> parts;
    for (const SectionLoop& loop : sortedLoops(surface, plane)) {
        QPolygonF ring;
        for (const LabPoint& lab : loop)
            ring.append(flat(lab, plane));
        if (plane.kind == SlicePlane::Lightness)
            slice.rings.append(ring);
        else
            splitAtAxis(ring, parts, slice.rings);
    }
    slice.rings += joinedAlongAxis(parts);
    for (QPolygonF& ring : slice.rings)
        ring = withoutRepeats(ring);
    slice.rings.removeIf([](const QPolygonF& ring) { return ring.size() < 3; });
    // all pieces have the same orientation, which depends on the plane
    if (slice.area() < 0.0)
        for (QPolygonF& ring : slice.rings)
            std::reverse(ring.begin(), ring.end());
    return slice;
}
