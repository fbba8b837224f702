// SPDX-License-Identifier: Apache-2.0
#include "model/inputs/BuiltInProfiles.h"

#include <gtest/gtest.h>
#include <lcms2.h>

#include <array>
#include <cmath>
#include <functional>
#include <ostream>
#include <string>

namespace {

struct Xy
{
    double x, y;
};

/// An RGB colour space with the numbers and the decoding function of its standard.
struct Published
{
    const char* name;
    Xy white, red, green, blue;
    std::function<double(double)> decode;
};

void PrintTo(const Published& space, std::ostream* out)
{
    *out << space.name;
}

constexpr Xy d65{0.3127, 0.3290};

double srgb(double v)
{
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

double bt2020(double v)
{
    constexpr double alpha = 1.09929682680944, beta = 0.018053968510807;
    return v < 4.5 * beta ? v / 4.5 : std::pow((v + alpha - 1.0) / alpha, 1.0 / 0.45);
}

double romm(double v)
{
    return v < 16.0 / 512.0 ? v / 16.0 : std::pow(v, 1.8);
}

const std::array<Published, 5> spaces{{
    {"sRGB", d65, {0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}, srgb},
    {"AdobeRGB",
     d65,
     {0.64, 0.33},
     {0.21, 0.71},
     {0.15, 0.06},
     [](double v) { return std::pow(v, 563.0 / 256.0); }},
    {"DisplayP3", d65, {0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}, srgb},
    {"Rec2020", d65, {0.708, 0.292}, {0.170, 0.797}, {0.131, 0.046}, bt2020},
    {"ProPhoto", {0.3457, 0.3585}, {0.7347, 0.2653}, {0.1596, 0.8404}, {0.0366, 0.0001}, romm},
}};

using Vec = std::array<double, 3>;
using Mat = std::array<Vec, 3>;

Vec operator*(const Mat& m, const Vec& v)
{
    Vec r{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            r[i] += m[i][k] * v[k];
    return r;
}

double determinant(const Mat& m)
{
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

/// Solves m·x = v for x with Cramer's rule.
Vec solve(const Mat& m, const Vec& v)
{
    Vec x{};
    for (std::size_t k = 0; k < 3; ++k) {
        Mat replaced = m;
        for (std::size_t i = 0; i < 3; ++i)
            replaced[i][k] = v[i];
        x[k] = determinant(replaced) / determinant(m);
    }
    return x;
}

Vec xyzOf(const Xy& c)
{
    return {c.x / c.y, 1.0, (1.0 - c.x - c.y) / c.y};
}

// The Bradford cone responses.
constexpr Mat bradford{{{0.8951, 0.2664, -0.1614}, {-0.7502, 1.7135, 0.0367}, {0.0389, -0.0685, 1.0296}}};
constexpr Vec pcsWhite{0.9642, 1.0, 0.8249};

/// XYZ (D50) of @p device in @p space, from the published numbers alone.
Vec expectedXyz(const Published& space, const Vec& device)
{
    const Vec r = xyzOf(space.red), g = xyzOf(space.green), b = xyzOf(space.blue), w = xyzOf(space.white);
    const Mat columns{{{r[0], g[0], b[0]}, {r[1], g[1], b[1]}, {r[2], g[2], b[2]}}};
    const Vec scale = solve(columns, w); // the sum of the three primaries is the white
    const Vec linear{scale[0] * space.decode(device[0]), scale[1] * space.decode(device[1]),
                     scale[2] * space.decode(device[2])};
    Vec cones = bradford * (columns * linear);
    const Vec from = bradford * w, to = bradford * pcsWhite;
    for (std::size_t i = 0; i < 3; ++i)
        cones[i] *= to[i] / from[i];
    return solve(bradford, cones);
}

class BuiltInProfileTest : public testing::TestWithParam<Published>
{
};

TEST_P(BuiltInProfileTest, mapsItsDeviceAsPublished)
{
    const QByteArray bytes = BuiltInProfiles::profile(QLatin1String(GetParam().name));
    ASSERT_FALSE(bytes.isEmpty());
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()));
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(cmsGetColorSpace(profile), cmsSigRgbData);
    EXPECT_EQ(cmsGetDeviceClass(profile), cmsSigDisplayClass);
    const cmsHPROFILE xyz = cmsCreateXYZProfile();
    const cmsHTRANSFORM transform =
        cmsCreateTransform(profile, TYPE_RGB_DBL, xyz, TYPE_XYZ_DBL, INTENT_RELATIVE_COLORIMETRIC,
                           cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE);
    ASSERT_NE(transform, nullptr);

    // profiles store numbers in steps of 1/65536
    constexpr double tolerance = 1e-4;
    constexpr int steps = 8;
    for (int i = 0; i <= steps; ++i)
        for (int j = 0; j <= steps; ++j)
            for (int k = 0; k <= steps; ++k) {
                const Vec device{i / double(steps), j / double(steps), k / double(steps)};
                cmsCIEXYZ found;
                cmsDoTransform(transform, device.data(), &found, 1);
                const Vec expected = expectedXyz(GetParam(), device);
                ASSERT_NEAR(found.X, expected[0], tolerance) << i << " " << j << " " << k;
                ASSERT_NEAR(found.Y, expected[1], tolerance) << i << " " << j << " " << k;
                ASSERT_NEAR(found.Z, expected[2], tolerance) << i << " " << j << " " << k;
            }
    // dark values, near the point where the two pieces of the curve meet
    for (int i = 0; i <= 100; ++i) {
        const Vec device{i / 1000.0, i / 1000.0, i / 1000.0};
        cmsCIEXYZ found;
        cmsDoTransform(transform, device.data(), &found, 1);
        ASSERT_NEAR(found.Y, expectedXyz(GetParam(), device)[1], 2e-5) << i;
    }
    cmsDeleteTransform(transform);
    cmsCloseProfile(xyz);
    cmsCloseProfile(profile);
}

TEST_P(BuiltInProfileTest, describesItselfByItsName)
{
    const QByteArray bytes = BuiltInProfiles::profile(QLatin1String(GetParam().name));
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()));
    ASSERT_NE(profile, nullptr);
    std::array<char, 100> text{};
    cmsGetProfileInfoASCII(profile, cmsInfoDescription, "en", "US", text.data(), text.size());
    EXPECT_STREQ(text.data(), GetParam().name);
    cmsCloseProfile(profile);
}

const auto nameOf = [](const auto& parameter) { return std::string(parameter.param.name); };
INSTANTIATE_TEST_SUITE_P(Of, BuiltInProfileTest, testing::ValuesIn(spaces), nameOf);

TEST(BuiltInProfiles, areNamed)
{
    EXPECT_EQ(BuiltInProfiles::names(),
              (QStringList{QStringLiteral("sRGB"), QStringLiteral("AdobeRGB"), QStringLiteral("DisplayP3"),
                           QStringLiteral("Rec2020"), QStringLiteral("ProPhoto")}));
}

TEST(BuiltInProfiles, areFoundInAnyCaseAndOnlyByTheirName)
{
    EXPECT_FALSE(BuiltInProfiles::profile(QStringLiteral("prophoto")).isEmpty());
    for (const char* name : {"", "sRG", "sRGB2", "./sRGB", " sRGB"})
        EXPECT_TRUE(BuiltInProfiles::profile(QLatin1String(name)).isEmpty()) << name;
}

} // namespace
