// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/PointLayer.h"

#include "app/support/ColourVision.h"
#include "app/support/TestPictures.h"
#include "desktop/models/GamutQueue.h"
#include "desktop/panels/Inspector.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/points/Lab.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QColorSpace>
#include <QtGui/QImage>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include <array>
#include <cmath>

namespace {

using kvtest::spinUntil;

// Positions inside sRGB, on its surface (its white), and outside.
constexpr const char* threePoints = "name,L,a,b\ngrey,50,0,0\npaper,100,0,0\nlaser,60,-120,90\n";

class Points : public testing::Test
{
protected:
    QString write(const QString& name, const QByteArray& bytes)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    bool finish()
    {
        return spinUntil([this] { return !loader.isBusy() && points.isComplete(); });
    }

    double share(Side side) { return points.share(0, side).value_or(-1.0); }

    QTemporaryDir folder;
    GamutListModel gamuts;
    GamutQueue loader{gamuts};
    KVGamut3DViewer viewer; // never shown
    PointLayer points{gamuts, viewer};
    QAbstractItemModelTester tester{&points, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy failures{&points, &PointLayer::failed};
};

TEST_F(Points, areJudgedByTheActiveGamut)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    points.open(write(QStringLiteral("three.csv"), threePoints));
    ASSERT_TRUE(finish());
    EXPECT_NEAR(share(Side::Inside), 1.0 / 3, 1e-9);
    EXPECT_NEAR(share(Side::Edge), 1.0 / 3, 1e-9);
    EXPECT_NEAR(share(Side::Outside), 1.0 / 3, 1e-9);
}

TEST_F(Points, areJudgedAgainByAnotherActiveGamut)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    gamuts.add(QStringLiteral("ProPhoto"), {}, {});
    // inside ProPhoto, outside sRGB
    points.open(write(QStringLiteral("one.csv"), "L,a,b\n60,-80,60\n"));
    ASSERT_TRUE(finish());
    EXPECT_EQ(share(Side::Outside), 1.0);
    gamuts.setActiveRow(1);
    ASSERT_TRUE(finish());
    EXPECT_EQ(share(Side::Inside), 1.0);
}

TEST_F(Points, areAtTheEdgeWithinTheTolerance)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    points.open(write(QStringLiteral("three.csv"), threePoints));
    ASSERT_TRUE(finish());
    points.setTolerance(60.0f); // larger than the distance of the grey from the surface
    EXPECT_NEAR(share(Side::Inside), 0.0, 1e-9);
    points.setTolerance(0.0f);
    EXPECT_LE(share(Side::Edge), 1.0 / 3);
}

TEST_F(Points, areDrawnAsOneMarkerSetForEachSide)
{
    points.open(write(QStringLiteral("three.csv"), threePoints));
    ASSERT_TRUE(finish());
    EXPECT_EQ(viewer.pointSet().size(), 1); // not classified yet
    EXPECT_TRUE(viewer.markerSet().isEmpty());
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    ASSERT_TRUE(finish());
    EXPECT_TRUE(viewer.pointSet().isEmpty());
    EXPECT_EQ(viewer.markerSet().size(), 3);
    gamuts.remove(0);
    ASSERT_TRUE(finish());
    EXPECT_EQ(viewer.pointSet().size(), 1);
    EXPECT_TRUE(viewer.markerSet().isEmpty());
}

TEST_F(Points, leaveOnlyTheMarkersOfOthersBehind)
{
    viewer.addMarkerSet(QStringLiteral("of another"), KVGamut3DViewer::Sphere, {}, 1.0f, 1.0f);
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    points.open(write(QStringLiteral("three.csv"), threePoints));
    points.open(write(QStringLiteral("one.csv"), "L,a,b\n60,-120,90\n"));
    ASSERT_TRUE(finish());
    EXPECT_EQ(viewer.markerSet().size(), 4);
    points.remove(0);
    EXPECT_EQ(viewer.markerSet().size(), 2); // outside
    points.clear();
    EXPECT_EQ(viewer.markerSet(), QStringList{QStringLiteral("of another")});
}

TEST_F(Points, changeTheirSetsWithTheTolerance)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    points.open(write(QStringLiteral("three.csv"), threePoints));
    ASSERT_TRUE(finish());
    points.setTolerance(1000.0f);
    ASSERT_EQ(viewer.markerSet().size(), 1);
    EXPECT_TRUE(points.placeOf(viewer.markerSet().constFirst(), 2));
}

/// Two colours inside sRGB in turn: @p atEdge of them are its white, and the others grey.
QByteArray manyColours(int count, int atEdge)
{
    QByteArray csv = "L,a,b\n";
    for (int i = 0; i < count; ++i)
        csv += i < atEdge ? "100,0,0\n" : "50,0,0\n";
    return csv;
}

TEST_F(Points, haveOneShapeIfThereAreTooMany)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    const auto isShapedWith = [&](qsizetype count, qsizetype atEdge) {
        points.open(write(QStringLiteral("many.csv"),
                          manyColours(static_cast<int>(count), static_cast<int>(atEdge))));
        EXPECT_TRUE(finish());
        EXPECT_NE(viewer.markerSet().isEmpty(), viewer.pointSet().isEmpty());
        return viewer.pointSet().isEmpty();
    };
    EXPECT_TRUE(isShapedWith(PointLayer::maxMarkers, 0));
    EXPECT_FALSE(isShapedWith(PointLayer::maxMarkers + 1, 0));
    EXPECT_TRUE(isShapedWith(PointLayer::maxMarkers, PointLayer::maxCubes));
    EXPECT_FALSE(isShapedWith(PointLayer::maxMarkers, PointLayer::maxCubes + 1));
    EXPECT_EQ(viewer.pointSet().size(), 2); // a set for each side: they still differ in colour
}

/// A sheet in colours of Adobe RGB: half of it grey, a quarter and an eighth greens, an eighth a pale yellow.
QImage fourColors()
{
    QImage picture(80, 40, QImage::Format_RGB32);
    picture.setColorSpace(QColorSpace::fromIccProfile(BuiltInProfiles::profile(QStringLiteral("AdobeRGB"))));
    picture.fill(QColor(128, 128, 128));
    for (int y = 0; y < 40; ++y)
        for (int x = 40; x < 80; ++x)
            picture.setPixelColor(x, y,
                                  x < 60   ? QColor(0, 255, 0)
                                  : x < 70 ? QColor(200, 200, 90)
                                           : QColor(0, 200, 0));
    return picture;
}

TEST_F(Points, ofAPictureAreCountedOverAllPixels)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    const QString file = folder.filePath(QStringLiteral("sheet.png"));
    ASSERT_TRUE(fourColors().save(file));
    points.open(file);
    ASSERT_TRUE(finish());
    // the greens of Adobe RGB are far outside sRGB
    EXPECT_NEAR(share(Side::Inside), 0.5 + 0.125, 1e-9);
    EXPECT_NEAR(share(Side::Edge), 0.0, 1e-9);
    EXPECT_NEAR(share(Side::Outside), 0.25 + 0.125, 1e-9);
    const PhotoCheck* check = points.photo(0);
    ASSERT_NE(check, nullptr);
    EXPECT_GT(check->de00.max, check->de00.mean);
    const QString tip = points.index(0, PointLayer::OutsideShare).data(Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains(QLocale().toString(3200))) << tip.toStdString();
}

/// Of neutral sRGB.
double lightnessOf(int value)
{
    const double encoded = value / 255.0;
    const double y = encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
    return y > 216.0 / 24389.0 ? 116.0 * std::cbrt(y) - 16.0 : y * 24389.0 / 27.0;
}

TEST_F(Points, ofAPictureAreNotJudgedByTheCellsThatAreDrawn)
{
    constexpr float tolerance = 9.0f;
    points.setTolerance(tolerance);
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    QImage greys(256, 2, QImage::Format_RGB32);
    for (int x = 0; x < 256; ++x)
        for (int y = 0; y < 2; ++y)
            greys.setPixelColor(x, y, QColor(x, x, x));
    const QString file = folder.filePath(QStringLiteral("greys.png"));
    ASSERT_TRUE(greys.save(file));
    points.open(file);
    ASSERT_TRUE(finish());
    const auto isEdge = [this](const KVGamut::LabPoint& lab) {
        const std::array<float, 3> values{lab.L, lab.a, lab.b};
        return sideOf(gamuts.at(0).gamut.nearest(values.data()).distance, tolerance) == Side::Edge;
    };
    double expected = 0.0, ofCells = 0.0;
    for (int value = 0; value < 256; ++value)
        expected += isEdge({static_cast<float>(lightnessOf(value)), 0.0f, 0.0f}) ? 1.0 / 256.0 : 0.0;
    for (const MeasuredPoint& cell : points.set(0).points)
        ofCells += isEdge(cell.lab) ? cell.weight : 0.0;
    EXPECT_NEAR(share(Side::Edge), expected, 1.0 / 256.0);
    EXPECT_GT(std::abs(ofCells - expected), 3.0 / 256.0); // so that the test can tell one from the other
}

TEST_F(Points, ofAPictureAreCheckedAgainForAnotherGamutOrTolerance)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    gamuts.add(QStringLiteral("ProPhoto"), {}, {});
    const QString file = folder.filePath(QStringLiteral("sheet.png"));
    ASSERT_TRUE(fourColors().save(file));
    points.open(file);
    ASSERT_TRUE(finish());
    points.setTolerance(100.0f);
    ASSERT_TRUE(finish());
    EXPECT_NEAR(share(Side::Edge), 1.0, 1e-9);
    points.setTolerance(1.0f);
    gamuts.setActiveRow(1);
    ASSERT_TRUE(finish());
    EXPECT_NEAR(share(Side::Inside), 1.0, 1e-9);
}

TEST(PointColours, areDistinctInEveryColourVision)
{
    for (const auto& vision : kvtest::colourVisions()) {
        const QColor inside = PointLayer::colorOf(Side::Inside), edge = PointLayer::colorOf(Side::Edge),
                     outside = PointLayer::colorOf(Side::Outside);
        EXPECT_GT(kvtest::seenDifference(inside, edge, vision), 15.0) << vision.name;
        EXPECT_GT(kvtest::seenDifference(inside, outside, vision), 15.0) << vision.name;
        EXPECT_GT(kvtest::seenDifference(edge, outside, vision), 15.0) << vision.name;
    }
}

TEST_F(Points, thatCannotBeReadAreRemovedWithAProblem)
{
    const QString file = write(QStringLiteral("bad.csv"), "name,colour\na,b\n");
    points.open(file);
    points.open(folder.filePath(QStringLiteral("missing.csv")));
    ASSERT_TRUE(spinUntil([this] { return failures.count() == 2; }));
    EXPECT_EQ(points.rowCount(), 0);
    EXPECT_EQ(failures[0][0].value<Problem>().subject, file);
}

TEST_F(Points, areReadAgainWhenTheFileIsOpenedAgain)
{
    const QString file = write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n");
    points.open(file);
    ASSERT_TRUE(finish());
    write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n60,0,0\n");
    points.open(file);
    ASSERT_TRUE(finish());
    ASSERT_EQ(points.rowCount(), 1);
    EXPECT_EQ(points.set(0).points.size(), 2);
}

TEST_F(Points, cancelTheWorkOnFilesThatAreRemoved)
{
    const QString file = write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n");
    const auto workStartedBy = [this, &file] {
        points.open(file);
        return KVCompletionProtocol::runningTasks().last();
    };
    const KVCompletionProtocolPtr replaced = workStartedBy();
    const KVCompletionProtocolPtr removed = workStartedBy();
    EXPECT_EQ(removed->name(), QStringLiteral("p.csv"));
    EXPECT_TRUE(replaced->isCancelled());
    EXPECT_FALSE(removed->isCancelled());
    points.remove(0);
    EXPECT_TRUE(removed->isCancelled());
    const KVCompletionProtocolPtr cleared = workStartedBy();
    points.clear();
    EXPECT_TRUE(cleared->isCancelled());
    EXPECT_TRUE(finish());
    EXPECT_EQ(failures.count(), 0);
}

TEST_F(Points, areFoundByTheirHue)
{
    // hues 45, 49 (1.4 from the leaf at 45) and 225 degrees
    points.open(write(QStringLiteral("hues.csv"), "L,a,b\n60,20,20\n50,15.1,13.1\n40,-20,-20\n50,0.5,0\n"));
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    ASSERT_TRUE(finish());
    const auto lightness = [this](double hue) {
        QList<float> all;
        for (const PointLayer::Judged& point : points.near({SlicePlane::Hue, hue}, 2.0))
            all.append(point.point->lab.L);
        return all;
    };
    EXPECT_EQ(lightness(45.0), (QList<float>{60.0f, 50.0f, 50.0f})); // greys are in every leaf
    EXPECT_EQ(lightness(225.0), (QList<float>{40.0f, 50.0f}));
    EXPECT_EQ(lightness(135.0), QList<float>{50.0f});
}

TEST_F(Points, areFoundByTheirLightness)
{
    points.open(write(QStringLiteral("two.csv"), "L,a,b\n60,-80,60\n90,0,0\n"));
    points.open(write(QStringLiteral("one.csv"), "L,a,b\n62,0,0\n"));
    ASSERT_TRUE(finish());
    EXPECT_TRUE(points.near({SlicePlane::Lightness, 60.0}, 5.0).empty()); // without a gamut
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    gamuts.add(QStringLiteral("ProPhoto"), {}, {});
    ASSERT_TRUE(finish());
    const auto inSrgb = points.near({SlicePlane::Lightness, 60.0}, 5.0);
    ASSERT_EQ(inSrgb.size(), 2u);
    EXPECT_EQ(inSrgb[0].point->lab.a, -80.0f);
    EXPECT_FALSE(inSrgb[0].isInside);
    EXPECT_TRUE(inSrgb[1].isInside);
    EXPECT_EQ(points.near({SlicePlane::Lightness, 60.0}, 1.0).size(), 1u);
    gamuts.setActiveRow(1);
    for (const PointLayer::Judged& point : points.near({SlicePlane::Lightness, 60.0}, 5.0))
        EXPECT_TRUE(point.isInside) << "what sRGB says does not count any more";
    ASSERT_TRUE(finish());
    const auto inProPhoto = points.near({SlicePlane::Lightness, 60.0}, 5.0);
    ASSERT_EQ(inProPhoto.size(), 2u);
    EXPECT_TRUE(inProPhoto[0].isInside);
}

class PlacesOfPoints : public Points, public testing::WithParamInterface<bool>
{
};
INSTANTIATE_TEST_SUITE_P(, PlacesOfPoints, testing::Bool());

TEST_P(PlacesOfPoints, areFoundInTheirSets)
{
    if (GetParam())
        gamuts.add(QStringLiteral("sRGB"), {}, {});
    points.open(write(QStringLiteral("three.csv"), threePoints));
    points.open(write(QStringLiteral("one.csv"), "L,a,b\n10,20,30\n"));
    ASSERT_TRUE(finish());
    int found = 0;
    const QStringList sets = viewer.pointSet() + viewer.markerSet();
    for (const QString& set : sets) {
        for (int index = 0;; ++index) {
            const auto place = points.placeOf(set, index);
            if (!place)
                break;
            const MeasuredPoint& point = points.set(place->row).points[place->index];
            EXPECT_EQ(point.lab.L == 10.0f, place->row == 1) << index;
            ++found;
        }
        EXPECT_FALSE(points.placeOf(set, -1));
    }
    EXPECT_EQ(found, 4);
    EXPECT_FALSE(points.placeOf(QStringLiteral("unknown"), 0));
}

TEST_F(Points, areDescribedByName)
{
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    points.open(write(QStringLiteral("laser.csv"), "name,L,a,b\nlaser,60,-120,90\n"));
    ASSERT_TRUE(finish());
    ASSERT_EQ(viewer.markerSet().size(), 1);
    KVHit hit;
    hit.kind = KVHit::Kind::Marker;
    hit.id = viewer.markerSet().constFirst();
    hit.index = 0;
    hit.lab = QVector3D(60, -120, 90);
    const Inspector inspector(gamuts, points);
    const auto finding = inspector.describe(hit);
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->name, QStringLiteral("laser"));
    EXPECT_EQ(finding->lab, hit.lab);
    EXPECT_TRUE(finding->text.contains(QStringLiteral("C* 150.0")));
    EXPECT_TRUE(finding->text.contains(QStringLiteral("outside sRGB")));
    hit.index = 1;
    EXPECT_FALSE(inspector.describe(hit));
    hit.index = 0;
    hit.id = QStringLiteral("of another");
    EXPECT_FALSE(inspector.describe(hit));
    EXPECT_FALSE(inspector.describe(KVHit()));
}

TEST_F(Points, areDescribedWithoutAGamut)
{
    points.open(write(QStringLiteral("laser.csv"), "name,L,a,b\nlaser,60,-120,90\n"));
    ASSERT_TRUE(finish());
    KVHit hit;
    hit.kind = KVHit::Kind::Point;
    hit.id = viewer.pointSet().constFirst();
    hit.index = 0;
    const auto finding = Inspector(gamuts, points).describe(hit);
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->name, QStringLiteral("laser"));
}

TEST(SideOfAGamut, followsFromDistanceAndTolerance)
{
    EXPECT_EQ(sideOf(-1.1f, 1.0f), Side::Inside);
    EXPECT_EQ(sideOf(-1.0f, 1.0f), Side::Edge);
    EXPECT_EQ(sideOf(1.0f, 1.0f), Side::Edge);
    EXPECT_EQ(sideOf(1.1f, 1.0f), Side::Outside);
    EXPECT_EQ(sideOf(std::numeric_limits<float>::infinity(), 1.0f), Side::Outside);
}

} // namespace
