// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>

namespace velmora {

/// Four numbers in single precision, which one instruction adds, multiplies or compares.
using Lanes __attribute__((vector_size(4 * sizeof(float)))) = float;
inline constexpr int laneCount = 4;

inline Lanes lanesOf(float value)
{
    return Lanes{} + value;
}

inline Lanes lower(Lanes p, Lanes q)
{
    return p < q ? p : q;
}

inline Lanes upper(Lanes p, Lanes q)
{
    return p < q ? q : p;
}

/// Four points or vectors in CIELAB.
struct LanesVec3
{
    Lanes L{}, a{}, b{};

    static LanesVec3 all(Vec3 value)
    {
        return {lanesOf(static_cast<float>(value.L)), lanesOf(static_cast<float>(value.a)),
                lanesOf(static_cast<float>(value.b))};
    }
    void set(int lane, Vec3 value)
    {
        L[lane] = static_cast<float>(value.L);
        a[lane] = static_cast<float>(value.a);
        b[lane] = static_cast<float>(value.b);
    }

    friend LanesVec3 operator-(const LanesVec3& p, const LanesVec3& q)
    {
        return {p.L - q.L, p.a - q.a, p.b - q.b};
    }
    friend LanesVec3 operator*(Lanes s, const LanesVec3& p) { return {s * p.L, s * p.a, s * p.b}; }
};

inline Lanes dot(const LanesVec3& p, const LanesVec3& q)
{
    return p.L * q.L + p.a * q.a + p.b * q.b;
}

inline LanesVec3 cross(const LanesVec3& p, const LanesVec3& q)
{
    return {p.a * q.b - p.b * q.a, p.b * q.L - p.L * q.b, p.L * q.a - p.a * q.L};
}

} // namespace velmora
