// SPDX-License-Identifier: Apache-2.0
#include "model/bodies/SpectralLimit.h"
#include "model/inputs/GamutSource.h"
#include "model/points/SpectralWeights.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

using KVGamut::GamutObject;
using KVGamut::LabPoint;
using Xyz = std::array<double, 3>;

constexpr Xyz d50{96.42, 100.0, 82.49};

LabPoint labOf(const Xyz& xyz)
{
    std::array<double, 3> f{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double t = xyz[i] / d50[i];
        f[i] = t > 216.0 / 24389.0 ? std::cbrt(t) : t * 841.0 / 108.0 + 4.0 / 29.0;
    }
    return {float(116 * f[1] - 16), float(500 * (f[0] - f[1])), float(200 * (f[1] - f[2]))};
}

Xyz xyzOf(double L, double a, double b)
{
    const double y = (L + 16.0) / 116.0;
    const std::array<double, 3> f{y + a / 500.0, y, y - b / 200.0};
    Xyz xyz{};
    for (std::size_t i = 0; i < 3; ++i)
        xyz[i] = d50[i] * (f[i] > 6.0 / 29.0 ? f[i] * f[i] * f[i] : (f[i] - 4.0 / 29.0) * 108.0 / 841.0);
    return xyz;
}

Xyz cross(const Xyz& u, const Xyz& v)
{
    return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}

double dot(const Xyz& u, const Xyz& v)
{
    return u[0] * v[0] + u[1] * v[1] + u[2] * v[2];
}

GamutObject body()
{
    return GamutSource::open(QStringLiteral("SpectralLimit"))->givenGamut();
}

bool isInside(const GamutObject& gamut, const LabPoint& p)
{
    return gamut.isInside(&p.L);
}

/// A light of the chromaticity @p x, @p y with the lightness 50, moved towards white by @p share: as a
/// mixture.
LabPoint mixture(double x, double y, double share)
{
    constexpr double luminance = 18.418651851; // L* 50
    const Xyz light{luminance * x / y, luminance, luminance * (1.0 - x - y) / y};
    Xyz mixed{};
    for (std::size_t i = 0; i < 3; ++i)
        mixed[i] = light[i] + share * (d50[i] * luminance / 100.0 - light[i]);
    return labOf(mixed);
}

TEST(SpectralLimit, liesAtThePublishedChromaticities)
{
    // CIE 15, 2 degree observer: 400, 450, 480, 520, 550, 580, 620 and 700 nm
    constexpr std::array<std::array<double, 2>, 8> published{{{0.1733, 0.0048},
                                                              {0.1566, 0.0177},
                                                              {0.0913, 0.1327},
                                                              {0.0743, 0.8338},
                                                              {0.3016, 0.6923},
                                                              {0.5125, 0.4866},
                                                              {0.6915, 0.3083},
                                                              {0.7347, 0.2653}}};
    const GamutObject limit = body();
    for (const auto& [x, y] : published) {
        EXPECT_TRUE(isInside(limit, mixture(x, y, 0.02))) << x << " " << y;
        EXPECT_FALSE(isInside(limit, mixture(x, y, -0.02))) << x << " " << y;
    }
    // the middle of the purple line
    EXPECT_TRUE(isInside(limit, mixture(0.454, 0.138, 0.02)));
    EXPECT_FALSE(isInside(limit, mixture(0.454, 0.132, -0.02)));
}

TEST(SpectralLimit, reachesFromBlackToTheLightnessOfWhite)
{
    const GamutObject limit = body();
    EXPECT_TRUE(isInside(limit, {0.5F, 0, 0}));
    EXPECT_TRUE(isInside(limit, {99.9F, 0, 0}));
    EXPECT_FALSE(isInside(limit, {100.1F, 0, 0}));
    EXPECT_FALSE(isInside(limit, {-0.1F, 0, 0}));
    EXPECT_TRUE(isInside(limit, {99.5F, -350, 40})) << "flat at the top";
    const KVGamut::Report report = limit.report();
    EXPECT_NEAR(report.white.L, 100.0F, 1e-3F);
    EXPECT_NEAR(report.black.L, 0.0F, 1e-3F);
}

TEST(SpectralLimit, containsAllColoursOfSurfaces)
{
    const GamutObject optimal = GamutSource::open(QStringLiteral("OptimalColors"))->givenGamut();
    EXPECT_GT(body().compare(optimal).secondCovered, 0.999f);
}

/// The cone of the mixtures of lights: what is on the inner side of every plane through black and two lights
/// that has no light on its outer side. That uses neither chromaticities nor an order of the wavelengths.
class ConeOfLights
{
public:
    ConeOfLights()
    {
        QList<double> steps;
        for (int nm = 380; nm <= 780; nm += 5)
            steps.append(nm);
        const SpectralWeights table = *SpectralWeights::of(steps);
        std::vector<Xyz> lights;
        std::vector<float> single(static_cast<std::size_t>(steps.size()));
        for (float& light : single) {
            light = 1.0F;
            const auto xyz = table.xyzOf(single);
            light = 0.0F;
            const double sum = double(xyz[0]) + double(xyz[1]) + double(xyz[2]);
            lights.push_back({double(xyz[0]) / sum, double(xyz[1]) / sum, double(xyz[2]) / sum});
        }
        for (const Xyz& p : lights)
            for (const Xyz& q : lights)
                add(lights, cross(p, q));
    }

    bool contains(const Xyz& xyz) const
    {
        return std::all_of(m_normals.begin(), m_normals.end(),
                           [&](const Xyz& normal) { return dot(normal, xyz) >= 0.0; });
    }

private:
    void add(const std::vector<Xyz>& lights, const Xyz& normal)
    {
        constexpr double rounding = 1e-7;
        const double length = std::sqrt(dot(normal, normal));
        const bool hasAllInside = std::all_of(lights.begin(), lights.end(), [&](const Xyz& light) {
            return dot(normal, light) >= -rounding * length;
        });
        if (length > 1e-4 && hasAllInside)
            m_normals.push_back(normal);
    }

    std::vector<Xyz> m_normals;
};

TEST(SpectralLimit, hasTheVolumeOfTheConeOfLights)
{
    const ConeOfLights cone;
    constexpr double stepL = 2.0, stepAb = 4.0;
    qint64 inside = 0;
    for (double L = 0.5 * stepL; L < 100.0; L += stepL)
        for (double a = -450.0; a < 1250.0; a += stepAb)
            for (double b = -1050.0; b < 250.0; b += stepAb)
                inside += cone.contains(xyzOf(L, a, b)) ? 1 : 0;
    const double counted = double(inside) * stepL * stepAb * stepAb;
    const KVGamut::Report report = body().report();
    RecordProperty("counted", std::to_string(counted));
    RecordProperty("surface", std::to_string(report.volume));
    EXPECT_NEAR(report.volume, counted, 0.003 * counted);
    EXPECT_DOUBLE_EQ(report.volumeUncertainty, SpectralLimit::volumeUncertainty);
}

} // namespace
