// SPDX-License-Identifier: Apache-2.0
// Sources of gamuts that are not files: bytes, and points in memory.

#include "app/support/BuiltInGamut.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/GamutSource.h"
#include "model/inputs/SavedGamut.h"
#include "model/problems/ProblemText.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace {

class GamutContentTest : public testing::Test
{
protected:
    /// The source that is opened from a file with this content.
    GamutSource fileOf(const QByteArray& content) const
    {
        QFile file(m_folder.filePath(QStringLiteral("file")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        file.close();
        return GamutSource::open(file.fileName()).value();
    }

    static KVGamut::GamutObject computed(const GamutSource& source) { return source.compute({}).value(); }

private:
    QTemporaryDir m_folder;
};

TEST_F(GamutContentTest, opensContentInMemoryAsTheFile)
{
    const QByteArray profile = BuiltInProfiles::profile(QStringLiteral("DisplayP3"));
    const QByteArray saved = SavedGamut{kvtest::builtInGamut("sRGB", 9).serialize(), {}}.bytes();
    const QByteArray list = "Lab_L,Lab_a,Lab_b\n0,0,0\n100,0,0\n50,50,0\n50,0,50\n";
    for (const QByteArray& content : {profile, saved, list}) {
        const auto source = GamutSource::ofContent(QStringLiteral("bytes"), content);
        ASSERT_TRUE(source) << ProblemText::english(source.error()).toStdString();
        const GamutSource file = fileOf(content);
        EXPECT_EQ(source->kind(), file.kind());
        EXPECT_EQ(source->hash(), file.hash());
        EXPECT_EQ(source->name(), QStringLiteral("bytes"));
        EXPECT_EQ(computed(*source).volume(), computed(file).volume());
    }
}

TEST_F(GamutContentTest, refusesContentInMemoryBeyondTheLimit)
{
    QByteArray content(InputLimits::maxBytes(InputKind::Points) + 1, ' ');
    const auto source = GamutSource::ofContent(QStringLiteral("bytes"), content);
    ASSERT_FALSE(source);
    EXPECT_EQ(source.error().code, Problem::Code(ProblemCode::InputTooLarge));
    EXPECT_EQ(source.error().arguments, QStringList(QStringLiteral("64")));
    EXPECT_EQ(source.error().subject, QStringLiteral("bytes"));
}

TEST_F(GamutContentTest, refusesContentInMemoryOfAnUnknownFormat)
{
    const auto source = GamutSource::ofContent(QStringLiteral("bytes"), QByteArray(1000, '\1'));
    ASSERT_FALSE(source);
    EXPECT_EQ(source.error().code, Problem::Code(ProblemCode::UnknownFormat));
}

TEST_F(GamutContentTest, makesAHullOfPointsWithoutDeviceValues)
{
    PointSet set;
    for (const KVGamut::LabPoint& lab : {KVGamut::LabPoint{0, 0, 0}, {60, 0, 0}, {0, 60, 0}, {0, 0, 60}})
        set.points.append({lab, {}, {}});
    const auto source = GamutSource::ofPoints(QStringLiteral("points"), set);
    ASSERT_TRUE(source);
    EXPECT_FALSE(source->profile());
    EXPECT_TRUE(source->hash().isEmpty());
    EXPECT_NEAR(source->givenGamut().volume(), 60.0 * 60.0 * 60.0 / 6.0, 1.0);
}

TEST_F(GamutContentTest, makesAChartOfPointsWithDeviceValues)
{
    PointSet set;
    for (int corner = 0; corner < 8; ++corner) {
        MeasuredPoint point;
        point.device = {float(corner & 1), float(corner >> 1 & 1), float(corner >> 2), 0.0f};
        point.deviceChannels = 3;
        point.lab = {100.0f * (point.device[0] + point.device[1] + point.device[2]) / 3.0f,
                     60.0f * (point.device[0] - point.device[1]),
                     60.0f * (point.device[1] - point.device[2])};
        set.points.append(point);
    }
    const auto source = GamutSource::ofPoints(QStringLiteral("points"), set);
    ASSERT_TRUE(source) << ProblemText::english(source.error()).toStdString();
    ASSERT_TRUE(source->chart());
    EXPECT_EQ(source->chart()->measured, 8);
    EXPECT_TRUE(source->hash().isEmpty());
}

TEST_F(GamutContentTest, refusesMorePointsThanAFileMayHave)
{
    PointSet set;
    set.points.resize(InputLimits::maxPoints + 1);
    const auto source = GamutSource::ofPoints(QStringLiteral("points"), set);
    ASSERT_FALSE(source);
    EXPECT_EQ(source.error().code, Problem::Code(ProblemCode::TooManyPoints));
}

} // namespace
