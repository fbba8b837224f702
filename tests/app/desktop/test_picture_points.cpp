// SPDX-License-Identifier: Apache-2.0
#include "model/points/PicturePoints.h"

#include "app/support/TestPictures.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/points/Lab.h"
#include "model/points/PointInput.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>
#include <QtGui/QColorSpace>
#include <QtGui/QImage>

#include <numeric>

// The colours of pictures as points.

namespace {

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
