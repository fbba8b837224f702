// SPDX-License-Identifier: Apache-2.0
#include <platform/KVVelmoraFramework.h>

#include <gtest/gtest.h>

#include <lcms2.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <span>
#include <vector>

using KVColorConversionHelper::KVHLab2RGB;

namespace {

using Triple = std::array<double, 3>;

// Conversion between sRGB, 0..255, and Lab D50 by Little CMS with its built-in sRGB profile, without
// clipping.
class LittleCms
{
public:
    LittleCms()
    {
        const cmsHPROFILE srgb = cmsCreate_sRGBProfile();
        const cmsHPROFILE lab = cmsCreateLab4Profile(nullptr);
        m_toLab = cmsCreateTransform(srgb, TYPE_RGB_DBL, lab, TYPE_Lab_DBL, INTENT_RELATIVE_COLORIMETRIC,
                                     cmsFLAGS_NOOPTIMIZE);
        cmsCloseProfile(srgb);
        cmsCloseProfile(lab);
    }
    ~LittleCms() { cmsDeleteTransform(m_toLab); }
    LittleCms(const LittleCms&) = delete;
    LittleCms& operator=(const LittleCms&) = delete;

    Triple lab(const Triple& rgb255) const
    {
        const Triple rgb{rgb255[0] / 255.0, rgb255[1] / 255.0, rgb255[2] / 255.0};
        Triple lab{};
        cmsDoTransform(m_toLab, rgb.data(), lab.data(), 1);
        return lab;
    }

private:
    cmsHTRANSFORM m_toLab = nullptr;
};

QList<float> rgbOf(double L, double a, double b)
{
    return KVHLab2RGB({static_cast<float>(L), static_cast<float>(a), static_cast<float>(b)});
}

Triple asTriple(const QList<float>& rgb)
{
    return {rgb[0], rgb[1], rgb[2]};
}

double hueAngle(double a, double b)
{
    return std::atan2(b, a);
}

} // namespace

TEST(Lab2Rgb, invertsSrgbForColoursInGamut)
{
    const LittleCms reference;
    for (int r = 0; r <= 255; r += 17)
        for (int g = 0; g <= 255; g += 17)
            for (int b = 0; b <= 255; b += 17) {
                const Triple lab = reference.lab({double(r), double(g), double(b)});
                const auto rgb = rgbOf(lab[0], lab[1], lab[2]);
                // Little CMS rounds the adapted matrix to 1/65536, 0.05 of an eight-bit step in the dark.
                EXPECT_NEAR(rgb[0], r, 0.1) << r << ' ' << g << ' ' << b;
                EXPECT_NEAR(rgb[1], g, 0.1) << r << ' ' << g << ' ' << b;
                EXPECT_NEAR(rgb[2], b, 0.1) << r << ' ' << g << ' ' << b;
            }
}

TEST(Lab2Rgb, mapsNeutralsToNeutrals)
{
    EXPECT_EQ(rgbOf(100, 0, 0), (QList<float>{255.0f, 255.0f, 255.0f}));
    EXPECT_EQ(rgbOf(0, 0, 0), (QList<float>{0.0f, 0.0f, 0.0f}));
    for (int L = 1; L < 100; ++L) {
        const auto rgb = rgbOf(L, 0, 0);
        EXPECT_NEAR(rgb[0], rgb[1], 1e-3);
        EXPECT_NEAR(rgb[1], rgb[2], 1e-3);
    }
    // L* 53.585 is the luminance of the eight-bit value 128 (0.215861 by the curve of IEC 61966-2-1).
    EXPECT_NEAR(rgbOf(116.0 * std::cbrt(0.21586050) - 16.0, 0, 0)[0], 128.0, 0.01);
}

TEST(Lab2Rgb, clampsLightness)
{
    EXPECT_EQ(rgbOf(140, 0, 0), rgbOf(100, 0, 0));
    EXPECT_EQ(rgbOf(-20, 0, 0), rgbOf(0, 0, 0));
    EXPECT_EQ(rgbOf(-20, 30, 10), rgbOf(0, 30, 10));
    EXPECT_EQ(rgbOf(120, 60, -90), rgbOf(100, 60, -90));
}

TEST(Lab2Rgb, keepsTheHueOfColoursOutOfGamut)
{
    const LittleCms reference;
    std::mt19937 random(9);
    std::uniform_real_distribution<double> lightness(0.0, 100.0), angle(-M_PI, M_PI), chroma(140.0, 400.0);
    for (int i = 0; i < 2000; ++i) {
        const double L = lightness(random), h = angle(random), c = chroma(random);
        const auto rgb = rgbOf(L, c * std::cos(h), c * std::sin(h));
        const Triple lab = reference.lab(asTriple(rgb));
        const double found = std::hypot(lab[1], lab[2]);
        EXPECT_GT(found, 10.0) << "L " << L << " hue " << h; // chromatic
        EXPECT_LT(found * std::abs(std::remainder(hueAngle(lab[1], lab[2]) - h, 2.0 * M_PI)), 0.05);
        EXPECT_LE(std::abs(lab[0] - L), 0.2 * std::abs(50.0 - L) + 0.05);
    }
}

// No colour on the path is in gamut beyond the result. Searched from outside, so that a path that leaves and
// re-enters the gamut would be noticed.
TEST(Lab2Rgb, mapsColoursNoFurtherThanNecessary)
{
    const LittleCms reference;
    const auto shown = [&reference](double L, double a, double b) {
        return reference.lab(asTriple(rgbOf(L, a, b)));
    };
    for (double L = 0.5; L < 100.0; L += 3.9)
        for (double h = 0.0; h < 2.0 * M_PI; h += 0.11) {
            const double far = 159.0;
            const Triple found = shown(L, far * std::cos(h), far * std::sin(h));
            const double chroma = std::hypot(found[1], found[2]);
            const double grey = L + 0.2 * (50.0 - L);
            EXPECT_NEAR(found[0], grey + chroma / far * (L - grey), 0.05);
            for (double c = far; c > chroma + 0.5; c -= 0.5) {
                const double onTheWay = grey + c / far * (L - grey);
                const Triple back = shown(onTheWay, c * std::cos(h), c * std::sin(h));
                EXPECT_GT(
                    std::hypot(back[0] - onTheWay, back[1] - c * std::cos(h), back[2] - c * std::sin(h)),
                    0.01)
                    << "L " << L << " hue " << h << ": chroma " << c << " can be shown, and " << chroma
                    << " was";
            }
        }
}

// The yellow of Adobe RGB is just outside sRGB; at constant lightness the first colour in gamut is a pale one
// with chroma 30.
TEST(Lab2Rgb, keepsVividYellowsVivid)
{
    const LittleCms reference;
    for (double L : {97.0, 97.6, 97.7, 98.0, 98.5})
        for (double chroma : {96.0, 100.0, 110.0}) {
            const double h = 99.6 * M_PI / 180.0;
            const Triple lab = reference.lab(asTriple(rgbOf(L, chroma * std::cos(h), chroma * std::sin(h))));
            EXPECT_GT(std::hypot(lab[1], lab[2]), 80.0) << L << ' ' << chroma;
        }
}

TEST(Lab2Rgb, isContinuous)
{
    // Steps of 0.01 dE along random lines that cross the gamut boundary.
    std::mt19937 random(4);
    std::uniform_real_distribution<double> L(2.0, 98.0), ab(-150.0, 150.0);
    for (int line = 0; line < 60; ++line) {
        const Triple from{L(random), ab(random), ab(random)}, to{L(random), ab(random), ab(random)};
        const double length = std::hypot(to[0] - from[0], to[1] - from[1], to[2] - from[2]);
        const int steps = static_cast<int>(length / 0.01) + 1;
        Triple before = asTriple(rgbOf(from[0], from[1], from[2]));
        for (int i = 1; i <= steps; ++i) {
            const double t = double(i) / steps;
            const double a = from[1] + t * (to[1] - from[1]), b = from[2] + t * (to[2] - from[2]);
            const Triple now = asTriple(rgbOf(from[0] + t * (to[0] - from[0]), a, b));
            if (std::hypot(a, b) > 5.0) { // near the neutral axis the hue angle changes quickly
                for (std::size_t c = 0; c < 3; ++c)
                    ASSERT_NEAR(now[c], before[c], 1.5) << "line " << line << " step " << i;
            }
            before = now;
        }
    }
}

TEST(Lab2Rgb, isWithin0And255ForFiniteColours)
{
    const float huge = std::numeric_limits<float>::max(), tiny = std::numeric_limits<float>::denorm_min();
    for (float L : {-huge, -1.0f, 0.0f, tiny, 50.0f, 100.0f, 1e6f, huge})
        for (float a : {-huge, -1e10f, -200.0f, 0.0f, tiny, 80.0f, 1e20f, huge})
            for (float b : {-huge, -1e10f, -200.0f, 0.0f, tiny, 80.0f, 1e20f, huge}) {
                const auto rgb = KVHLab2RGB({L, a, b});
                ASSERT_EQ(rgb.size(), 3);
                for (float v : rgb) {
                    EXPECT_GE(v, 0.0f) << L << ' ' << a << ' ' << b;
                    EXPECT_LE(v, 255.0f) << L << ' ' << a << ' ' << b;
                }
            }
}

TEST(Lab2Rgb, isMinusOneForInvalidColours)
{
    const QList<float> none{-1.0f, -1.0f, -1.0f};
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(KVHLab2RGB({}), none);
    EXPECT_EQ(KVHLab2RGB({50.0f}), none);
    EXPECT_EQ(KVHLab2RGB({50.0f, 10.0f}), none);
    for (float bad : {nan, inf, -inf})
        for (qsizetype i = 0; i < 3; ++i) {
            QList<float> lab{50.0f, 0.0f, 0.0f};
            lab[i] = bad;
            EXPECT_EQ(KVHLab2RGB(lab), none);
        }
    EXPECT_EQ(KVHLab2RGB({50.0f, 0.0f, 0.0f, nan}), KVHLab2RGB({50.0f, 0.0f, 0.0f}));
}

TEST(Lab2Rgb, manyAtOnceAreTheSameColours)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> lightness(-5.0f, 105.0f), chroma(-150.0f, 150.0f);
    std::vector<KVGamut::LabPoint> lab(5000);
    for (KVGamut::LabPoint& p : lab)
        p = {lightness(random), chroma(random), chroma(random)};
    lab[7].a = std::numeric_limits<float>::quiet_NaN();
    std::vector<std::array<float, 3>> rgb(lab.size());
    KVHLab2RGB(lab, rgb);
    for (std::size_t i = 0; i < lab.size(); ++i)
        ASSERT_EQ(QList<float>(rgb[i].begin(), rgb[i].end()), KVHLab2RGB({lab[i].L, lab[i].a, lab[i].b}));
}

TEST(Lab2Rgb, theRestOfTheLongerListIsIgnored)
{
    const std::vector<KVGamut::LabPoint> lab(3, KVGamut::LabPoint{100.0f, 0.0f, 0.0f});
    std::vector<std::array<float, 3>> rgb(5, std::array{7.0f, 7.0f, 7.0f});
    KVHLab2RGB(lab, rgb);
    EXPECT_EQ(rgb[2], (std::array{255.0f, 255.0f, 255.0f}));
    EXPECT_EQ(rgb[3], (std::array{7.0f, 7.0f, 7.0f}));
    KVHLab2RGB(lab, std::span(rgb).first(1));
    KVHLab2RGB({}, rgb);
    EXPECT_EQ(rgb[3], (std::array{7.0f, 7.0f, 7.0f}));
}

// A colour outside sRGB moves towards grey just as far as necessary: one of its values is then at a limit.
TEST(Lab2Rgb, mappedColoursLieOnTheBoundary)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<float> lightness(2.0f, 98.0f), chroma(-128.0f, 128.0f);
    const LittleCms cms;
    int mapped = 0;
    for (int i = 0; i < 5000; ++i) {
        const float L = lightness(random), a = chroma(random), b = chroma(random);
        const Triple rgb = asTriple(rgbOf(L, a, b));
        const Triple back = cms.lab(rgb);
        if (std::hypot(back[0] - L, back[1] - a, back[2] - b) < 0.5)
            continue;
        ++mapped;
        const auto [low, high] = std::minmax({rgb[0], rgb[1], rgb[2]});
        EXPECT_TRUE(low < 1e-3 || high > 255.0 - 1e-3) << L << ' ' << a << ' ' << b;
    }
    EXPECT_GT(mapped, 2000);
}
