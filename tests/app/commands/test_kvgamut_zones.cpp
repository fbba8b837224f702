// SPDX-License-Identifier: Apache-2.0
// Points by their side of the surface, `kvgamut render --points FILE --point-zones`, and by their distance
// from it,
// `--point-colors distance`.

#include "app/support/Program.h"

using namespace kvtest;

namespace {

class ZoneTest : public ProgramTest
{
protected:
    /// A picture of the points alone.
    QImage zones(const QByteArray& points, const QString& more = {})
    {
        return picture(points, QStringLiteral("--point-zones ") + more);
    }
    /// The same, by distance.
    QImage distances(const QByteArray& points, const QString& more = {})
    {
        return picture(points, QStringLiteral("--point-colors distance ") + more);
    }

private:
    QImage picture(const QByteArray& points, const QString& more)
    {
        write(path(QStringLiteral("points.csv")), "L,a,b\n" + points);
        return rendered(
            words(QStringLiteral("sRGB --size 300x300 --no-surface --no-projection --no-grid --no-axes "
                                 "--frame none --point-size 40 --points %1 ")
                      .arg(path(QStringLiteral("points.csv"))) +
                  more));
    }
};

/// Pixels whose hue is within 12 degrees of @p color.
int count(const QImage& picture, const QColor& color)
{
    int found = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            const int turn = std::abs(pixel.hue() - color.hue()) % 360;
            found += pixel.saturation() > 60 && std::min(turn, 360 - turn) <= 12;
        }
    return found;
}

const QColor inside(0, 112, 127), edge(245, 180, 0), outside(205, 28, 69);

} // namespace

TEST_F(ZoneTest, pointsHaveTheColourOfTheirZone)
{
    const QImage in = zones("50,0,0\n"), out = zones("50,-110,-110\n"), white = zones("100,0,0\n");
    EXPECT_GT(count(in, inside), 100);
    EXPECT_GT(count(out, outside), 100);
    EXPECT_GT(count(white, edge), 30);
    EXPECT_EQ(count(in, outside) + count(in, edge), 0);
    EXPECT_EQ(count(out, inside) + count(out, edge), 0);
    EXPECT_EQ(count(white, inside) + count(white, outside), 0);
}

TEST_F(ZoneTest, pointsHaveTheShapeOfTheirZone)
{
    // The shares of a square around the point that the shapes cover: of a sphere 0.79, of a star and a frame
    // less.
    const auto share = [](const QImage& picture, const QColor& color) {
        QRect around;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixelColor(x, y).saturation() > 60)
                    around |= QRect(x, y, 1, 1);
        return double(count(picture, color)) / double(around.width() * around.height());
    };
    const QString orthogonal = QStringLiteral("--view top --orthogonal");
    EXPECT_GT(share(zones("50,0,0\n", orthogonal), inside), 0.7);
    EXPECT_LT(share(zones("50,-60,-60\n", orthogonal), outside), 0.6);
    EXPECT_LT(share(zones("100,0,0\n", orthogonal), edge), 0.6);
}

TEST_F(ZoneTest, theToleranceSaysWhatTheEdgeIs)
{
    const QByteArray nearWhite("96,0,0\n"); // 4 below white
    EXPECT_EQ(count(zones(nearWhite), edge), 0);
    EXPECT_GT(count(zones(nearWhite, QStringLiteral("--point-tolerance 5")), edge), 30);
}

// The scale's colours at 5/6, 1/2 and 0 of it, which shading makes darker.
TEST_F(ZoneTest, pointsHaveTheColourOfTheirDistance)
{
    const QColor middle(208, 48, 96), light(255, 208, 64);
    const QString scale = QStringLiteral("--metric de76 --loss-threshold 2 --loss-max 22");
    const QImage in = distances("50,0,0\n", scale), twelve = distances("112,0,0\n", scale);
    EXPECT_EQ(count(in, middle) + count(in, light), 0);
    EXPECT_GT(count(twelve, middle), 100) << "12 above white";
    EXPECT_EQ(count(twelve, light), 0);
    EXPECT_GT(count(distances("102.5,0,0\n", scale), light), 100) << "2.5 above white";
    EXPECT_EQ(count(distances("101.5,0,0\n", scale), light), 0) << "below the threshold";
}

// The frame of a cube is thin: the pale colour that the scale has below the threshold would be lost.
TEST_F(ZoneTest, pointsBelowTheThresholdStandOutFromTheGround)
{
    const auto count = [](const QImage& picture, auto matches) {
        int found = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                found += matches(qGray(picture.pixel(x, y)));
        return found;
    };
    const QString plain = QStringLiteral("--loss-threshold 2 --annotate none --style ");
    const QByteArray nearWhite("101,0,0\n");
    EXPECT_GT(
        count(distances(nearWhite, plain + QStringLiteral("paper")), [](int grey) { return grey < 120; }),
        30);
    EXPECT_GT(
        count(distances(nearWhite, plain + QStringLiteral("dark")), [](int grey) { return grey > 140; }), 30);
}

TEST_F(ZoneTest, distancesAreThoseOutsideTheGamutOfLoss)
{
    write(path(QStringLiteral("green.csv")), "L,a,b\n83,-128,87\n"); // of Adobe RGB
    const auto colourful = [this](const QString& other) {
        const QImage picture = rendered(
            words(QStringLiteral("sRGB --size 300x300 --no-projection --no-grid --no-axes --point-size 20 "
                                 "--point-colors distance --points %1 --loss %2")
                      .arg(path(QStringLiteral("green.csv")), other)));
        int found = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                found += picture.pixelColor(x, y).saturation() > 60;
        return found;
    };
    EXPECT_GT(colourful(QStringLiteral("sRGB")), 30);
    EXPECT_EQ(colourful(QStringLiteral("ProPhoto")), 0);
}

TEST_F(ZoneTest, aScaleBarExplainsTheDistances)
{
    const QString scale = QStringLiteral("--loss-max 20 --annotate ");
    const QImage with = distances("50,0,0\n", scale + QStringLiteral("legend"));
    const QImage without = distances("50,0,0\n", scale + QStringLiteral("none"));
    EXPECT_GT(count(with, QColor(208, 48, 96)), 50);
    EXPECT_EQ(count(without, QColor(208, 48, 96)), 0);
}

TEST_F(ZoneTest, coloursByDistanceNeedPointsAndExcludeZones)
{
    write(path(QStringLiteral("points.csv")), "L,a,b\n50,0,0\n");
    const QString output = QStringLiteral(" -o ") + path(QStringLiteral("p.png"));
    EXPECT_EQ(kvgamut(words(QStringLiteral("render sRGB --point-colors distance") + output)).exitCode,
              WrongUsage);
    EXPECT_EQ(kvgamut(words(QStringLiteral("render sRGB --point-colors distance --point-zones --points ") +
                            path(QStringLiteral("points.csv")) + output))
                  .exitCode,
              WrongUsage);
}

TEST_F(ZoneTest, needPoints)
{
    EXPECT_EQ(
        kvgamut(words(QStringLiteral("render sRGB --point-zones -o %1").arg(path(QStringLiteral("p.png")))))
            .exitCode,
        WrongUsage);
}
