// SPDX-License-Identifier: Apache-2.0
#include "app/support/Picture.h"
#include "app/support/Program.h"

using namespace kvtest;

namespace {

constexpr QSize size(400, 400);

/// Markers, points and lines that the user adds from text files.
class ItemTest : public ProgramTest
{
protected:
    QString file(const QByteArray& text)
    {
        const QString name = path(QStringLiteral("my positions.csv"));
        write(name, text);
        return name;
    }

    /// Renders only the items and the gamut, seen from the top.
    QImage drawn(const QStringList& items) { return rendered(look + items); }

    static QColor at(const QImage& picture, const Lab& lab)
    {
        return picture.pixelColor(topCamera(size).pixelOf(lab));
    }

    Answer answerTo(const QByteArray& text)
    {
        return kvgamut(QStringList{QStringLiteral("render"), QStringLiteral("-o"),
                                   path(QStringLiteral("out.png")), QStringLiteral("--points"), file(text)} +
                       look);
    }

    const QStringList look{
        QStringLiteral("sRGB"),         QStringLiteral("--size"),         QStringLiteral("400x400"),
        QStringLiteral("--frame"),      QStringLiteral("none"),           QStringLiteral("--view"),
        QStringLiteral("top"),          QStringLiteral("--no-grid"),      QStringLiteral("--no-axes"),
        QStringLiteral("--no-surface"), QStringLiteral("--no-projection")};
    const QColor background = Qt::gray;
};

/// Whether @p seen is a shade of @p color: shading may make it darker.
bool isShadeOf(const QColor& seen, const QColor& color)
{
    const int hueTurn = std::abs(seen.hue() - color.hue());
    return seen.saturation() > 150 && std::min(hueTurn, 360 - hueTurn) < 8 &&
           seen.value() > color.value() / 2;
}

TEST_F(ItemTest, eachMarkerStandsAtItsPositionInItsColour)
{
    const QImage picture =
        drawn({QStringLiteral("--markers"), file("L,a,b,colour\n60,80,-40,#ff00ff\n20;-70;50;red\n"),
               QStringLiteral("--marker-size"), QStringLiteral("12")});
    EXPECT_TRUE(isShadeOf(at(picture, {60, 80, -40}), Qt::magenta));
    EXPECT_TRUE(isShadeOf(at(picture, {20, -70, 50}), Qt::red));
    EXPECT_EQ(at(picture, {60, 0, 0}), background);
    // diameter 12: a point at distance 5 from the centre is on the marker, one at 8 is not
    EXPECT_TRUE(isShadeOf(at(picture, {60, 85, -40}), Qt::magenta));
    EXPECT_EQ(at(picture, {60, 88, -40}), background);
}

TEST_F(ItemTest, theTypesOfMarkersDiffer)
{
    const QString markers = file("L,a,b,colour\n60,20,-40,#ff00ff\n");
    QList<QImage> pictures;
    for (const char* type : {"sphere", "cube", "star"})
        pictures.append(drawn({QStringLiteral("--markers"), markers, QStringLiteral("--marker-size"),
                               QStringLiteral("40"), QStringLiteral("--marker-type"), QLatin1String(type)}));
    EXPECT_NE(pictures[0], pictures[1]);
    EXPECT_NE(pictures[1], pictures[2]);
    EXPECT_NE(pictures[0], pictures[2]);
}

TEST_F(ItemTest, aPositionWithoutColourShowsItsOwn)
{
    const Device device{0.9, 0.3, 0.2};
    const Lab lab = labOf(device);
    const QImage picture = drawn({QStringLiteral("--points"),
                                  file("L\ta\tb\n" + QByteArray::number(lab.L) + "\t" +
                                       QByteArray::number(lab.a) + "\t" + QByteArray::number(lab.b)),
                                  QStringLiteral("--point-size"), QStringLiteral("10")});
    EXPECT_TRUE(isShadeOf(at(picture, lab), colorOf(device)));
}

TEST_F(ItemTest, pointsHaveTheSizeGiven)
{
    const QString points = file("L,a,b,colour\n50,40,40,#ff00ff\n");
    const QImage small = drawn({QStringLiteral("--points"), points});
    const QImage large =
        drawn({QStringLiteral("--points"), points, QStringLiteral("--point-size"), QStringLiteral("20")});
    EXPECT_TRUE(isShadeOf(at(small, {50, 40, 40}), Qt::magenta));
    EXPECT_EQ(at(small, {50, 48, 40}), background);
    EXPECT_TRUE(isShadeOf(at(large, {50, 48, 40}), Qt::magenta));
}

TEST_F(ItemTest, aLineJoinsItsPositionsInOrder)
{
    const QString line =
        file("# three corners\nL,a,b,colour\n50,-60,-60,#ff00ff\n50,60,-60,#ff00ff\n50,60,60,#ff00ff\n");
    const QImage picture =
        drawn({QStringLiteral("--line"), line, QStringLiteral("--line-width"), QStringLiteral("6")});
    EXPECT_TRUE(isShadeOf(at(picture, {50, 0, -60}), Qt::magenta));
    EXPECT_TRUE(isShadeOf(at(picture, {50, 60, 0}), Qt::magenta));
    EXPECT_EQ(at(picture, {50, 0, 0}), background); // the line is not closed
    // 6 / 1.5 = 4 Lab units thick
    EXPECT_TRUE(isShadeOf(at(picture, {50, 0, -58.8}), Qt::magenta));
    EXPECT_EQ(at(picture, {50, 0, -56}), background);
    const QImage thin = drawn({QStringLiteral("--line"), line});
    EXPECT_EQ(at(thin, {50, 0, -58.8}), background);
}

TEST_F(ItemTest, reportsTheInvalidLineOfAFile)
{
    for (const QByteArray& bad : {QByteArray("1,2"), QByteArray("1,2,x"), QByteArray("1,2,nan"),
                                  QByteArray("1,2,3,blurple"), QByteArray("1,2,3,red,5")}) {
        const Answer answer = answerTo("L a b\n50,0,0\n" + bad + "\n50,1,1\n");
        EXPECT_EQ(answer.exitCode, BadInput) << bad.toStdString();
        EXPECT_EQ(answer.errors.count('\n'), 1);
        EXPECT_TRUE(answer.errors.contains("line 3: ")) << answer.errors.toStdString();
        EXPECT_TRUE(answer.errors.contains("my positions.csv': ")) << answer.errors.toStdString();
    }
}

TEST_F(ItemTest, reportsAFileWithoutPositions)
{
    for (const QByteArray& empty : {QByteArray(), QByteArray("# nothing\n\n"), QByteArray("L,a,b\n")}) {
        const Answer answer = answerTo(empty);
        EXPECT_EQ(answer.exitCode, BadInput);
        EXPECT_EQ(answer.errors.count('\n'), 1);
        EXPECT_TRUE(answer.errors.contains("my positions.csv': ")) << answer.errors.toStdString();
    }
}

TEST_F(ItemTest, theRestIsDrawnWhenAFileIsMissing)
{
    const QString output = path(QStringLiteral("out.png"));
    const Answer answer = kvgamut(QStringList{QStringLiteral("render"), QStringLiteral("-o"), output,
                                              QStringLiteral("--annotate"), QStringLiteral("none"),
                                              QStringLiteral("--markers"), QStringLiteral("missing.csv")} +
                                  look);
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors.count('\n'), 1);
    EXPECT_TRUE(answer.errors.contains("missing.csv"));
    EXPECT_EQ(QImage(output), rendered(look));
}

} // namespace
