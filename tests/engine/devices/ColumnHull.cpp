// SPDX-License-Identifier: Apache-2.0
#include "ColumnHull.h"

namespace kvdevices {
namespace {

constexpr int maxSteps = 200;
constexpr double precision = 1e-12;
// Three points far away and far below, from which the method starts.
constexpr double farAway = 1e3;
constexpr double farBelow = -1e6;

double area(const Point& p, const Point& q, double x, double y)
{
    return (p[0] - x) * (q[1] - y) - (p[1] - y) * (q[0] - x);
}

// Barycentric coordinates of a place in the triangle that three points form in the first two coordinates.
Point barycentric(const std::array<Point, 3>& p, double x, double y)
{
    const double a = area(p[1], p[2], x, y), b = area(p[2], p[0], x, y), c = area(p[0], p[1], x, y);
    return {a / (a + b + c), b / (a + b + c), c / (a + b + c)};
}

double heightAt(const std::array<Point, 3>& p, const Point& weights)
{
    return weights[0] * p[0][2] + weights[1] * p[1][2] + weights[2] * p[2][2];
}

// The third coordinate of the plane through three points at a place, as coefficients of x, y and 1.
Point planeThrough(const std::array<Point, 3>& p)
{
    const Point normal = cross(p[1] - p[0], p[2] - p[0]);
    const double slopeX = -normal[0] / normal[2], slopeY = -normal[1] / normal[2];
    return {slopeX, slopeY, p[0][2] - slopeX * p[0][0] - slopeY * p[0][1]};
}

// The point farthest above (sign 1) or below (sign -1) a plane, with the third coordinate times the sign.
std::optional<Point> farthest(std::span<const Point> points, const Point& plane, double sign)
{
    double max = precision;
    const Point* found = nullptr;
    for (const Point& p : points) {
        const double excess = sign * p[2] - plane[0] * p[0] - plane[1] * p[1] - plane[2];
        if (excess > max) {
            max = excess;
            found = &p;
        }
    }
    if (found == nullptr)
        return std::nullopt;
    return Point{(*found)[0], (*found)[1], sign * (*found)[2]};
}

std::size_t leaving(const Point& weights, const Point& direction)
{
    std::size_t place = 3;
    double min = 1e300;
    for (std::size_t i = 0; i < 3; ++i)
        if (direction[i] > precision && weights[i] / direction[i] < min) {
            min = weights[i] / direction[i];
            place = i;
        }
    return place;
}

std::optional<double> highest(std::span<const Point> points, double x, double y, double sign)
{
    std::array<Point, 3> basis{{{x - farAway, y - farAway, farBelow},
                                {x + farAway, y - farAway, farBelow},
                                {x, y + farAway, farBelow}}};
    for (int step = 0; step < maxSteps; ++step) {
        const Point weights = barycentric(basis, x, y);
        const auto entering = farthest(points, planeThrough(basis), sign);
        const double height = heightAt(basis, weights);
        if (!entering)
            return height > 1e-3 * farBelow ? std::optional(height) : std::nullopt;
        const std::size_t place = leaving(weights, barycentric(basis, (*entering)[0], (*entering)[1]));
        if (place == 3)
            return std::nullopt;
        basis[place] = *entering;
    }
    return std::nullopt;
}

} // namespace

std::optional<Interval> columnOfHull(std::span<const Point> points, double x, double y)
{
    const auto high = highest(points, x, y, 1.0);
    if (!high)
        return std::nullopt;
    const auto low = highest(points, x, y, -1.0);
    if (!low || -*low >= *high)
        return std::nullopt;
    return Interval{-*low, *high};
}

} // namespace kvdevices
