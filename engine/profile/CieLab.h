// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/LabGeometry.h>

#include <array>
#include <cmath>

namespace velmora {

/// CIE tristimulus values X, Y, Z; Y of a white is 1.
using Xyz = std::array<double, 3>;

/// The white of the ICC profile connection space.
inline constexpr Xyz d50{0.9642, 1.0, 0.8249};
/// D65 as displays state it: x 0.3127, y 0.3290.
inline constexpr Xyz d65{0.3127 / 0.3290, 1.0, (1.0 - 0.3127 - 0.3290) / 0.3290};

/// CIE 1976: the cube root, with a linear part near 0 that goes on below it.
inline double labRoot(double t)
{
    constexpr double delta = 6.0 / 29.0;
    return t > delta * delta * delta ? std::cbrt(t) : t / (3.0 * delta * delta) + 4.0 / 29.0;
}

/// The inverse of labRoot().
inline double inverseLabRoot(double f)
{
    constexpr double delta = 6.0 / 29.0;
    return f > delta ? f * f * f : 3.0 * delta * delta * (f - 4.0 / 29.0);
}

/// The tristimulus values of a Lab colour relative to @p white.
inline Xyz xyzOf(Vec3 lab, const Xyz& white)
{
    const double f = (lab.L + 16.0) / 116.0;
    return {white[0] * inverseLabRoot(f + lab.a / 500.0), white[1] * inverseLabRoot(f),
            white[2] * inverseLabRoot(f - lab.b / 200.0)};
}

/// The Lab values of a colour relative to @p white.
inline Vec3 labOf(const Xyz& xyz, const Xyz& white)
{
    const double x = labRoot(xyz[0] / white[0]);
    const double y = labRoot(xyz[1] / white[1]);
    const double z = labRoot(xyz[2] / white[2]);
    return {116.0 * y - 16.0, 500.0 * (x - y), 200.0 * (y - z)};
}

} // namespace velmora
