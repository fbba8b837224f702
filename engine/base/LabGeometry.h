// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

/// Points in CIELAB, and the lattice on which geometric predicates are exact.
///
/// Every surface vertex is a multiple of 2^-16 dE, which is also about the precision of a float of that
/// size. Vertices are therefore integers, and so is the orientation of three or four of them: whether a
/// point lies left of an edge or above a face does not depend on rounding.
namespace velmora {

/// A point or vector in CIELAB in double precision; right-handed in the order L, a, b.
struct Vec3
{
    double L = 0.0;
    double a = 0.0;
    double b = 0.0;

    friend Vec3 operator+(Vec3 p, Vec3 q) { return {p.L + q.L, p.a + q.a, p.b + q.b}; }
    friend Vec3 operator-(Vec3 p, Vec3 q) { return {p.L - q.L, p.a - q.a, p.b - q.b}; }
    friend Vec3 operator*(double s, Vec3 p) { return {s * p.L, s * p.a, s * p.b}; }
    bool operator==(const Vec3&) const = default;
};

inline double dot(Vec3 p, Vec3 q)
{
    return p.L * q.L + p.a * q.a + p.b * q.b;
}

inline Vec3 cross(Vec3 p, Vec3 q)
{
    return {p.a * q.b - p.b * q.a, p.b * q.L - p.L * q.b, p.L * q.a - p.a * q.L};
}

inline double squaredLength(Vec3 p)
{
    return dot(p, p);
}

inline double length(Vec3 p)
{
    return std::sqrt(squaredLength(p));
}

/// The point between @p p and @p q that is nearest to @p x. Both may be equal.
inline Vec3 nearestOnSegment(Vec3 x, Vec3 p, Vec3 q)
{
    const Vec3 along = q - p;
    const double size = squaredLength(along);
    const double t = size > 0.0 ? std::clamp(dot(x - p, along) / size, 0.0, 1.0) : 0.0;
    return t == 1.0 ? q : p + t * along;
}

inline bool isFinite(Vec3 p)
{
    return std::isfinite(p.L) && std::isfinite(p.a) && std::isfinite(p.b);
}

using KVGamut::LabPoint;

inline Vec3 toVec3(const LabPoint& v)
{
    return {v.L, v.a, v.b};
}

/// Lattice points per dE.
inline constexpr double latticeScale = 65536.0;
/// Lab values beyond ±maxLab are out of range, so that lattice coordinates fit into 27 bits and a sign.
inline constexpr double maxLab = 2000.0;

/// A point of the lattice, in units of 2^-16 dE.
struct LatticePoint
{
    std::int32_t L = 0;
    std::int32_t a = 0;
    std::int32_t b = 0;

    auto operator<=>(const LatticePoint&) const = default; // NOLINT(modernize-use-nullptr): of clang-tidy 14
};

// The same as std::lround(), but inlined: this is called for every coordinate.
inline std::int32_t toLattice(double value)
{
    const double scaled = value * latticeScale;
    return static_cast<std::int32_t>(scaled < 0.0 ? scaled - 0.5 : scaled + 0.5);
}

/// @p v must lie within ±maxLab.
inline LatticePoint toLattice(const LabPoint& v)
{
    return {toLattice(v.L), toLattice(v.a), toLattice(v.b)};
}

inline float fromLattice(std::int64_t value)
{
    return static_cast<float>(static_cast<double>(value) / latticeScale);
}

/// @p p, snapped to the nearest lattice point.
inline LabPoint snapped(Vec3 p)
{
    return {fromLattice(toLattice(p.L)), fromLattice(toLattice(p.a)), fromLattice(toLattice(p.b))};
}

/// Twice the signed area of the triangle p, q, r seen along -L*: positive when counter-clockwise.
inline std::int64_t orientationAb(const LatticePoint& p, const LatticePoint& q, const LatticePoint& r)
{
    return static_cast<std::int64_t>(q.a - p.a) * (r.b - p.b) -
           static_cast<std::int64_t>(q.b - p.b) * (r.a - p.a);
}

/// The sign of orientationAb(), but never 0 for p != q: r is replaced by r + (e, e^2) with an infinitely
/// small e > 0 (Edelsbrunner and Mücke 1990, "Simulation of simplicity"). A vertical line then meets no
/// edge and no vertex, and crosses every closed surface as often upwards as downwards.
inline int sideAb(const LatticePoint& p, const LatticePoint& q, const LatticePoint& r)
{
    const std::int64_t s = orientationAb(p, q, r);
    if (s != 0)
        return s > 0 ? 1 : -1;
    if (p.b != q.b)
        return q.b < p.b ? 1 : -1;
    if (p.a != q.a)
        return q.a > p.a ? 1 : -1;
    return 0;
}

/// Sign of the determinant |q-p, r-p, s-p| of points with integer coordinates x, y, z of at most
/// 29 bits and a sign: positive when s lies on the side from which p, q, r appear counter-clockwise.
template <typename Point>
int orientation3d(const Point& p, const Point& q, const Point& r, const Point& s)
{
    const auto [px, py, pz] = p;
    const auto [qx, qy, qz] = q;
    const auto [rx, ry, rz] = r;
    const auto [sx, sy, sz] = s;
    const std::int64_t ux = qx - px, uy = qy - py, uz = qz - pz;
    const std::int64_t vx = rx - px, vy = ry - py, vz = rz - pz;
    const std::int64_t wx = sx - px, wy = sy - py, wz = sz - pz;

    // Floating point first. The differences are exact, so each of the six triple products has at most
    // three rounding errors, and their sum five more. Exact integers decide only where that is not enough.
    const double nx = double(uy) * double(vz), nx2 = double(uz) * double(vy);
    const double ny = double(uz) * double(vx), ny2 = double(ux) * double(vz);
    const double nz = double(ux) * double(vy), nz2 = double(uy) * double(vx);
    const double det = double(wx) * (nx - nx2) + double(wy) * (ny - ny2) + double(wz) * (nz - nz2);
    const double size = std::abs(double(wx)) * (std::abs(nx) + std::abs(nx2)) +
                        std::abs(double(wy)) * (std::abs(ny) + std::abs(ny2)) +
                        std::abs(double(wz)) * (std::abs(nz) + std::abs(nz2));
    if (std::abs(det) > 16.0 * 0x1p-53 * size)
        return det > 0.0 ? 1 : -1;

    __extension__ using Wide = __int128;
    const Wide exact = Wide(wx) * (Wide(uy) * vz - Wide(uz) * vy) +
                       Wide(wy) * (Wide(uz) * vx - Wide(ux) * vz) +
                       Wide(wz) * (Wide(ux) * vy - Wide(uy) * vx);
    return (exact > 0) - (exact < 0);
}

} // namespace velmora
