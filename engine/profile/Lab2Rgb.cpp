// SPDX-License-Identifier: Apache-2.0
#include <platform/KVVelmoraFramework.h>

#include "CieLab.h"
#include <engine/base/LabGeometry.h>
#include <engine/base/ListOf.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

using velmora::Xyz;

using Linear = std::array<double, 3>;

// XYZ (D50, white Y = 1) to linear sRGB: the inverse matrix of the primaries and white of IEC 61966-2-1,
// (0.64, 0.33), (0.30, 0.60), (0.15, 0.06) and (0.3127, 0.3290), adapted to D50 by the linear Bradford
// transform. Each row is scaled so that the white is exactly 1.
constexpr std::array<Linear, 3> xyzToLinear = [] {
    std::array<Linear, 3> m{{{3.134186364236819, -1.617208958998275, -0.490694064006384},
                             {-0.978748504190694, 1.916130096773587, 0.033433399159996},
                             {0.071963927802247, -0.228993873453203, 1.405753732896444}}};
    for (Linear& row : m) {
        const double white = row[0] * velmora::d50[0] + row[1] + row[2] * velmora::d50[2];
        for (double& v : row)
            v /= white;
    }
    return m;
}();

Linear linearRgb(double L, double a, double b)
{
    const Xyz xyz = velmora::xyzOf({L, a, b}, velmora::d50);
    Linear rgb;
    for (std::size_t i = 0; i < 3; ++i)
        rgb[i] = xyzToLinear[i][0] * xyz[0] + xyzToLinear[i][1] * xyz[1] + xyzToLinear[i][2] * xyz[2];
    return rgb;
}

constexpr double tolerance = 1e-9; // rounding errors at both ends of the neutral axis

bool displayable(const Linear& rgb)
{
    return std::all_of(rgb.begin(), rgb.end(),
                       [](double v) { return v >= -tolerance && v <= 1.0 + tolerance; });
}

float encoded(double linear)
{
    const double v = std::clamp(linear, 0.0, 1.0);
    // v^(1/2.4) = v^(5/12). Faster than std::pow, which uses wider registers: on some processors each call
    // then costs a hundred cycles, if other code of the process has left their upper halves in use.
    const double power = std::sqrt(std::sqrt(v) * std::cbrt(v));
    const double curve = v <= 0.0031308 ? 12.92 * v : 1.055 * power - 0.055;
    return static_cast<float>(std::clamp(255.0 * curve, 0.0, 255.0));
}

// More than the chroma of any sRGB colour.
constexpr double maxChroma = 160.0;
// How far the target grey is moved towards L* 50. Without it (0) a path at constant lightness would run along
// the nearly horizontal edge from white to yellow and could cross the gamut boundary twice; colours just
// above yellow would become pale. From 0.1 on no path crosses the boundary twice at any hue and lightness,
// and the mapping is continuous.
constexpr double tilt = 0.2;
// Positions on a path are counted in steps. A chroma of at most 160 is resolved to 1e-7 dE.
constexpr std::int64_t pathSteps = std::int64_t(1) << 30;
// Moves of one end of the searched interval in turn, after which the interval is halved.
constexpr int maxMovesInTurn = 4;

// Distance to the nearest limit of displayable(): negative exactly if it is false.
double margin(const Linear& rgb)
{
    const auto [low, high] = std::minmax({rgb[0], rgb[1], rgb[2]});
    return std::min(low + tolerance, (1.0 + tolerance) - high);
}

// An end of the searched interval.
struct PathEnd
{
    std::int64_t position;
    double margin;
    int moves = 0; // in turn, while the other end stayed
};

// The last position from 0 to pathSteps - 1 that is displayable, if there is only one change: 0 is
// displayable, pathSteps is taken as not displayable. By false position after Anderson and Björck (1973):
// most colours are just outside the gamut, where the margin is nearly linear, and a few evaluations are
// enough.
template <typename MarginAt>
std::int64_t lastDisplayable(const MarginAt& marginAt)
{
    PathEnd inside{0, marginAt(0)};
    PathEnd outside{pathSteps, std::min(marginAt(pathSteps), -std::numeric_limits<double>::min())};
    while (outside.position - inside.position > 1) {
        const bool halve = std::max(inside.moves, outside.moves) > maxMovesInTurn;
        const double share = halve ? 0.5 : inside.margin / (inside.margin - outside.margin);
        const double length = static_cast<double>(outside.position - inside.position);
        const std::int64_t at = std::clamp(inside.position + static_cast<std::int64_t>(share * length),
                                           inside.position + 1, outside.position - 1);
        const double found = marginAt(at);
        PathEnd& moved = found >= 0.0 ? inside : outside;
        PathEnd& kept = found >= 0.0 ? outside : inside;
        if (moved.moves > 0) { // a smaller weight, so that the other end moves next
            const double weight = 1.0 - found / moved.margin;
            kept.margin *= weight > 0.0 ? weight : 0.5;
        }
        kept.moves = 0;
        moved = {at, found, moved.moves + 1};
    }
    return inside.position;
}

Linear nearestDisplayable(double L, double a, double b)
{
    const double chroma = std::hypot(a, b);
    const double inward = chroma > maxChroma ? maxChroma / chroma : 1.0;
    const double greyL = L + tilt * (50.0 - L);
    const auto along = [&](std::int64_t position) {
        const double t = static_cast<double>(position) / static_cast<double>(pathSteps);
        return linearRgb(greyL + t * (L - greyL), t * inward * a, t * inward * b);
    };
    // Grey, at 0, is in gamut.
    return along(lastDisplayable([&along](std::int64_t p) { return margin(along(p)); }));
}

using Rgb = std::array<float, 3>;

Rgb displayed(float lightness, float a, float b)
{
    if (!std::isfinite(lightness) || !std::isfinite(a) || !std::isfinite(b))
        return {-1.0f, -1.0f, -1.0f};
    const double L = std::clamp(static_cast<double>(lightness), 0.0, 100.0);
    Linear rgb = linearRgb(L, a, b);
    if (!displayable(rgb))
        rgb = nearestDisplayable(L, a, b);
    return {encoded(rgb[0]), encoded(rgb[1]), encoded(rgb[2])};
}

} // namespace

QList<float> KVColorConversionHelper::KVHLab2RGB(const QList<float>& lab)
{
    if (lab.size() < 3)
        return velmora::listOf({-1.0f, -1.0f, -1.0f});
    const Rgb rgb = displayed(lab[0], lab[1], lab[2]);
    return velmora::listOf(std::span<const float>(rgb));
}

void KVColorConversionHelper::KVHLab2RGB(std::span<const KVGamut::LabPoint> lab, std::span<Rgb> rgb)
{
    const std::size_t count = std::min(lab.size(), rgb.size());
    for (std::size_t i = 0; i < count; ++i)
        rgb[i] = displayed(lab[i].L, lab[i].a, lab[i].b);
}
