// SPDX-License-Identifier: Apache-2.0
// Compares surfaces with device colours that Little CMS converts independently: how many of those are
// outside, and how much volume their own surface encloses.

#include "SlowGeometry.h"
#include "TestProfiles.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <algorithm>
#include <cmath>
#include <random>

using namespace testprofiles;

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

// --- Device colours of every kind ------------------------------------------------------------------

void addRandom(std::vector<double>& colours, std::size_t channels, int count)
{
    std::mt19937 random(31);
    std::uniform_real_distribution<double> any(0.0, 1.0);
    for (int i = 0; i < count * static_cast<int>(channels); ++i)
        colours.push_back(any(random));
}

// All corners, and samples on edges and two-dimensional faces at positions that no grid has.
void addEnds(std::vector<double>& colours, std::size_t channels, int count)
{
    std::mt19937 random(37);
    constexpr double golden = 0.6180339887;
    for (unsigned corner = 0; corner < 1u << channels && corner < 4096; ++corner)
        for (std::size_t c = 0; c < channels; ++c)
            colours.push_back(corner >> c & 1u);
    for (int i = 0; i < count; ++i) {
        std::vector<double> colour(channels);
        for (double& v : colour)
            v = random() & 1u;
        colour[random() % channels] = std::fmod(i * golden, 1.0);
        if (i % 4 != 0) // every fourth sample is on an edge
            colour[random() % channels] = std::fmod(i * golden * golden * 1.7, 1.0);
        colours.insert(colours.end(), colour.begin(), colour.end());
    }
}

struct Escapes
{
    int colours = 0;
    int far = 0; // outside by more than 0.5 dE
    double maxRadius = 0.0;
};

Escapes escapesFrom(const KVGamut::GamutObject& gamut, const std::vector<Lab>& colours)
{
    Escapes escapes;
    escapes.colours = static_cast<int>(colours.size());
    for (const Lab& lab : colours) {
        const float place[] = {float(lab[0]), float(lab[1]), float(lab[2])};
        if (gamut.isInside(place))
            continue;
        const double distance = double(gamut.nearest(place).distance);
        escapes.far += distance > 0.5;
        escapes.maxRadius = std::max(escapes.maxRadius, distance);
    }
    return escapes;
}

void expectContained(const QByteArray& profile, KVGamut::Method method, const char* what,
                     KVVMRenderType intent = KVVMRenderRelativeColorimetric, int count = 20'000)
{
    const auto gamut = gamutOf(opened(profile), -1, intent);
    ASSERT_EQ(gamut.method(), method) << what << ": " << testing::PrintToString(gamut.problem());
    const LabTransform transform(profile, static_cast<cmsUInt32Number>(intent));
    const auto escapes = [&](const auto& add) {
        std::vector<double> colours;
        add(colours, transform.channels(), count);
        return escapesFrom(gamut, transform(colours));
    };
    const Escapes ofAny = escapes(addRandom), ofEnds = escapes(addEnds);
    EXPECT_LE(ofAny.far * 1000, ofAny.colours) << what;
    EXPECT_LE(ofAny.maxRadius, 1.5) << what;
    EXPECT_LE(ofEnds.maxRadius, 1.5) << what;
    // A lattice surface cuts off sharp edges; in solids with sharp edges these samples are exactly there.
    if (method != KVGamut::Method::LatticeSurface) {
        EXPECT_LE(ofEnds.far * 1000, ofEnds.colours) << what;
    }
}

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

Lab ringPlace(double low, double high, double inner, double outer, double angle, double height, double turn,
              double radius)
{
    const double r = inner + (outer - inner) * radius;
    return {low + (high - low) * height, r * std::cos(angle * turn), r * std::sin(angle * turn)};
}

} // namespace

TEST(Containment, ofEveryInstalledProfilesColours)
{
    int computed = 0;
    for (const QString& path : installedProfiles()) {
        const auto gamut = gamutOf(openedFile(path), 5);
        if (gamut.faceCount() == 0)
            continue;
        ++computed;
        expectContained(bytesOf(path),
                        gamut.report().channels == 3 ? KVGamut::Method::DeviceMesh
                                                     : KVGamut::Method::RadialHull,
                        qPrintable(path));
    }
    EXPECT_GE(computed, 25);
}

TEST(Containment, ofAPrintersColoursUnderEveryIntent)
{
    for (auto intent : {KVVMRenderPerceptual, KVVMRenderRelativeColorimetric, KVVMRenderSaturation,
                        KVVMRenderAbsoluteColorimetric})
        expectContained(bytesOf(printerCmyk()), KVGamut::Method::RadialHull, "printer", intent);
}

TEST(Containment, ofDeviceMeshes)
{
    const std::vector<Lab> vectors{{50, 40, 0}, {20, -60, 20}, {10, 0, -70}};
    expectContained(tableProfile(cmsSigRgbData, 2, mixer({10, 5, 20}, vectors)), KVGamut::Method::DeviceMesh,
                    "affine");
    expectContained(tableProfile(cmsSigRgbData, 33,
                                 [](const std::vector<double>& d) {
                                     return ringPlace(20, 80, 20, 50, 1.5 * M_PI, d[0], d[1], d[2]);
                                 }),
                    KVGamut::Method::DeviceMesh, "crescent");
}

TEST(Containment, ofRadialHulls)
{
    const std::vector<Lab> inks{{-9, -30, -20}, {-10, 35, -5}, {-4, -3, 45},  {-9, 2, 3},   {-6, 20, 25},
                                {-7, -25, 12},  {-5, 9, -28},  {-3, -9, -12}, {-2, 14, 6},  {-3, -6, 17},
                                {-4, -15, 1},   {-2, 7, -9},   {-3, 11, -14}, {-1, -4, -6}, {-2, 3, 9}};
    const auto of = [&inks](std::ptrdiff_t n) {
        return mixer({97, 0, 0}, std::vector<Lab>(inks.begin(), inks.begin() + n));
    };
    expectContained(tableProfile(cmsSigCmykData, 2, of(4)), KVGamut::Method::RadialHull, "four inks");
    expectContained(tableProfile(cmsSig5colorData, 2, of(5)), KVGamut::Method::RadialHull, "five inks");
    expectContained(tableProfile(cmsSig6colorData, 2, of(6)), KVGamut::Method::RadialHull, "six inks");
    expectContained(tableProfile(cmsSig8colorData, 2, of(8)), KVGamut::Method::RadialHull, "eight inks");
    expectContained(tableProfile(cmsSig10colorData, 2, of(10)), KVGamut::Method::RadialHull, "ten inks");
    for (const auto& [space, n] : {std::pair{cmsSig12colorData, 12}, {cmsSig15colorData, 15}})
        expectContained(tableProfile(space, 2, of(n)), KVGamut::Method::RadialHull, "many inks",
                        KVVMRenderRelativeColorimetric, 1000);
    expectContained(
        tableProfile(
            cmsSigYCbCrData, 33,
            [](const std::vector<double>& d) {
                return Lab{10 + 80 * d[0], -40 + 80 * d[1], 60.0 * (1.0 - 4.0 * (d[2] - 0.5) * (d[2] - 0.5))};
            }),
        KVGamut::Method::RadialHull, "folded");
}

TEST(Containment, ofLatticeSurfaces)
{
    expectContained(tableProfile(cmsSigRgbData, 65,
                                 [](const std::vector<double>& d) {
                                     return ringPlace(20, 80, 20, 60, 3.0 * M_PI, d[0], d[1], d[2]);
                                 }),
                    KVGamut::Method::LatticeSurface, "wound");
    expectContained(tableProfile(cmsSigCmykData, 17,
                                 [](const std::vector<double>& d) {
                                     return ringPlace(20, 80, 20, 50, 1.5 * M_PI, 0.5 * (d[0] + d[3]), d[1],
                                                      d[2]);
                                 }),
                    KVGamut::Method::LatticeSurface, "crescent of four");
    expectContained(tableProfile(cmsSig5colorData, 9,
                                 [](const std::vector<double>& d) {
                                     return ringPlace(20, 80, 20, 50, 1.5 * M_PI, 0.5 * (d[0] + d[3]), d[1],
                                                      0.7 * d[2] + 0.3 * d[4]);
                                 }),
                    KVGamut::Method::LatticeSurface, "crescent of five");
}

// --- Volume ----------------------------------------------------------------------------------------

namespace {

// Gauss' theorem over the image of the device cube's surface at evenly spaced nodes: the volume of the gamut
// if the map does not fold.
double surfaceIntegral(const LabTransform& transform, int nodes)
{
    double sum = 0.0;
    const int n = nodes;
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (int end = 0; end < 2; ++end) {
            std::vector<double> device;
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) {
                    std::array<double, 3> colour{};
                    colour[axis] = end;
                    colour[(axis + 1) % 3] = double(i) / (n - 1);
                    colour[(axis + 2) % 3] = double(j) / (n - 1);
                    device.insert(device.end(), colour.begin(), colour.end());
                }
            const std::vector<Lab> lab = transform(device);
            const auto at = [&](int i, int j) { return lab[static_cast<std::size_t>(i * n + j)]; };
            double part = 0.0;
            for (int i = 0; i + 1 < n; ++i)
                for (int j = 0; j + 1 < n; ++j)
                    part += slow::determinant(at(i, j), at(i + 1, j), at(i + 1, j + 1)) +
                            slow::determinant(at(i, j), at(i + 1, j + 1), at(i, j + 1));
            sum += end == 0 ? -part : part;
        }
    return std::abs(sum) / 6.0;
}

struct Reference
{
    double volume;
    double doubt;
};

// The error is proportional to the square of the step. The difference to the same extrapolation from grids
// twice as coarse is an estimate of the remaining error.
Reference referenceVolume(const LabTransform& transform)
{
    const double coarse = surfaceIntegral(transform, 65), middle = surfaceIntegral(transform, 129),
                 fine = surfaceIntegral(transform, 257);
    const auto extrapolated = [](double half, double whole) { return whole + (whole - half) / 3.0; };
    const double volume = extrapolated(middle, fine);
    return {volume, std::abs(volume - extrapolated(coarse, middle))};
}

} // namespace

TEST(Volume, ofInstalledThreeChannelProfilesIsWithinItsUncertainty)
{
    int computed = 0;
    for (const QString& path : installedProfiles()) {
        const auto profile = openedFile(path);
        if (gamutOf(profile, 5).report().channels != 3)
            continue;
        ++computed;
        const Reference reference = referenceVolume(LabTransform(bytesOf(path)));
        for (int grid : {17, 33, 65}) {
            const auto report = gamutOf(profile, grid).report();
            EXPECT_LE(std::abs(report.volume - reference.volume), report.volumeUncertainty + reference.doubt)
                << qPrintable(path) << " grid " << grid;
            EXPECT_LT(report.volumeUncertainty, 0.005 * report.volume) << qPrintable(path);
            EXPECT_LT(reference.doubt, 0.25 * report.volumeUncertainty)
                << qPrintable(path) << " grid " << grid;
        }
        EXPECT_NEAR(gamutOf(profile).volume(), reference.volume, 0.0005 * reference.volume + reference.doubt)
            << qPrintable(path);
    }
    EXPECT_GE(computed, 25);
}
