// SPDX-License-Identifier: Apache-2.0
#include "GamutRings.h"

#include "GamutSlice.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double defaultWhite = 100.0;
constexpr double slack = 0.01; // in steps: a white this far above a ring still belongs to it

double maxLightness(const KVGamut::Mesh& surface)
{
    double max = 0.0;
    for (const KVGamut::LabPoint& vertex : surface.lab)
        max = std::max(max, double(vertex.L));
    return max;
}

/// A line segment of the boundary of a cut at a hue; x is chroma, y is lightness.
struct Edge
{
    QPointF from;
    QPointF to;
};

/// The point of @p edge where a linear function is zero whose values at the ends are given.
QPointF crossing(const Edge& edge, double alongFrom, double alongTo)
{
    return edge.from + alongFrom / (alongFrom - alongTo) * (edge.to - edge.from);
}

/// The part of @p edge with x >= 0; if there is none, both ends are equal.
Edge rightOfAxis(const Edge& edge)
{
    const double from = edge.from.x();
    const double to = edge.to.x();
    if (from >= 0.0 && to >= 0.0)
        return edge;
    if (from < 0.0 && to < 0.0)
        return {};
    const QPointF middle = crossing(edge, from, to);
    return from >= 0.0 ? Edge{edge.from, middle} : Edge{middle, edge.to};
}

/// The part of @p edge with y <= @p top.
Edge below(const Edge& edge, double top)
{
    const double from = edge.from.y() - top;
    const double to = edge.to.y() - top;
    if (from <= 0.0 && to <= 0.0)
        return edge;
    if (from > 0.0 && to > 0.0)
        return {};
    const QPointF middle = crossing(edge, from, to);
    return from <= 0.0 ? Edge{edge.from, middle} : Edge{middle, edge.to};
}

/// The contribution of a boundary edge to the integral of 2 C dC dL over the region. By Green's theorem this
/// is the integral of C^2 dL along the boundary. The axis C = 0 and lines of constant lightness,
/// where the region may be cut off, contribute nothing.
double contribution(const Edge& edge)
{
    const double c0 = edge.from.x();
    const double c1 = edge.to.x();
    return (c0 * c0 + c0 * c1 + c1 * c1) / 3.0 * (edge.to.y() - edge.from.y());
}

/// The squared radii of the rings up to each of @p limits, at the hue of positive x in @p edges.
QList<double> squaredRadii(const QList<Edge>& edges, const QList<double>& limits)
{
    QList<double> squares(limits.size(), 0.0);
    for (const Edge& edge : edges) {
        const Edge right = rightOfAxis(edge);
        for (qsizetype i = 0; i < limits.size(); ++i)
            squares[i] += contribution(below(right, limits[i]));
    }
    for (double& square : squares)
        square = std::abs(square); // for either orientation of the boundary
    return squares;
}

QList<Edge> edgesAtHue(const KVGamut::Mesh& surface, double h)
{
    const float plane[4] = {0.0f, static_cast<float>(-std::sin(h)), static_cast<float>(std::cos(h)), 0.0f};
    const auto pointOf = [h](const KVGamut::LabPoint& lab) {
        return QPointF(double(lab.a) * std::cos(h) + double(lab.b) * std::sin(h), double(lab.L));
    };
    QList<Edge> edges;
    const auto pieces = KVGamut::computeRing(plane, surface);
    for (const auto& [from, to] : pieces)
        edges.append({pointOf(from), pointOf(to)});
    return edges;
}

} // namespace

GamutRings gamutRings(const KVGamut::Mesh& surface, double step, int hues)
{
    GamutRings result;
    if (surface.isEmpty())
        return result;
    const double top = std::max(defaultWhite, maxLightness(surface));
    for (int i = 1; (i - 1 + slack) * step < top; ++i)
        result.lightness.append(i * step);
    QList<double> limits = result.lightness;
    limits.last() = std::max(limits.last(), top);
    result.rings.fill(QPolygonF(hues), result.lightness.size());

    for (int hue = 0; hue < hues / 2; ++hue) {
        const double h = 2.0 * std::numbers::pi * hue / hues;
        QList<Edge> edges = edgesAtHue(surface, h);
        for (const int corner : {hue, hue + hues / 2}) { // one plane contains a hue and its opposite
            const QList<double> squares = squaredRadii(edges, limits);
            const double angle = 2.0 * std::numbers::pi * corner / hues;
            for (qsizetype i = 0; i < squares.size(); ++i)
                result.rings[i][corner] = std::sqrt(squares[i]) * QPointF(std::cos(angle), std::sin(angle));
            for (Edge& edge : edges) {
                edge.from.rx() = -edge.from.x();
                edge.to.rx() = -edge.to.x();
            }
        }
    }
    return result;
}
