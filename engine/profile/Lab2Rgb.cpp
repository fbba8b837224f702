// SPDX-License-Identifier: Apache-2.0
#include <platform/KVVelmoraFramework.h>

#include <engine/base/LabGeometry.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using velmora::Vec3;

// The ICC PCS white, D50.
constexpr double whiteX = 0.9642;
constexpr double whiteZ = 0.8249;

using Linear = std::array<double, 3>;

// XYZ (D50, white Y = 1) to linear sRGB: the inverse matrix of the primaries and white of IEC 61966-2-1,
// (0.64, 0.33), (0.30, 0.60), (0.15, 0.06) and (0.3127, 0.3290), adapted to D50 by the linear Bradford
// transform. Each row is scaled so that the white is exactly 1.
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

// CIE 1976: the inverse of the cube root with its linear part near 0.
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
    constexpr double tolerance = 1e-9; // rounding errors at both ends of the neutral axis
    return std::all_of(rgb.begin(), rgb.end(),
                       [](double v) { return v >= -tolerance && v <= 1.0 + tolerance; });
}

float encoded(double linear)
{
    const double v = std::clamp(linear, 0.0, 1.0);
    const double curve = v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1.0 / 2.4) - 0.055;
    return static_cast<float>(std::clamp(255.0 * curve, 0.0, 255.0));
}

// More than the chroma of any sRGB colour.
constexpr double maxChroma = 160.0;
// How far the target grey is moved towards L* 50. Without it (0) a path at constant lightness would run along
// the nearly horizontal edge from white to yellow and could cross the gamut boundary twice; colours just
// above yellow would become pale. From 0.1 on no path crosses the boundary twice at any hue and lightness,
// and the mapping is continuous.
constexpr double tilt = 0.2;
// Bisection steps: a chroma of at most 160 is found to 1e-7 dE.
constexpr int halvings = 30;

Linear nearestDisplayable(double L, double a, double b)
{
    const double chroma = std::hypot(a, b);
    const double inward = chroma > maxChroma ? maxChroma / chroma : 1.0;
    const double greyL = L + tilt * (50.0 - L);
    const auto along = [&](double t) {
        return linearRgb(greyL + t * (L - greyL), t * inward * a, t * inward * b);
    };
    double low = 0.0; // grey is in gamut
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
