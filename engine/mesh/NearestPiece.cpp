// SPDX-License-Identifier: Apache-2.0
#include "NearestPiece.h"

#include "NearestIndex.h"

#include <numbers>

namespace velmora {
namespace {

using Corners = std::array<Vec3, 3>;

// Weights of the corners for the point of a triangle that is nearest to the origin, by the regions of its
// corners, edges and face (C. Ericson, "Real-time collision detection", 2005, 5.1.5).
std::array<double, 3> weightsNearestToOrigin(const Corners& t)
{
    const Vec3 pq = t[1] - t[0], pr = t[2] - t[0];
    const double d1 = -dot(pq, t[0]), d2 = -dot(pr, t[0]);
    const double d3 = -dot(pq, t[1]), d4 = -dot(pr, t[1]);
    const double d5 = -dot(pq, t[2]), d6 = -dot(pr, t[2]);
    const double wr = d1 * d4 - d3 * d2, wq = d5 * d2 - d1 * d6, wp = d3 * d6 - d5 * d4;
    if (d1 <= 0.0 && d2 <= 0.0)
        return {1.0, 0.0, 0.0};
    if (d3 >= 0.0 && d4 <= d3)
        return {0.0, 1.0, 0.0};
    if (d6 >= 0.0 && d5 <= d6)
        return {0.0, 0.0, 1.0};
    if (wr <= 0.0 && d1 >= 0.0 && d3 <= 0.0)
        return {1.0 - d1 / (d1 - d3), d1 / (d1 - d3), 0.0};
    if (wq <= 0.0 && d2 >= 0.0 && d6 <= 0.0)
        return {1.0 - d2 / (d2 - d6), 0.0, d2 / (d2 - d6)};
    if (wp <= 0.0 && d4 >= d3 && d5 >= d6) {
        const double t2 = (d4 - d3) / ((d4 - d3) + (d5 - d6));
        return {0.0, 1.0 - t2, t2};
    }
    const double sum = wp + wq + wr;
    return {wp / sum, wq / sum, wr / sum};
}

Vec3 mixed(const std::array<double, 3>& weights, const Corners& t)
{
    return weights[0] * t[0] + (weights[1] * t[1] + weights[2] * t[2]);
}

double longestEdge(const Corners& t)
{
    return std::sqrt(
        std::max({squaredLength(t[1] - t[0]), squaredLength(t[2] - t[1]), squaredLength(t[0] - t[2])}));
}

std::array<Corners, 4> quarters(const Corners& t)
{
    const Vec3 pq = 0.5 * (t[0] + t[1]), qr = 0.5 * (t[1] + t[2]), rp = 0.5 * (t[2] + t[0]);
    return {{{t[0], pq, rp}, {pq, t[1], qr}, {rp, qr, t[2]}, {pq, qr, rp}}};
}

} // namespace

LchRange lchRangeOf(const std::array<Vec3, 3>& triangle)
{
    LchRange range;
    range.lowL = std::min({triangle[0].L, triangle[1].L, triangle[2].L});
    range.highL = std::max({triangle[0].L, triangle[1].L, triangle[2].L});
    Corners flat = triangle;
    for (Vec3& p : flat) {
        p.L = 0.0;
        range.highC = std::max(range.highC, length(p));
    }
    constexpr double onAxis = 1e-6;
    range.lowC = length(nearestOnTriangle({}, flat[0], flat[1], flat[2]));
    if (range.lowC < onAxis) {
        range.lowC = 0.0;
        return range;
    }
    const Vec3 middle = flat[0] + flat[1] + flat[2];
    range.hue = std::atan2(middle.b, middle.a);
    double low = 0.0, high = 0.0;
    for (const Vec3& p : flat) {
        const double angle = std::remainder(std::atan2(p.b, p.a) - range.hue, 2.0 * std::numbers::pi);
        low = std::min(low, angle);
        high = std::max(high, angle);
    }
    range.hue += 0.5 * (low + high);
    range.halfWidth = 0.5 * (high - low);
    return range;
}

std::array<Vec3, 3> Ciede2000Model::residualsOf(const std::array<Vec3, 3>& triangle) const
{
    Corners residuals;
    for (std::size_t i = 0; i < 3; ++i) {
        const Vec3 way = triangle[i] - at;
        residuals[i] = residual + (way.L * byL + (way.a * byA + way.b * byB));
    }
    return residuals;
}

Ciede2000Search::Ciede2000Search(Vec3 colour, Vec3 start)
    : m_colour(colour), m_hue(std::atan2(colour.b, colour.a)), m_bound(colour),
      m_model(modelAt(start, ciede2000Residual(colour, start))), m_difference(length(m_model.residual))
{
}

Ciede2000Model Ciede2000Search::modelAt(Vec3 point, Vec3 residual) const
{
    constexpr double step = 1e-4;
    const auto derivative = [&](Vec3 way) {
        return (1.0 / step) * (ciede2000Residual(m_colour, point + way) - residual);
    };
    return {point, residual, derivative({step, 0.0, 0.0}), derivative({0.0, step, 0.0}),
            derivative({0.0, 0.0, step})};
}

// Stretching a* turns each of two hues by less than 0.2.
bool Ciede2000Search::isSmooth(const LchRange& range) const
{
    constexpr double maxHalfWidth = 0.07, turn = 0.4;
    if (range.halfWidth > maxHalfWidth)
        return false;
    const double fromOpposite =
        std::numbers::pi - std::abs(std::remainder(range.hue - m_hue, 2.0 * std::numbers::pi));
    return fromOpposite > range.halfWidth + turn || !m_bound.hasStep(range);
}

// Whether the model at the best point tells that @p triangle, at this squared distance from it, has nothing
// better. Models are not used far away, and not near the L* axis, where derivatives change fast.
bool Ciede2000Search::isFarFromBetter(const std::array<Vec3, 3>& triangle, double squaredDistance) const
{
    const double reach = 0.3 * std::hypot(m_model.at.a, m_model.at.b);
    if (squaredDistance > reach * reach)
        return false;
    const Corners residuals = m_model.residualsOf(triangle);
    const double expected = length(mixed(weightsNearestToOrigin(residuals), residuals));
    return expected > 1.02 * m_difference + 0.1 + 0.01 * squaredDistance;
}

// Gauss-Newton steps from the point of the triangle that is nearest to the best one in Lab. Steps that do not
// help are halved. Ends early if the linear model promises nothing better, with a margin for its error.
void Ciede2000Search::descend(const std::array<Vec3, 3>& triangle)
{
    constexpr int maxSteps = 12, maxHalvings = 5;
    constexpr double smallGain = 1e-5;
    Vec3 at = nearestOnTriangle(m_model.at, triangle[0], triangle[1], triangle[2]);
    if (isFarFromBetter(triangle, squaredLength(at - m_model.at)))
        return;
    Vec3 residual = ciede2000Residual(m_colour, at);
    double difference = length(residual);
    for (int step = 0; step < maxSteps; ++step) {
        const Ciede2000Model model = modelAt(at, residual);
        if (difference < m_difference) {
            m_model = model;
            m_difference = difference;
        }
        const Corners residuals = model.residualsOf(triangle);
        const auto weights = weightsNearestToOrigin(residuals);
        const double expected = length(mixed(weights, residuals));
        const double margin = step == 0 ? 0.1 + 0.03 * m_difference : 0.0;
        if (expected > m_difference + margin || expected > difference - smallGain)
            return;
        Vec3 way = mixed(weights, triangle) - at;
        int halvings = 0;
        while (length(residual = ciede2000Residual(m_colour, at + way)) >= difference) {
            if (++halvings > maxHalvings)
                return;
            way = 0.5 * way;
        }
        at = at + way;
        difference = length(residual);
    }
}

void Ciede2000Search::improveOn(const std::array<Vec3, 3>& triangle, const LchRange& range)
{
    constexpr double smoothPiece = 6.0, smallestPiece = 0.1; // dE76
    const double size = longestEdge(triangle);
    if (size <= smallestPiece || (size <= smoothPiece && isSmooth(range))) {
        descend(triangle);
        return;
    }
    for (const Corners& quarter : quarters(triangle))
        if (const LchRange part = lchRangeOf(quarter); m_bound(part) < m_difference)
            improveOn(quarter, part);
}

} // namespace velmora
