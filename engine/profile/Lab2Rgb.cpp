// SPDX-License-Identifier: Apache-2.0
#include <platform/KVVelmoraFramework.h>

#include <engine/base/LabGeometry.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using velmora::Vec3;

// ICC D50, as profiles hold it.
constexpr double whiteX = 0.9642;
constexpr double whiteZ = 0.8249;

using Linear = std::array<double, 3>;

// XYZ (D50, white Y = 1) to linear sRGB: the inverse of the primaries and white of IEC 61966-2-1,
// (0.64, 0.33), (0.30, 0.60), (0.15, 0.06) and (0.3127, 0.3290), adapted to D50 by the linear Bradford
// transform; each row is scaled so that the white gives exactly 1.
constexpr std::array<Linear, 3> xyzToLinear = [] {
    std::array<Linear, 3> m{{{3.134186364236819, -1.617208958998275, -0.490694064006384},
                             {-0.978748504190694, 1.916130096773587, 0.033433399159996},
                             {0.071963927802247, -0.228993873453203, 1.405753732896444}}};
    for (Linear& row : m) {
        const double white = row[0] * whiteX + row[1] + row[2] * whiteZ;
        for (double& v : row)
            v /= white;
    }
    return m;
}();

// CIE 1976: the inverse of the cube root with its linear start.
double inverseRoot(double f)
{
    constexpr double delta = 6.0 / 29.0;
    return f > delta ? f * f * f : 3.0 * delta * delta * (f - 4.0 / 29.0);
}

Linear linearRgb(double L, double a, double b)
{
    const double f = (L + 16.0) / 116.0;
    const double x = whiteX * inverseRoot(f + a / 500.0);
    const double y = inverseRoot(f);
    const double z = whiteZ * inverseRoot(f - b / 200.0);
    Linear rgb;
    for (std::size_t i = 0; i < 3; ++i)
        rgb[i] = xyzToLinear[i][0] * x + xyzToLinear[i][1] * y + xyzToLinear[i][2] * z;
    return rgb;
}

bool displayable(const Linear& rgb)
{
    constexpr double slack = 1e-9; // rounding of the neutral axis' ends
    return std::all_of(rgb.begin(), rgb.end(), [](double v) { return v >= -slack && v <= 1.0 + slack; });
}

float encoded(double linear)
{
    const double v = std::clamp(linear, 0.0, 1.0);
    const double curve = v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1.0 / 2.4) - 0.055;
    return static_cast<float>(std::clamp(255.0 * curve, 0.0, 255.0));
}

// No colour of sRGB has a larger chroma.
constexpr double maxChroma = 160.0;
// How far towards L* 50 the grey lies that a colour is brought to. Straight inwards (0) would be along
// the nearly level edge from white to yellow, in and out of it: colours a hair above yellow would turn
// pale. From 0.1 on no path meets the limit twice, whatever hue and lightness, and so near colours stay
// near.
constexpr double tilt = 0.2;
// Halvings of a chroma of at most 160: to 1e-7 dE.
constexpr int halvings = 30;

Linear nearestDisplayable(double L, double a, double b)
{
    const double chroma = std::hypot(a, b);
    const double inward = chroma > maxChroma ? maxChroma / chroma : 1.0;
    const double greyL = L + tilt * (50.0 - L);
    const auto along = [&](double t) {
        return linearRgb(greyL + t * (L - greyL), t * inward * a, t * inward * b);
    };
    double low = 0.0; // grey is displayable
    double high = 1.0;
    for (int i = 0; i < halvings; ++i) {
        const double middle = 0.5 * (low + high);
        (displayable(along(middle)) ? low : high) = middle;
    }
    return along(low);
}

} // namespace

QList<float> KVColorConversionHelper::KVHLab2RGB(const QList<float>& lab)
{
    if (lab.size() < 3 || !std::isfinite(lab[0]) || !std::isfinite(lab[1]) || !std::isfinite(lab[2]))
        return {-1.0f, -1.0f, -1.0f};
    const double L = std::clamp(static_cast<double>(lab[0]), 0.0, 100.0);
    Linear rgb = linearRgb(L, lab[1], lab[2]);
    if (!displayable(rgb))
        rgb = nearestDisplayable(L, lab[1], lab[2]);
    return {encoded(rgb[0]), encoded(rgb[1]), encoded(rgb[2])};
}
