// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

/// Points and vectors of three coordinates.
namespace kvdevices {

using Point = std::array<double, 3>;

inline Point operator+(const Point& p, const Point& q)
{
    return {p[0] + q[0], p[1] + q[1], p[2] + q[2]};
}
inline Point operator-(const Point& p, const Point& q)
{
    return {p[0] - q[0], p[1] - q[1], p[2] - q[2]};
}
inline Point operator*(double s, const Point& p)
{
    return {s * p[0], s * p[1], s * p[2]};
}
inline double dot(const Point& p, const Point& q)
{
    return p[0] * q[0] + p[1] * q[1] + p[2] * q[2];
}
inline Point cross(const Point& p, const Point& q)
{
    return {p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2], p[0] * q[1] - p[1] * q[0]};
}
inline double length(const Point& p)
{
    return std::sqrt(dot(p, p));
}
inline Point midpoint(const Point& p, const Point& q)
{
    return 0.5 * (p + q);
}

/// A box with edges parallel to the axes; empty until it contains a point.
struct Box
{
    Point low{1e300, 1e300, 1e300};
    Point high{-1e300, -1e300, -1e300};

    void include(const Point& p)
    {
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], p[i]);
            high[i] = std::max(high[i], p[i]);
        }
    }
};

} // namespace kvdevices
