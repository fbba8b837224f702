// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "support/Vec3d.h"

#include <QtCore/QPoint>
#include <QtCore/QSize>
#include <QtGui/QColor>

#include <array>
#include <cmath>
#include <ostream>

/// The position and the appearance of a colour in a picture, computed in double precision from the
/// definitions: IEC 61966-2-1, CIE 1976 L*a*b* and a pinhole camera.
namespace kvtest {

/// An sRGB colour, 0..1.
struct Device
{
    double r, g, b;
};

inline void PrintTo(const Device& d, std::ostream* out)
{
    *out << "sRGB(" << d.r << ", " << d.g << ", " << d.b << ")";
}

struct Lab
{
    double L, a, b;
};

inline double srgbToLinear(double v)
{
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

/// Lab (D50) of an sRGB colour, adapted from D65 with the Bradford transform.
inline Lab labOf(const Device& device)
{
    // linear sRGB to XYZ D50, rows X, Y, Z
    constexpr double m[3][3] = {{0.4360747, 0.3850649, 0.1430804},
                                {0.2225045, 0.7168786, 0.0606169},
                                {0.0139322, 0.0971045, 0.7141733}};
    constexpr double white[3] = {0.96422, 1.0, 0.82521};
    const double rgb[3] = {srgbToLinear(device.r), srgbToLinear(device.g), srgbToLinear(device.b)};
    double f[3];
    for (int i = 0; i < 3; ++i) {
        const double t = (m[i][0] * rgb[0] + m[i][1] * rgb[1] + m[i][2] * rgb[2]) / white[i];
        constexpr double delta = 6.0 / 29.0;
        f[i] = t > delta * delta * delta ? std::cbrt(t) : t / (3.0 * delta * delta) + 4.0 / 29.0;
    }
    return {116.0 * f[1] - 16.0, 500.0 * (f[0] - f[1]), 200.0 * (f[1] - f[2])};
}

inline QColor colorOf(const Device& device)
{
    return QColor::fromRgbF(static_cast<float>(device.r), static_cast<float>(device.g),
                            static_cast<float>(device.b));
}

/// A pinhole camera. Space is (a*, b*, L*), right-handed.
class PinholeCamera
{
public:
    PinholeCamera(const Lab& eye, const Lab& interest, const Lab& upwards, double viewingAngle, QSize size)
        : m_eye(space(eye)), m_forward(unit(space(interest) - space(eye))),
          m_right(unit(cross(m_forward, space(upwards)))), m_up(cross(m_right, m_forward)),
          m_halfHeight(std::tan(viewingAngle * 0.5 * pi / 180.0)), m_size(size)
    {
    }

    /// The pixel at which @p lab appears.
    QPoint pixelOf(const Lab& lab) const
    {
        const Vec3d p = space(lab) - m_eye;
        const double depth = dot(p, m_forward);
        const double unitsPerHalf = depth * m_halfHeight;
        const double half = 0.5 * m_size.height();
        return {static_cast<int>(std::floor(0.5 * m_size.width() + half * dot(p, m_right) / unitsPerHalf)),
                static_cast<int>(std::floor(half - half * dot(p, m_up) / unitsPerHalf))};
    }

private:
    static constexpr double pi = 3.14159265358979323846;
    static Vec3d space(const Lab& lab) { return {lab.a, lab.b, lab.L}; }

    Vec3d m_eye, m_forward, m_right, m_up;
    double m_halfHeight;
    QSize m_size;
};

/// The preset from above: +a* to the right, +b* up.
inline PinholeCamera topCamera(QSize size)
{
    return {{522.48712, 0, 0}, {50, 0, 0}, {0, 0, 1}, 30.0, size};
}

/// The preset from below: +a* to the right, +b* down.
inline PinholeCamera bottomCamera(QSize size)
{
    return {{-522.48712, 0, 0}, {50, 0, 0}, {0, 0, -1}, 30.0, size};
}

/// Any other camera; L* points up.
inline PinholeCamera freeCamera(const Lab& eye, const Lab& interest, QSize size, double viewingAngle = 30.0)
{
    return {eye, interest, {1, 0, 0}, viewingAngle, size};
}

/// The maximum difference of the three channels.
inline int difference(const QColor& one, const QColor& other)
{
    return std::max({std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                     std::abs(one.blue() - other.blue())});
}

} // namespace kvtest
