// SPDX-License-Identifier: Apache-2.0
// Surfaces coloured by the distance outside another gamut: `kvgamut render --loss`.

#include "app/support/Picture.h"
#include "app/support/Program.h"

using namespace kvtest;

namespace {

class LossTest : public ProgramTest
{
protected:
    QImage loss(const QString& more)
    {
        return rendered(
            words(QStringLiteral("--size 400x300 --no-grid --no-projection --no-axes --ambient 1 ") + more));
    }
};

bool isNear(const QColor& p, const QColor& q, int tolerance)
{
    return std::abs(p.red() - q.red()) <= tolerance && std::abs(p.green() - q.green()) <= tolerance &&
           std::abs(p.blue() - q.blue()) <= tolerance;
}

int count(const QImage& picture, const QColor& color, int tolerance = 6)
{
    int found = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < 300; ++x) // without the scale bar
            found += isNear(picture.pixelColor(x, y), color, tolerance);
    return found;
}

const QColor neutral(216, 216, 216), darkest(56, 4, 96), lightest(255, 208, 64);

} // namespace

TEST_F(LossTest, aGamutInsideTheOtherIsNeutral)
{
    const QImage picture = loss(QStringLiteral("sRGB --loss ProPhoto"));
    EXPECT_GT(count(picture, neutral), 10000);
    EXPECT_EQ(count(picture, darkest, 40), 0);
}

TEST_F(LossTest, aGamutOutsideTheOtherHasTheColoursOfTheScale)
{
    const QImage picture = loss(QStringLiteral("ProPhoto --loss sRGB --loss-max 10"));
    EXPECT_GT(count(picture, darkest), 500) << "more than the largest distance";
    EXPECT_GT(count(picture, lightest, 60), 20) << "between";
    EXPECT_LT(count(picture, neutral), count(loss(QStringLiteral("sRGB --loss ProPhoto")), neutral));
}

TEST_F(LossTest, aHigherThresholdMakesMoreOfItNeutral)
{
    const QImage low = loss(QStringLiteral("AdobeRGB --loss sRGB --loss-threshold 1 --loss-max 40"));
    const QImage high = loss(QStringLiteral("AdobeRGB --loss sRGB --loss-threshold 8 --loss-max 40"));
    EXPECT_GT(count(high, neutral), count(low, neutral) + 500);
}

TEST_F(LossTest, theBorderOfTheThresholdIsSharp)
{
    // triangles of many pixels; the threshold is where the colours change most
    const QImage picture =
        loss(QStringLiteral("ProPhoto --grid 5 --loss sRGB --loss-threshold 10 --loss-max 80"));
    EXPECT_GT(count(picture, neutral), 1000);
    EXPECT_GT(count(picture, lightest, 20), 100);
    const QColor mixed((neutral.red() + lightest.red()) / 2, (neutral.green() + lightest.green()) / 2,
                       (neutral.blue() + lightest.blue()) / 2);
    EXPECT_LT(count(picture, mixed, 20), count(picture, lightest, 20) / 4);
}

TEST_F(LossTest, theMetricsGiveDifferentColours)
{
    const QString rest = QStringLiteral("ProPhoto --loss sRGB --loss-max 40 --metric ");
    EXPECT_GT(count(loss(rest + QStringLiteral("de76")), darkest),
              count(loss(rest + QStringLiteral("ciede2000")), darkest) + 500);
    EXPECT_EQ(loss(rest + QStringLiteral("ciede2000")),
              loss(QStringLiteral("ProPhoto --loss sRGB --loss-max 40")));
}

TEST_F(LossTest, theScaleBarHasTheColoursFromBottomToTop)
{
    const QString arguments = QStringLiteral("ProPhoto --loss sRGB --loss-max 20 --loss-threshold 5");
    const QImage picture = loss(arguments + QStringLiteral(" --annotate legend"));
    constexpr int top = 30, bottom = top + 120; // below a row of text, and 40 % of the height
    int column = 0;
    for (int x = 399; x > 300 && column == 0; --x) // the body may be as grey, farther to the left
        if (isNear(picture.pixelColor(x, bottom - 5), neutral, 1) &&
            isNear(picture.pixelColor(x - 3, bottom - 5), neutral, 1))
            column = x - 2;
    ASSERT_GT(column, 0) << "the lowest quarter counts as inside";
    EXPECT_TRUE(isNear(picture.pixelColor(column, top + 3), darkest, 12));
    for (int y = top + 10; y < bottom - 35; y += 5) // darker upwards
        EXPECT_LT(qGray(picture.pixel(column, y)), qGray(picture.pixel(column, y + 10)));
}

TEST_F(LossTest, optionsThatContradictEachOtherAreRefused)
{
    const auto refused = [this](const QString& more) {
        return kvgamut(words(QStringLiteral("render sRGB -o %1 ").arg(path(QStringLiteral("p.png"))) + more))
                   .exitCode == WrongUsage;
    };
    EXPECT_TRUE(refused(QStringLiteral("--loss-max 3")));
    EXPECT_TRUE(refused(QStringLiteral("--metric de76")));
    EXPECT_TRUE(refused(QStringLiteral("--loss AdobeRGB --metric de94")));
    EXPECT_TRUE(refused(QStringLiteral("--loss AdobeRGB --loss-threshold 5 --loss-max 5")));
    EXPECT_TRUE(refused(QStringLiteral("--loss AdobeRGB --mode wireframe")));
    EXPECT_TRUE(refused(QStringLiteral("--loss AdobeRGB --look lines")));
    EXPECT_TRUE(refused(QStringLiteral("--loss AdobeRGB --color red")));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(LossTest, anUnreadableGamutIsNamed)
{
    const Answer answer = kvgamut(
        words(QStringLiteral("render sRGB -o %1 --loss missing.icc").arg(path(QStringLiteral("p.png")))));
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_TRUE(answer.errors.contains("missing.icc")) << answer.errors.constData();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(LossTest, theOtherGamutIsNotOverwritten)
{
    const QString saved = path(QStringLiteral("saved.png"));
    ASSERT_TRUE(succeeded(kvgamut(words(QStringLiteral("render sRGB --size 100x100 -o ") + saved))));
    const QByteArray before = contents(saved);
    EXPECT_EQ(kvgamut({QStringLiteral("render"), QStringLiteral("sRGB"), QStringLiteral("--loss"), saved,
                       QStringLiteral("-o"), saved})
                  .exitCode,
              WrongUsage);
    EXPECT_EQ(contents(saved), before);
}
