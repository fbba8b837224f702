// SPDX-License-Identifier: Apache-2.0
#include "SpectralLimit.h"

#include "model/points/SpectralWeights.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int firstStep = 380, lastStep = 780, stepWidth = 5;
constexpr std::array<double, 3> white{96.42, 100.0, 82.49}; // of SpectralWeights

/// Parts of the luminous sum X + Y + Z.
struct Chromaticity
{
    double x = 0.0, y = 0.0;
};

struct Ab
{
    double a = 0.0, b = 0.0;
};

double turn(const Chromaticity& p, const Chromaticity& q, const Chromaticity& r)
{
    return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
}

double cubeRoot(double share)
{
    constexpr double limit = 216.0 / 24389.0, slope = 24389.0 / 27.0;
    return share > limit ? std::cbrt(share) : (slope * share + 16.0) / 116.0;
}

/// The luminance of the lightness @p L, relative to that of white.
double luminanceOf(double L)
{
    constexpr double limit = 8.0, slope = 24389.0 / 27.0;
    return L > limit ? std::pow((L + 16.0) / 116.0, 3.0) : L / slope;
}

Ab placeOf(const Chromaticity& colour, double L)
{
    const double luminance = luminanceOf(L), scale = white[1] * luminance / colour.y;
    const double x = cubeRoot(colour.x * scale / white[0]);
    const double y = cubeRoot(luminance);
    const double z = cubeRoot(std::max(0.0, 1.0 - colour.x - colour.y) * scale / white[2]);
    return {500.0 * (x - y), 200.0 * (y - z)};
}

std::vector<Chromaticity> wavelengths()
{
    QList<double> steps;
    for (int nm = firstStep; nm <= lastStep; nm += stepWidth)
        steps.append(nm);
    const auto weights = SpectralWeights::of(steps);
    std::vector<float> light(static_cast<std::size_t>(steps.size()));
    std::vector<Chromaticity> result;
    for (float& single : light) {
        single = 1.0F;
        const auto [x, y, z] = weights->xyzOf(light);
        single = 0.0F;
        const double sum = double(x) + double(y) + double(z);
        result.push_back({double(x) / sum, double(y) / sum});
    }
    return result;
}

/// The corners of the mixtures of @p colours, counter-clockwise: the ends of the spectrum are so close
/// together that some wavelengths lie inside.
std::vector<Chromaticity> hullOf(std::vector<Chromaticity> colours)
{
    std::sort(colours.begin(), colours.end(), [](const Chromaticity& p, const Chromaticity& q) {
        return p.x < q.x || (p.x == q.x && p.y < q.y);
    });
    std::vector<Chromaticity> hull;
    for (int half = 0; half < 2; ++half) {
        const std::size_t start = hull.size();
        for (const Chromaticity& colour : colours) {
            while (hull.size() > start + 1 && turn(hull[hull.size() - 2], hull.back(), colour) <= 0.0)
                hull.pop_back();
            hull.push_back(colour);
        }
        hull.pop_back(); // the first of the other half
        std::reverse(colours.begin(), colours.end());
    }
    return hull;
}

/// Appends points from @p from on, without @p to, that are straight lines in a*, b* nearly: mixtures of two
/// lights lie on a curve there.
void appendEdge(const Chromaticity& from, const Chromaticity& to, std::vector<Chromaticity>& outline)
{
    constexpr double lightest = 100.0, maxLength = 60.0, maxDeviation = 0.5;
    const Chromaticity between{0.5 * (from.x + to.x), 0.5 * (from.y + to.y)};
    const Ab p = placeOf(from, lightest), q = placeOf(to, lightest), m = placeOf(between, lightest);
    const double length = std::hypot(q.a - p.a, q.b - p.b);
    const double area = (m.a - p.a) * (q.b - p.b) - (m.b - p.b) * (q.a - p.a);
    if (length < maxLength && std::abs(area) <= maxDeviation * length) {
        outline.push_back(from);
        return;
    }
    appendEdge(from, between, outline);
    appendEdge(between, to, outline);
}

std::vector<Chromaticity> outlineOf(const std::vector<Chromaticity>& corners)
{
    std::vector<Chromaticity> outline;
    for (std::size_t i = 0; i < corners.size(); ++i)
        appendEdge(corners[i], corners[(i + 1) % corners.size()], outline);
    // b* falls where z grows: counter-clockwise in x, y is clockwise in a*, b*
    std::reverse(outline.begin(), outline.end());
    return outline;
}

/// Lightnesses between which the edge is nearly straight: close together near black.
std::vector<double> lightnesses()
{
    constexpr double linear = 8.0; // below it L* is proportional to the luminance
    constexpr int ringsBelow = 24, step = 2;
    std::vector<double> result;
    for (int ring = 1; ring <= ringsBelow; ++ring)
        result.push_back(linear * std::pow(double(ring) / ringsBelow, 2.0));
    for (int L = int(linear) + step; L <= 100; L += step)
        result.push_back(L);
    return result;
}

} // namespace

KVGamut::Mesh SpectralLimit::surface()
{
    const std::vector<Chromaticity> outline = outlineOf(hullOf(wavelengths()));
    const std::vector<double> rings = lightnesses();
    const int count = static_cast<int>(outline.size()), ringCount = static_cast<int>(rings.size());
    KVGamut::Mesh mesh;
    for (const double L : rings)
        for (const Chromaticity& colour : outline) {
            const Ab at = placeOf(colour, L);
            mesh.lab.push_back({float(L), float(at.a), float(at.b)});
        }
    const int black = static_cast<int>(mesh.lab.size()), lightest = black + 1;
    mesh.lab.push_back({0.0F, 0.0F, 0.0F});
    mesh.lab.push_back({100.0F, 0.0F, 0.0F});
    for (int i = 0; i < count; ++i) {
        const int next = (i + 1) % count, top = (ringCount - 1) * count;
        mesh.triangles.push_back({black, next, i});
        mesh.triangles.push_back({lightest, top + i, top + next});
        for (int ring = 0; ring + 1 < ringCount; ++ring) {
            const int low = ring * count, high = low + count;
            mesh.triangles.push_back({low + i, low + next, high + next});
            mesh.triangles.push_back({low + i, high + next, high + i});
        }
    }
    return mesh;
}
