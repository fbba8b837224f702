// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QVector3D>

#include <cmath>

namespace kvtest {

/// A vector in double precision, for expected values that are more accurate than the tested ones.
struct Vec3d
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    Vec3d() = default;
    Vec3d(double x_, double y_, double z_) : x(x_), y(y_), z(z_) {}
    explicit Vec3d(const QVector3D& v) : x(v.x()), y(v.y()), z(v.z()) {}

    friend Vec3d operator+(const Vec3d& a, const Vec3d& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vec3d operator-(const Vec3d& a, const Vec3d& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vec3d operator*(double s, const Vec3d& a) { return {s * a.x, s * a.y, s * a.z}; }
};

inline double dot(const Vec3d& a, const Vec3d& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Vec3d cross(const Vec3d& a, const Vec3d& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double length(const Vec3d& a)
{
    return std::sqrt(dot(a, a));
}

inline Vec3d unit(const Vec3d& a)
{
    return 1.0 / length(a) * a;
}

/// Host coordinates (L*, a*, b*) to scene coordinates (-a*, L*, b*).
inline Vec3d sceneFromHost(const Vec3d& v)
{
    return {-v.y, v.x, v.z};
}

} // namespace kvtest
