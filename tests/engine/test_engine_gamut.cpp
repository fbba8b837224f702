// SPDX-License-Identifier: Apache-2.0
#include "SlowGeometry.h"
#include "TestProfiles.h"
#include "WorkCount.h"

#include <engine/mesh/SelfIntersection.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <cmath>
#include <limits>
#include <random>

using namespace testprofiles;
using KVGamut::Mesh;

namespace {

double distance(const KVGamut::LabPoint& p, const Lab& q)
{
    return std::sqrt((p.L - q[0]) * (p.L - q[0]) + (p.a - q[1]) * (p.a - q[1]) + (p.b - q[2]) * (p.b - q[2]));
}

double distance(const QList<float>& p, const Lab& q)
{
    return distance(KVGamut::LabPoint{p[0], p[1], p[2]}, q);
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

// A device that adds a vector for each channel to an initial colour.
DeviceMap mixer(Lab start, std::vector<Lab> vectors)
{
    return [start, vectors](const std::vector<double>& device) {
        Lab lab = start;
        for (std::size_t c = 0; c < vectors.size(); ++c)
            for (std::size_t i = 0; i < 3; ++i)
                lab[i] += device[c] * vectors[c][i];
        return lab;
    };
}

void expectSound(const KVGamut::GamutObject& gamut, const char* what)
{
    const slow::Shape shape = slow::shapeOf(slow::facesOf(gamut));
    EXPECT_TRUE(shape.everyEdgeOnceEachWay) << what;
    EXPECT_EQ(shape.euler, 2) << what;
    EXPECT_GT(shape.volume, 0.0) << what;
    EXPECT_NEAR(gamut.report().surfaceVolume, shape.volume, 1e-6 * shape.volume) << what;
}

} // namespace

// --- Reference profiles ---------------------------------------------------------------------------

// Volumes found by extrapolating the surface integral over grids of 33 to 257 points, by the integral
// of the Jacobian determinant, and by Monte Carlo, which agree within the uncertainty.
struct Reference
{
    const char* name;
    QString (*path)();
    KVVMRenderType intent;
    double volume;
    double uncertainty;
    double tolerance; // allowed relative error with the default grid
};

class ReferenceVolume : public testing::TestWithParam<Reference>
{
};

TEST_P(ReferenceVolume, isFoundWithTheDefaultGrid)
{
    const Reference& reference = GetParam();
    const auto gamut = gamutOf(openedFile(reference.path()), -1, reference.intent);
    EXPECT_NEAR(gamut.volume(), reference.volume,
                reference.tolerance * reference.volume + reference.uncertainty);
    expectSound(gamut, reference.name);
}

TEST_P(ReferenceVolume, isWithinTheReportedUncertainty)
{
    const Reference& reference = GetParam();
    for (int grid : {17, 33, 65}) {
        const auto report = gamutOf(openedFile(reference.path()), grid, reference.intent).report();
        EXPECT_LE(std::abs(report.volume - reference.volume),
                  report.volumeUncertainty + reference.uncertainty)
            << "grid " << grid;
        EXPECT_LT(report.volumeUncertainty, 0.01 * report.volume) << "grid " << grid;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Profiles, ReferenceVolume,
    testing::Values(
        Reference{"sRGB", srgb, KVVMRenderRelativeColorimetric, 832'781, 17, 0.0005},
        Reference{"AdobeRGB", adobeRgb, KVVMRenderRelativeColorimetric, 1'208'747, 24, 0.0005},
        Reference{"ProPhotoRGB", prophotoRgb, KVVMRenderRelativeColorimetric, 2'880'355, 58, 0.0005},
        Reference{"CieRGB", cieRgb, KVVMRenderRelativeColorimetric, 1'726'111, 35, 0.0005},
        Reference{"CMYK", printerCmyk, KVVMRenderRelativeColorimetric, 411'424, 103, 0.001},
        Reference{"CMYKabsolute", printerCmyk, KVVMRenderAbsoluteColorimetric, 296'508, 74, 0.001}),
    [](const auto& testCase) { return testCase.param.name; });

TEST(Gamut, isValidForEveryInstalledProfile)
{
    int computed = 0;
    for (const QString& path : installedProfiles()) {
        const auto gamut = gamutOf(openedFile(path));
        if (gamut.faceCount() == 0) {
            EXPECT_TRUE(gamut.problem()) << qPrintable(path);
            continue;
        }
        ++computed;
        expectSound(gamut, qPrintable(path));
        EXPECT_EQ(gamut.problem(), std::nullopt) << qPrintable(path);
        EXPECT_EQ(gamut.faces().size(), gamut.faceCount()) << qPrintable(path);
    }
    EXPECT_GE(computed, 25);
}

namespace {

std::size_t crossingsOf(const KVGamut::GamutObject& gamut)
{
    Mesh mesh;
    for (const auto& face : gamut.faces()) {
        const int first = static_cast<int>(mesh.lab.size());
        for (const auto& node : face)
            mesh.lab.push_back({node.lab[0], node.lab[1], node.lab[2]});
        mesh.triangles.push_back({first, first + 1, first + 2});
    }
    return velmora::countIntersections(mesh, 1000, {}).value();
}

} // namespace

TEST(Gamut, neverSelfIntersectsAfterRefinement)
{
    int computed = 0;
    for (const QString& path : installedProfiles())
        for (const auto& [grid, maxEdge] : {std::pair{5, 40.0f}, {9, 2.0f}, {-1, 10.0f}}) {
            KVGamut::GamutObject gamut;
            if (!gamut.init(openedFile(path), KVVMRenderRelativeColorimetric, false, false, maxEdge, grid, 2,
                            nullptr))
                continue;
            ++computed;
            EXPECT_EQ(crossingsOf(gamut), 0u) << qPrintable(path) << " grid " << grid;
        }
    EXPECT_GE(computed, 75);
}

TEST(Gamut, isTheSameOnEveryRun)
{
    for (const QString& path : {srgb(), printerCmyk()}) {
        const auto profile = openedFile(path);
        EXPECT_TRUE(gamutOf(profile).faces() == gamutOf(profile).faces()) << qPrintable(path);
    }
}

TEST(Gamut, verticesHaveTheLabOfTheirDeviceColours)
{
    for (const QString& path : {srgb(), printerCmyk()}) {
        const QByteArray bytes = bytesOf(path);
        const auto gamut = gamutOf(opened(bytes));
        const auto faces = gamut.faces();
        for (qsizetype f = 0; f < faces.size(); f += 97) {
            const auto& node = faces[f][0];
            const std::vector<double> device(node.device.begin(), node.device.end());
            EXPECT_LT(distance(node.lab, labOf(bytes, device)), 1e-3) << qPrintable(path) << " face " << f;
        }
    }
}

// Nearly all colours of the device are inside. The others may be outside by at most the distance of a flat
// face from the curved surface.
TEST(Gamut, containsTheColoursOfTheDevice)
{
    for (const QString& path : {srgb(), adobeRgb(), printerCmyk()}) {
        const QByteArray bytes = bytesOf(path);
        const auto gamut = gamutOf(opened(bytes));
        const Lab grey = {gamut.whitePoint().L * 0.5 + gamut.blackPoint().L * 0.5, 0.0, 0.0};
        const auto channels = static_cast<std::size_t>(gamut.report().channels);
        std::mt19937 random(7);
        std::uniform_real_distribution<double> any(0.0, 1.0);
        int outside = 0;
        constexpr int trials = 1000;
        for (int i = 0; i < trials; ++i) {
            std::vector<double> device(channels);
            for (double& v : device)
                v = any(random);
            const Lab lab = labOf(bytes, device);
            // Moved by half a dE towards grey.
            const double r = std::hypot(lab[0] - grey[0], lab[1] - grey[1], lab[2] - grey[2]);
            const double t = std::max(0.0, 1.0 - 0.5 / r);
            std::array<float, 3> inward;
            for (std::size_t c = 0; c < 3; ++c)
                inward[c] = static_cast<float>(grey[c] + t * (lab[c] - grey[c]));
            outside += gamut.isInside(inward.data()) ? 0 : 1;
        }
        EXPECT_LE(outside, trials / 1000) << qPrintable(path);
    }
}

// --- Solids that are exact by construction --------------------------------------------------------

TEST(Gamut, ofAnAffineDeviceIsItsParallelepiped)
{
    const std::vector<Lab> vectors{{50, 40, 0}, {20, -60, 20}, {10, 0, -70}};
    const QByteArray bytes = tableProfile(cmsSigRgbData, 2, mixer({10, 5, 20}, vectors));
    const Lab corner = labOf(bytes, {0, 0, 0});
    std::vector<Lab> edges{slow::minus(labOf(bytes, {1, 0, 0}), corner),
                           slow::minus(labOf(bytes, {0, 1, 0}), corner),
                           slow::minus(labOf(bytes, {0, 0, 1}), corner)};
    const auto gamut = gamutOf(opened(bytes));
    EXPECT_EQ(gamut.method(), KVGamut::Method::DeviceMesh);
    const double volume = std::abs(slow::determinant(edges[0], edges[1], edges[2]));
    // The table stores its nodes in steps of 1/257 dE, so the map is not exactly affine.
    EXPECT_NEAR(gamut.volume(), volume, 1e-4 * volume);
    expectSound(gamut, "affine");
}

TEST(Gamut, ofAMirroringDeviceFacesOutwards)
{
    const std::vector<Lab> vectors{{20, -60, 20}, {50, 40, 0}, {10, 0, -70}}; // two swapped: left-handed
    const auto gamut = gamutOf(opened(tableProfile(cmsSigRgbData, 2, mixer({10, 5, 20}, vectors))));
    const double volume = slow::zonotopeVolume(vectors);
    EXPECT_NEAR(gamut.volume(), volume, 1e-4 * volume);
    expectSound(gamut, "mirrored");
}

TEST(Gamut, ofFourMixedInksIsTheirZonotope)
{
    const std::vector<Lab> inks{{-20, -30, -30}, {-25, 40, -5}, {-5, -3, 60}, {-35, 2, 3}};
    const auto gamut = gamutOf(opened(tableProfile(cmsSigCmykData, 2, mixer({95, 0, 0}, inks))));
    EXPECT_EQ(gamut.method(), KVGamut::Method::RadialHull);
    const double volume = slow::zonotopeVolume(inks);
    EXPECT_NEAR(gamut.volume(), volume, 0.001 * volume);
    expectSound(gamut, "four inks");
}

TEST(Gamut, ofManyMixedInksIsTheirZonotope)
{
    const std::vector<Lab> inks{{-9, -30, -20}, {-10, 35, -5}, {-4, -3, 45},  {-9, 2, 3},   {-6, 20, 25},
                                {-7, -25, 12},  {-5, 9, -28},  {-3, -9, -12}, {-2, 14, 6},  {-3, -6, 17},
                                {-4, -15, 1},   {-2, 7, -9},   {-3, 11, -14}, {-1, -4, -6}, {-2, 3, 9}};
    const std::array<cmsColorSpaceSignature, 11> spaces{
        cmsSig5colorData,  cmsSig6colorData,  cmsSig7colorData,  cmsSig8colorData,
        cmsSig9colorData,  cmsSig10colorData, cmsSig11colorData, cmsSig12colorData,
        cmsSig13colorData, cmsSig14colorData, cmsSig15colorData};
    for (std::size_t n = 5; n <= 15; ++n) {
        const std::vector<Lab> used(inks.begin(), inks.begin() + static_cast<std::ptrdiff_t>(n));
        const auto profile = opened(tableProfile(spaces[n - 5], 2, mixer({97, 0, 0}, used)));
        KVGamut::GamutObject gamut;
        const work::Work cost = work::of([&] { gamut = gamutOf(profile); });
        const double volume = slow::zonotopeVolume(used);
        // From eleven inks on there are fewer samples, because every channel doubles the time of a transform.
        const double tolerance = n <= 10 ? 0.001 : 0.01;
        EXPECT_NEAR(gamut.volume(), volume, tolerance * volume)
            << n << " inks: " << testing::PrintToString(gamut.problem());
        EXPECT_EQ(gamut.report().channels, static_cast<int>(n));
        expectSound(gamut, "many inks");
        // Each takes about a second on an ordinary processor.
        EXPECT_LE(cost.colours, 250'000u) << n << " inks";
        EXPECT_LE(cost.corners, 600'000'000u) << n << " inks";
        EXPECT_LE(cost.bytes, 128u << 20) << n << " inks";
    }
}

// The third channel maps to 0..60 and back: that facet of the box is only reached from inside the device
// cube.
TEST(Gamut, ofAFoldedDeviceIncludesTheFold)
{
    const auto fold = [](double z) { return 60.0 * (1.0 - 4.0 * (z - 0.5) * (z - 0.5)); };
    const QByteArray bytes = tableProfile(cmsSigYCbCrData, 33, [&](const std::vector<double>& d) {
        return Lab{10 + 80 * d[0], -40 + 80 * d[1], fold(d[2])};
    });
    const auto gamut = gamutOf(opened(bytes));
    EXPECT_EQ(gamut.method(), KVGamut::Method::RadialHull);
    EXPECT_NEAR(gamut.report().foldShare, 0.5, 0.01);
    EXPECT_NEAR(gamut.volume(), 80.0 * 80.0 * 60.0, 0.005 * 80 * 80 * 60);
    expectSound(gamut, "folded");
}

// YCbCr encodes more than a display's colours; the others are clipped to the display's gamut boundary. The
// gamut is therefore that of the display. A hull's error is due to its concavities.
TEST(Gamut, ofYCbCrIsThatOfItsDisplay)
{
    const QByteArray display = bytesOf(srgb());
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(display.constData(), static_cast<cmsUInt32Number>(display.size()));
    const cmsHPROFILE lab = cmsCreateLab2Profile(nullptr);
    const cmsHTRANSFORM transform = cmsCreateTransform(profile, TYPE_RGB_DBL, lab, TYPE_Lab_DBL,
                                                       INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOCACHE);
    const QByteArray bytes = tableProfile(cmsSigYCbCrData, 33, [&](const std::vector<double>& d) {
        const double y = d[0], cb = d[1] - 0.5, cr = d[2] - 0.5; // ITU-R BT.601
        std::array<double, 3> rgb{y + 1.402 * cr, y - 0.344136 * cb - 0.714136 * cr, y + 1.772 * cb};
        for (double& v : rgb)
            v = std::clamp(v, 0.0, 1.0);
        Lab value{};
        cmsDoTransform(transform, rgb.data(), value.data(), 1);
        return value;
    });
    cmsDeleteTransform(transform);
    cmsCloseProfile(lab);
    cmsCloseProfile(profile);
    const auto gamut = gamutOf(opened(bytes));
    EXPECT_EQ(gamut.method(), KVGamut::Method::RadialHull);
    EXPECT_NEAR(gamut.volume(), 832'781, 0.005 * 832'781) << testing::PrintToString(gamut.problem());
    EXPECT_TRUE(gamut.primaries().isEmpty());
    expectSound(gamut, "video");
}

// A thick crescent is not star-shaped, but its surface is exact, because the device does not fold.
TEST(Gamut, ofACrescentKeepsItsConcavity)
{
    // Polar: angle over 270 degrees, radius 20 to 50; the area of the ring sector times the height.
    const QByteArray bytes = tableProfile(cmsSigRgbData, 65, [](const std::vector<double>& d) {
        const double angle = 1.5 * M_PI * d[1];
        const double radius = 20.0 + 30.0 * d[2];
        return Lab{20 + 60 * d[0], radius * std::cos(angle), radius * std::sin(angle)};
    });
    const auto gamut = gamutOf(opened(bytes), 65);
    EXPECT_EQ(gamut.method(), KVGamut::Method::DeviceMesh);
    const double volume = 60.0 * 0.5 * 1.5 * M_PI * (50.0 * 50.0 - 20.0 * 20.0);
    EXPECT_NEAR(gamut.volume(), volume, 0.002 * volume);
    const float hollow[] = {50.0f, 0.0f, 0.0f};
    EXPECT_FALSE(gamut.isInside(hollow));
    const float gap[] = {50.0f, 25.0f, -25.0f};
    EXPECT_FALSE(gamut.isInside(gap));
    const float solid[] = {50.0f, -25.0f, 25.0f};
    EXPECT_TRUE(gamut.isInside(solid));
    expectSound(gamut, "crescent");
}

// --- Intents and black points ---------------------------------------------------------------------

TEST(Gamut, isNotBlackPointCompensatedByDefault)
{
    // With compensation the darkest colour would have L* 0; without, it is clearly higher.
    for (auto intent : {KVVMRenderPerceptual, KVVMRenderRelativeColorimetric, KVVMRenderSaturation})
        EXPECT_GT(gamutOf(openedFile(printerCmyk()), 9, intent).blackPoint().L, 5.0f) << intent;
}

TEST(Gamut, blackPointCompensationDoesNotAffectTheAbsoluteIntent)
{
    const auto printer = openedFile(printerCmyk());
    const auto lowest = [](const KVGamut::GamutObject& gamut) {
        double low = 100.0;
        for (const auto& face : slow::facesOf(gamut))
            low = std::min(low, face[0][0]);
        return low;
    };
    EXPECT_LT(lowest(gamutOf(printer, 9, KVVMRenderRelativeColorimetric, true)),
              lowest(gamutOf(printer, 9, KVVMRenderRelativeColorimetric, false)) - 4.0);
    EXPECT_TRUE(gamutOf(printer, 9, KVVMRenderAbsoluteColorimetric, true).faces() ==
                gamutOf(printer, 9, KVVMRenderAbsoluteColorimetric, false).faces());
}

TEST(Gamut, hasPaperWhiteOnlyWithTheAbsoluteIntent)
{
    const auto printer = openedFile(printerCmyk());
    const auto relative = gamutOf(printer, 9).whitePoint();
    EXPECT_NEAR(relative.L, 100.0f, 0.01f);
    const auto absolute = gamutOf(printer, 9, KVVMRenderAbsoluteColorimetric).whitePoint();
    EXPECT_LT(absolute.L, 95.0f);
}

TEST(Gamut, reportsHowItWasComputed)
{
    const auto report = gamutOf(openedFile(printerCmyk()), 9, KVVMRenderSaturation, true).report();
    EXPECT_EQ(report.method, KVGamut::Method::RadialHull);
    EXPECT_EQ(report.intent, KVVMRenderSaturation);
    EXPECT_TRUE(report.blackPointCompensation);
    EXPECT_EQ(report.channels, 4);
    EXPECT_EQ(report.gridPoints, 9);
    EXPECT_GT(report.faceCount, 100);
    EXPECT_GT(report.seconds, 0.0);
    EXPECT_EQ(report.problem, std::nullopt);
}

// --- Decoration -----------------------------------------------------------------------------------

TEST(Gamut, primariesStartAtBlackOrPaper)
{
    for (const QString& path : {srgb(), printerCmyk()}) {
        const QByteArray bytes = bytesOf(path);
        const auto gamut = gamutOf(opened(bytes));
        const auto channels = static_cast<std::size_t>(gamut.report().channels);
        const QList<float> reference = gamut.referenceLab();
        ASSERT_EQ(reference.size(), 3);
        EXPECT_LT(distance(reference, labOf(bytes, std::vector<double>(channels, 0.0))), 1e-3);
        const auto primaries = gamut.primaries();
        ASSERT_EQ(primaries.size(), static_cast<qsizetype>(channels));
        for (std::size_t c = 0; c < channels; ++c) {
            const auto& ramp = primaries[static_cast<qsizetype>(c)];
            ASSERT_GE(ramp.size(), 8);
            std::vector<double> full(channels, 0.0);
            full[c] = 1.0;
            EXPECT_LT(distance(ramp.last(), labOf(bytes, full)), 1e-3) << "channel " << c;
            EXPECT_GT(distance(ramp.first(), {reference[0], reference[1], reference[2]}), 0.0);
            EXPECT_LT(distance(ramp.first(), {reference[0], reference[1], reference[2]}), 10.0);
        }
    }
}

TEST(Gamut, primariesLieOnTheDevicesEdges)
{
    const QByteArray bytes = bytesOf(srgb());
    const auto ramp = gamutOf(opened(bytes)).primaries()[1]; // green
    // On the edge means that some level of green alone has this colour. L* increases, so bisection finds it.
    for (const auto& lab : ramp) {
        double low = 0.0, high = 1.0;
        for (int i = 0; i < 40; ++i) {
            const double middle = 0.5 * (low + high);
            (labOf(bytes, {0.0, middle, 0.0})[0] < double(lab[0]) ? low : high) = middle;
        }
        EXPECT_LT(distance(lab, labOf(bytes, {0.0, high, 0.0})), 0.01);
    }
}

TEST(Gamut, ofYCbCrHasAnOriginButNoPrimaries)
{
    const QByteArray bytes = tableProfile(cmsSigYCbCrData, 2, [](const std::vector<double>& d) {
        return Lab{100 * d[0], -60 + 120 * d[1], -60 + 120 * d[2]};
    });
    const auto gamut = gamutOf(opened(bytes));
    EXPECT_TRUE(gamut.primaries().isEmpty());
    EXPECT_FALSE(gamut.outline().isEmpty());
    EXPECT_LT(distance(gamut.referenceLab(), {0, 0, 0}), 0.01);
    EXPECT_LT(distance(gamut.whitePoint(), {100, 0, 0}), 0.01);
}

TEST(Gamut, withoutDecorationHasTheSameSurface)
{
    const auto profile = openedFile(srgb());
    KVGamut::GamutObject plain;
    ASSERT_TRUE(plain.init(profile, KVVMRenderRelativeColorimetric, false, false, 40.0f, 9, 2, nullptr));
    EXPECT_TRUE(plain.primaries().isEmpty());
    EXPECT_TRUE(plain.outline().isEmpty());
    EXPECT_EQ(plain.referenceLab().size(), 3);
    EXPECT_TRUE(plain.faces() == gamutOf(profile, 9).faces());
}

// --- Grid and refinement --------------------------------------------------------------------------

TEST(Gamut, clampsTheGrid)
{
    const auto profile = openedFile(srgb());
    const std::vector<std::pair<int, int>> asked{{-1, 33}, {0, 33}, {1, 33}, {-2147483647, 33},
                                                 {2, 3},   {3, 3},  {17, 17}};
    for (const auto& [request, used] : asked)
        EXPECT_EQ(gamutOf(profile, request).report().gridPoints, used) << request;
    EXPECT_EQ(gamutOf(profile, 2147483647).report().gridPoints, 129);
}

TEST(Gamut, refinesEdgesLongerThanMaxEdge)
{
    const auto profile = openedFile(prophotoRgb());
    const auto compute = [&](float maxEdge, int refinements) {
        KVGamut::GamutObject gamut;
        EXPECT_TRUE(gamut.init(profile, KVVMRenderRelativeColorimetric, false, false, maxEdge, 3, refinements,
                               nullptr));
        return gamut;
    };
    const auto longest = [](const KVGamut::GamutObject& gamut) {
        double length = 0.0;
        for (const auto& f : slow::facesOf(gamut))
            for (std::size_t i = 0; i < 3; ++i) {
                const auto e = slow::minus(f[i], f[(i + 1) % 3]);
                length = std::max(length, std::hypot(e[0], e[1], e[2]));
            }
        return length;
    };
    const auto coarse = compute(40.0f, 0);
    const auto fine = compute(40.0f, 2);
    EXPECT_GT(longest(coarse), 100.0);
    EXPECT_LT(longest(fine), 0.5 * longest(coarse));
    EXPECT_GT(fine.faceCount(), coarse.faceCount());
    // More accurate, and still closed.
    EXPECT_LT(std::abs(fine.report().surfaceVolume - 2'880'355),
              0.5 * std::abs(coarse.report().surfaceVolume - 2'880'355));
    expectSound(fine, "refined");
    EXPECT_LE(longest(compute(40.0f, 4)), 40.0 + 30.0);
    EXPECT_TRUE(compute(1000.0f, 2).faces() == coarse.faces());
    EXPECT_TRUE(compute(std::numeric_limits<float>::quiet_NaN(), 2).faces() == coarse.faces());
    EXPECT_TRUE(compute(40.0f, -3).faces() == coarse.faces());
}

namespace {

// The volume of the mesh of 11 x 11 nodes on each face of the cube, by Gauss' theorem. A square is divided
// from the corner where both channels are lowest to the one where both are highest, or between the others.
double volumeOfElevenGrid(const QByteArray& profile, bool rising)
{
    const LabTransform transform(profile);
    double sum = 0.0;
    const auto lab = [&](int face, int i, int j) {
        std::vector<double> device(3, face / 3 == 0 ? 0.0 : 1.0);
        device[std::size_t(face + 1) % 3] = i / 10.0;
        device[std::size_t(face + 2) % 3] = j / 10.0;
        return transform(device).front();
    };
    for (int face = 0; face < 6; ++face)
        for (int i = 0; i < 10; ++i)
            for (int j = 0; j < 10; ++j) {
                const Lab p = lab(face, i, j), q = lab(face, i + 1, j), r = lab(face, i + 1, j + 1),
                          s = lab(face, i, j + 1);
                const double square = rising ? slow::determinant(p, q, r) + slow::determinant(p, r, s)
                                             : slow::determinant(p, q, s) + slow::determinant(q, r, s);
                sum += face / 3 == 0 ? -square : square;
            }
    return std::abs(sum) / 6.0;
}

} // namespace

TEST(ElevenGrid, isTheMeshOfTheDisplayStandard)
{
    QFile file(srgb());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    for (const auto& [construction, rising, published] :
         {std::tuple{KVGamut::Construction::Grid11Falling, false, 830792.0},
          std::tuple{KVGamut::Construction::Grid11Rising, true, 831680.0}}) {
        KVGamut::GamutObject gamut;
        ASSERT_TRUE(gamut.init(opened(bytes), {KVVMRenderRelativeColorimetric}, construction));
        const auto report = gamut.report();
        EXPECT_EQ(gamut.mesh().lab.size(), 602u);
        EXPECT_EQ(report.faceCount, 1200);
        EXPECT_EQ(report.gridPoints, 11);
        EXPECT_NEAR(report.volume, volumeOfElevenGrid(bytes, rising), 0.05);
        EXPECT_NEAR(report.volume, report.surfaceVolume, 0.05);
        EXPECT_NEAR(report.volume, published, 400.0); // of primaries with other digits
        EXPECT_NEAR(report.volume, 832781.0, report.volumeUncertainty);
        EXPECT_FALSE(gamut.outline().isEmpty());
    }
}

TEST(ElevenGrid, isDefinedForThreeChannelsOnly)
{
    KVGamut::GamutObject gamut;
    EXPECT_FALSE(gamut.init(openedFile(printerCmyk()), {}, KVGamut::Construction::Grid11Falling));
    ASSERT_TRUE(gamut.problem());
    EXPECT_EQ(gamut.problem()->code, KVProblemCode::NotThreeChannels);
    EXPECT_EQ(gamut.problem()->arguments, QStringList{QStringLiteral("4")});
}

TEST(ElevenGrid, canBeCancelled)
{
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("grid"));
    protocol->cancel();
    KVGamut::GamutObject gamut;
    EXPECT_FALSE(gamut.init(openedFile(srgb()), {}, KVGamut::Construction::Grid11Rising, &protocol));
    EXPECT_EQ(gamut.problem()->code, KVProblemCode::Cancelled);
}
