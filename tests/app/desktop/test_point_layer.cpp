// SPDX-License-Identifier: Apache-2.0
#include "desktop/models/PointLayer.h"

#include "app/support/ColourVision.h"
#include "app/support/TestPictures.h"
#include "desktop/models/GamutQueue.h"
#include "desktop/panels/Inspector.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/points/Lab.h"
#include "model/points/PicturePoints.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>
#include <QtGui/QColorSpace>
#include <QtGui/QImage>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include <array>
#include <cmath>
#include <numeric>

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

TEST_F(Points, areDrawnInTheColourOfTheirSide)
{
    points.open(write(QStringLiteral("three.csv"), threePoints));
    ASSERT_TRUE(finish());
    EXPECT_EQ(viewer.pointSet().size(), 1); // not classified yet
    gamuts.add(QStringLiteral("sRGB"), {}, {});
    ASSERT_TRUE(finish());
    EXPECT_EQ(viewer.pointSet().size(), 3);
    points.clear();
    EXPECT_TRUE(viewer.pointSet().isEmpty());
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

TEST_F(Points, areFoundByTheirPlaceInThePointSets)
{
    points.open(write(QStringLiteral("three.csv"), threePoints));
    points.open(write(QStringLiteral("one.csv"), "L,a,b\n10,20,30\n"));
    ASSERT_TRUE(finish());
    int found = 0;
    const QStringList sets = viewer.pointSet();
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
    ASSERT_EQ(viewer.pointSet().size(), 1);
    KVHit hit;
    hit.kind = KVHit::Kind::Point;
    hit.id = viewer.pointSet().constFirst();
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
    EXPECT_FALSE(inspector.describe(KVHit()));
}

TEST(SideOfAGamut, followsFromDistanceAndTolerance)
{
    EXPECT_EQ(sideOf(-1.1f, 1.0f), Side::Inside);
    EXPECT_EQ(sideOf(-1.0f, 1.0f), Side::Edge);
    EXPECT_EQ(sideOf(1.0f, 1.0f), Side::Edge);
    EXPECT_EQ(sideOf(1.1f, 1.0f), Side::Outside);
    EXPECT_EQ(sideOf(std::numeric_limits<float>::infinity(), 1.0f), Side::Outside);
}

TEST(GatheredColours, haveTheWeightOfTheirColours)
{
    std::vector<LabCells::Cell> colours{{{50.5f, 10.5f, 10.5f}, 30}};
    for (int i = 0; i < 10; ++i)
        colours.push_back({{80.5f + 0.1f * static_cast<float>(i), -20.5f, 0.5f}, 1});
    const auto points = gatherColours(colours, 4.0f, 100);
    ASSERT_EQ(points.size(), 2);
    EXPECT_NEAR(points[0].weight, 0.75, 1e-12);
    EXPECT_NEAR(points[1].weight, 0.25, 1e-12);
    EXPECT_NEAR(points[1].lab.L, 80.95f, 1e-3f); // the mean of the colours in the cell
}

TEST(GatheredColours, areAtMostTheMaximum)
{
    std::vector<LabCells::Cell> colours;
    for (int L = 0; L < 100; L += 5)
        for (int a = -100; a < 100; a += 10)
            colours.push_back({{static_cast<float>(L), static_cast<float>(a), 0.0f}, 1});
    const auto points = gatherColours(colours, 1.0f, 50);
    EXPECT_LE(points.size(), 50);
    EXPECT_GT(points.size(), 10);
    const double all = std::accumulate(points.begin(), points.end(), 0.0,
                                       [](double sum, const MeasuredPoint& p) { return sum + p.weight; });
    EXPECT_NEAR(all, 1.0, 1e-9);
}

class PicturePixels : public testing::Test
{
protected:
    QString save(const QImage& picture)
    {
        const QString path = folder.filePath(QStringLiteral("picture.png"));
        EXPECT_TRUE(picture.save(path));
        return path;
    }

    static QImage red(int width, int height)
    {
        QImage picture(width, height, QImage::Format_RGB32);
        picture.fill(QColor(255, 0, 0));
        return picture;
    }

    QTemporaryDir folder;
};

TEST_F(PicturePixels, areConvertedThroughTheEmbeddedProfile)
{
    QImage picture = red(4, 4);
    picture.setColorSpace(QColorSpace::fromIccProfile(BuiltInProfiles::profile(QStringLiteral("AdobeRGB"))));
    const PointSet set = readPoints(save(picture)).value();
    EXPECT_FALSE(set.note);
    ASSERT_EQ(set.points.size(), 1);
    // Lab (D50) of Adobe RGB's red, from its published primaries
    EXPECT_LT((vectorOf(set.points[0].lab) - QVector3D(63.27f, 90.38f, 78.16f)).length(), 1.0f);
}

TEST_F(PicturePixels, areTakenAsSrgbWithoutAProfile)
{
    const PointSet set = readPoints(save(red(4, 4))).value();
    ASSERT_EQ(set.points.size(), 1);
    EXPECT_LT((vectorOf(set.points[0].lab) - QVector3D(54.29f, 80.81f, 69.89f)).length(), 0.5f);
    EXPECT_EQ(set.note.value().code, Problem::Code(ProblemCode::PictureTakenAsSrgb));
}

TEST_F(PicturePixels, haveTheWeightOfTheirShare)
{
    QImage picture = red(40, 10);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 10; ++x)
            picture.setPixelColor(x, y, Qt::white);
    const PointSet set = readPoints(save(picture)).value();
    ASSERT_EQ(set.points.size(), 2);
    const auto& white = set.points[0].lab.L > 90.0f ? set.points[0] : set.points[1];
    EXPECT_NEAR(white.weight, 0.25, 1e-9);
}

TEST_F(PicturePixels, areAllCountedInLargePictures)
{
    QImage picture = red(2000, 1000);
    for (int y = 0; y < 1000; ++y)
        for (int x = 0; x < 500; ++x)
            picture.setPixelColor(x, y, Qt::white);
    const PointSet set = readPoints(save(picture)).value();
    ASSERT_EQ(set.points.size(), 2);
    const auto& white = set.points[0].lab.L > 90.0f ? set.points[0] : set.points[1];
    EXPECT_NEAR(white.weight, 0.25, 1e-9);
}

TEST_F(PicturePixels, areLeftOutWhereTransparent)
{
    QImage picture(4, 4, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    EXPECT_EQ(readPoints(save(picture)).error().code, Problem::Code(ProblemCode::PictureTransparent));
    picture.setPixelColor(1, 1, Qt::red);
    EXPECT_EQ(readPoints(save(picture)).value().points.size(), 1);
}

void append32(QByteArray& bytes, quint32 value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(value >> shift));
}

/// A small RGB profile through which each colour passes @p count matrices: one element that the list names
/// again and again.
QByteArray profileOfMatrices(quint32 count)
{
    QByteArray element("matf\0\0\0\0\0\3\0\3", 12);
    for (int i = 0; i < 12; ++i)
        append32(element, i < 9 && i % 4 == 0 ? 0x3f800000 : 0); // the identity, in floating point
    QByteArray tag("mpet\0\0\0\0\0\3\0\3", 12);
    append32(tag, count);
    for (quint32 i = 0; i < count; ++i) {
        append32(tag, 16 + 8 * count);
        append32(tag, static_cast<quint32>(element.size()));
    }
    tag += element;
    QByteArray bytes;
    append32(bytes, static_cast<quint32>(128 + 4 + 12 + tag.size()));
    bytes.append("lcms\4\x30\0\0mntrRGB Lab ", 20);
    bytes.append(QByteArray(12, '\0') + "acsp");
    bytes.append(QByteArray(68 - bytes.size(), '\0'));
    for (const quint32 d50 : {0xf6d6u, 0x10000u, 0xd32du})
        append32(bytes, d50);
    bytes.append(QByteArray(128 - bytes.size(), '\0'));
    append32(bytes, 1);
    bytes.append("D2B3");
    append32(bytes, 128 + 4 + 12);
    append32(bytes, static_cast<quint32>(tag.size()));
    return bytes + tag;
}

TEST_F(PicturePixels, areRefusedIfTheirProfileIsTooCostly)
{
    const QString path = folder.filePath(QStringLiteral("costly.png"));
    testpictures::writePng(path, profileOfMatrices(10));
    EXPECT_TRUE(readPoints(path));
    testpictures::writePng(path, profileOfMatrices(2000));
    const Result<PointSet> set = readPoints(path);
    ASSERT_FALSE(set);
    EXPECT_EQ(set.error().code, Problem::Code(ProblemCode::PictureProfileInvalid));
    ASSERT_TRUE(set.error().cause);
    EXPECT_EQ(set.error().cause->code, Problem::Code(KVProblemCode::DamagedTag));
    EXPECT_EQ(set.error().subject, path);
}

quint32 read32(const QByteArray& bytes, qsizetype at)
{
    return qFromBigEndian<quint32>(bytes.constData() + at);
}

/// A profile with one more tag.
QByteArray withTag(const QByteArray& profile, const char* name, const QByteArray& tag)
{
    constexpr qsizetype tableAt = 128 + 4, entrySize = 12;
    const quint32 count = read32(profile, 128);
    const qsizetype tableEnd = tableAt + entrySize * static_cast<qsizetype>(count);
    QByteArray bytes;
    append32(bytes, static_cast<quint32>(profile.size() + entrySize + tag.size()));
    bytes += profile.mid(4, 128 - 4);
    append32(bytes, count + 1);
    for (qsizetype at = tableAt; at < tableEnd; at += entrySize) {
        bytes += profile.mid(at, 4);
        append32(bytes, read32(profile, at + 4) + entrySize); // the offset
        bytes += profile.mid(at + 8, 4);
    }
    bytes.append(name, 4);
    append32(bytes, static_cast<quint32>(profile.size() + entrySize));
    append32(bytes, static_cast<quint32>(tag.size()));
    return bytes + profile.mid(tableEnd) + tag;
}

// The profile opens, because the other intents do not use the table.
TEST_F(PicturePixels, areRefusedIfTheirIntentIsTooCostly)
{
    const QString path = folder.filePath(QStringLiteral("costly.png"));
    const QByteArray profile = BuiltInProfiles::profile(QStringLiteral("sRGB"));
    constexpr qsizetype tagAt = 128 + 4 + 12;
    testpictures::writePng(path, withTag(profile, "D2B3", profileOfMatrices(10).mid(tagAt)));
    EXPECT_TRUE(readPoints(path));
    const QByteArray costly = withTag(profile, "D2B3", profileOfMatrices(2000).mid(tagAt));
    const KVProfilePtr opened(KVProfileCreateWithData(costly.constData(), static_cast<int>(costly.size())),
                              KVProfileRelease);
    EXPECT_TRUE(opened);
    testpictures::writePng(path, costly);
    const Result<PointSet> set = readPoints(path);
    ASSERT_FALSE(set);
    EXPECT_EQ(set.error().code, Problem::Code(ProblemCode::PictureProfileInvalid));
    EXPECT_EQ(set.error().cause->code, Problem::Code(KVProblemCode::DamagedTag));
}

TEST_F(PicturePixels, areNotConvertedAfterACancellation)
{
    const QString path = save(red(4, 4));
    const auto task = KVCompletionProtocol::createTask(path);
    EXPECT_TRUE(readPoints(path, task));
    EXPECT_EQ(task->progress(), 1.0f);
    task->cancel();
    EXPECT_TRUE(readPoints(path, task).error().isCancelled());
}

TEST_F(PicturePixels, areReadInCmykWithAProfile)
{
    const QString path = folder.filePath(QStringLiteral("inks.jpg"));
    QFile profile(QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc"));
    ASSERT_TRUE(profile.open(QIODevice::ReadOnly));
    testpictures::writeCmykJpeg(path, profile.readAll());
    EXPECT_TRUE(readPoints(path));
    testpictures::writeCmykJpeg(path, {});
    const Result<PointSet> set = readPoints(path);
    EXPECT_EQ(set.error().code, Problem::Code(ProblemCode::PictureNeedsProfile));
    EXPECT_EQ(set.error().subject, path);
}

} // namespace
