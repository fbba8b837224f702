// SPDX-License-Identifier: Apache-2.0
// The volumes that engine results are compared with: checked with solids whose volume is known in closed
// form, and with reference volumes of installed profiles.

#include "SlowGeometry.h"
#include "TestProfiles.h"
#include "devices/ColumnHull.h"
#include "devices/InkModel.h"
#include "devices/ProfileWriter.h"
#include "devices/Random.h"
#include "devices/RandomDevices.h"
#include "devices/TrueVolume.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>

using namespace kvdevices;

namespace {

using Vectors = std::vector<Point>;

TableMap mixer(const Point& start, const Vectors& vectors)
{
    return [=](const std::vector<double>& place) {
        Point lab = start;
        for (std::size_t c = 0; c < vectors.size(); ++c)
            lab = lab + place[c] * vectors[c];
        return lab;
    };
}

TableProfile profileOf(cmsColorSpaceSignature space, std::size_t channels, std::size_t nodes, TableMap map)
{
    TableProfile profile;
    profile.space = space;
    profile.type = TableType::Mpet;
    profile.nodes = std::vector<std::size_t>(channels, nodes);
    profile.map = std::move(map);
    return profile;
}

// The truth, and its error must be at most a share of it.
void expectVolume(const QByteArray& profile, double expected, double maxShare, const char* what)
{
    const TrueVolume truth = trueVolume(profile);
    EXPECT_NEAR(truth.volume, expected, maxShare * expected) << what;
    EXPECT_LE(std::abs(truth.volume - expected), 2.0 * truth.error) << what;
    EXPECT_LE(truth.error, maxShare * expected) << what;
}

const Vectors threeAxes{{40, 40, 0}, {20, -50, 20}, {10, 0, -60}};

// Up to the turning point and back.
double tent(double v, double turn)
{
    return v < turn ? v / turn : (1.0 - v) / (1.0 - turn);
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

} // namespace

TEST(ColumnHull, findsBothEndsOfAColumnThroughAnOctahedron)
{
    const Vectors octahedron{{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}};
    const auto column = columnOfHull(octahedron, 0.25, -0.125);
    ASSERT_TRUE(column);
    EXPECT_NEAR(column->high, 0.625, 1e-9);
    EXPECT_NEAR(column->low, -0.625, 1e-9);
    EXPECT_FALSE(columnOfHull(octahedron, 0.7, 0.7));
}

TEST(TrueVolume, ofAnAffineDeviceIsExact)
{
    for (bool isMirrored : {false, true}) {
        Vectors axes = threeAxes;
        if (isMirrored)
            std::swap(axes[0], axes[1]);
        expectVolume(written(profileOf(cmsSigRgbData, 3, 5, mixer({15, 0, 20}, axes))),
                     slow::zonotopeVolume(axes), 3e-5, "affine");
    }
}

TEST(TrueVolume, countsRepeatedlyReachedColoursOnce)
{
    for (double turn : {0.25, 0.5, 0.75}) {
        const TableMap map = [turn](const std::vector<double>& d) {
            return mixer({15, 0, 20}, threeAxes)({tent(d[0], turn), tent(d[1], turn), d[2]});
        };
        expectVolume(written(profileOf(cmsSigRgbData, 3, 9, map)), slow::zonotopeVolume(threeAxes), 2e-4,
                     "folded");
    }
}

TEST(TrueVolume, ofAThinSolidIsExact)
{
    const Vectors axes{{20, 10, 0}, {0, 20, 10}, {0.1, 0.1, -0.2}};
    expectVolume(written(profileOf(cmsSigRgbData, 3, 9, mixer({30, 0, 0}, axes))), slow::zonotopeVolume(axes),
                 1e-4, "thin");
}

TEST(TrueVolume, leavesOutFlatCells)
{
    const TableMap map = [](const std::vector<double>& d) {
        return mixer({15, 0, 20}, threeAxes)({std::max(0.0, 2.0 * d[0] - 1.0), d[1] * d[1], d[2]});
    };
    TableProfile profile = profileOf(cmsSigRgbData, 3, 9, map);
    profile.type = TableType::Mft1; // many points of a coarse lattice are in one plane
    const TrueVolume truth = trueVolume(written(profile));
    EXPECT_NEAR(truth.volume, slow::zonotopeVolume(threeAxes), 0.02 * truth.volume);
    EXPECT_LE(truth.error, 1e-3 * truth.volume);
}

TEST(TrueVolume, ofZonotopesOfFourToSevenInks)
{
    const std::pair<cmsColorSpaceSignature, std::size_t> spaces[] = {
        {cmsSigCmykData, 9}, {cmsSig5colorData, 5}, {cmsSig6colorData, 4}, {cmsSig7colorData, 3}};
    Random random(3);
    for (std::size_t inks = 4; inks <= 7; ++inks) {
        Vectors vectors;
        for (std::size_t i = 0; i < inks; ++i)
            vectors.push_back({random.between(-12, -1), random.between(-40, 40), random.between(-40, 40)});
        const auto [space, nodes] = spaces[inks - 4];
        expectVolume(written(profileOf(space, inks, nodes, mixer({97, 0, 0}, vectors))),
                     slow::zonotopeVolume(vectors), 1e-3, qPrintable(QString::number(inks)));
    }
}

TEST(TrueVolume, includesColoursOfInteriorInks)
{
    // the last ink is a detour: the solid is largest where it is in the middle of its range
    const TableMap map = [](const std::vector<double>& d) {
        return mixer({15, 0, 20}, threeAxes)({d[0] * tent(d[3], 0.5), d[1], d[2]});
    };
    expectVolume(written(profileOf(cmsSigCmykData, 4, 9, map)), slow::zonotopeVolume(threeAxes), 1e-3,
                 "interior");
}

// What an ink prints beyond its peak it prints before the peak, too.
TEST(TrueVolume, isTheSameForInksThatTurnBack)
{
    constexpr Effort effort{10'000};
    const auto press = [](double fall) {
        Random random(2);
        InkModel model(4, random);
        model.invert(0.875, fall);
        TableProfile profile =
            profileOf(cmsSigCmykData, 4, 9, [model](const auto& d) { return model.lab(d); });
        profile.type = TableType::Mft2;
        return written(profile);
    };
    const TrueVolume monotone = trueVolume(press(0.0), effort);
    for (double fall : {0.01, 0.06}) {
        const TrueVolume inverting = trueVolume(press(fall), effort);
        EXPECT_NEAR(inverting.volume, monotone.volume, 5e-4 * monotone.volume) << fall;
    }
}

// The image of a bilinear map is between a saddle surface and the planes around it.
TEST(TrueVolume, followsASaddle)
{
    const TableMap map = [](const std::vector<double>& d) {
        return Point{20 + d[3] * 20 + d[0] * d[1] * 30, -30 + 60 * d[0], -30 + 60 * d[1] + 1e-3 * d[2]};
    };
    expectVolume(written(profileOf(cmsSigCmykData, 4, 3, map)), 60.0 * 60.0 * 20.0, 1e-3, "saddle");
}

TEST(TrueVolume, ofInstalledProfilesAreTheReferences)
{
    const struct
    {
        QString path;
        double reference, error;
    } profiles[] = {{testprofiles::srgb(), 832'781, 17},
                    {testprofiles::adobeRgb(), 1'208'747, 24},
                    {testprofiles::prophotoRgb(), 2'880'355, 58},
                    {testprofiles::cieRgb(), 1'726'111, 35},
                    {testprofiles::printerCmyk(), 411'424, 103}};
    for (const auto& profile : profiles) {
        const TrueVolume truth = trueVolume(bytesOf(profile.path));
        EXPECT_NEAR(truth.volume, profile.reference, profile.error + truth.error) << qPrintable(profile.path);
        EXPECT_LE(truth.error, 5e-4 * truth.volume) << qPrintable(profile.path);
    }
}

TEST(RandomDevices, areTheSameForTheSameSeed)
{
    const QByteArray first = deviceProfile("rgb-noise", 3);
    EXPECT_FALSE(first.isEmpty());
    EXPECT_EQ(testprofiles::labOf(first, {0.3, 0.6, 0.9}),
              testprofiles::labOf(deviceProfile("rgb-noise", 3), {0.3, 0.6, 0.9}));
    EXPECT_NE(testprofiles::labOf(first, {0.3, 0.6, 0.9}),
              testprofiles::labOf(deviceProfile("rgb-noise", 4), {0.3, 0.6, 0.9}));
    EXPECT_TRUE(deviceProfile("unknown", 1).isEmpty());
}
