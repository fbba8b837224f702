// SPDX-License-Identifier: Apache-2.0
// Scales, legend, styles and looks of `kvgamut render`.

#include "app/support/Picture.h"
#include "app/support/Program.h"

#include <QtCore/QRegularExpression>

using namespace kvtest;

namespace {

class AnnotationTest : public ProgramTest
{
protected:
    QImage annotated(const QString& more, const QString& profiles = QStringLiteral("sRGB"),
                     const QString& what = QStringLiteral("all"))
    {
        QStringList arguments = profiles.split(QLatin1Char(' '));
        arguments << QStringLiteral("--size") << QStringLiteral("600x500") << QStringLiteral("--annotate")
                  << what;
        return rendered(arguments + more.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }
};

/// Inside the swatch of a row of the legend: the text is 10 pixels high in a picture of 600x500.
QColor swatch(const QImage& picture, int row)
{
    return picture.pixelColor(15, 16 + 15 * row);
}

int countNear(const QImage& picture, const QColor& color, int tolerance = 12)
{
    int count = 0;
    for (int y = 60; y < picture.height(); ++y) // below the legend
        for (int x = 0; x < picture.width(); ++x)
            count += difference(picture.pixelColor(x, y), color) <= tolerance;
    return count;
}

const QColor firstKey(1, 39, 136), secondKey(200, 60, 20); // of the style "screen"

} // namespace

TEST_F(AnnotationTest, areShownByDefault)
{
    const QString file = path(QStringLiteral("default.png"));
    ASSERT_TRUE(succeeded(kvgamut({QStringLiteral("render"), QStringLiteral("sRGB"), QStringLiteral("-o"),
                                   file, QStringLiteral("--size"), QStringLiteral("600x500")})));
    EXPECT_EQ(QImage(file), annotated({}));
    EXPECT_NE(QImage(file), annotated({}, QStringLiteral("sRGB"), QStringLiteral("none")));
}

TEST_F(AnnotationTest, legendAndOutlinesHaveTheKeyColours)
{
    const QImage picture = annotated({}, QStringLiteral("sRGB AdobeRGB"));
    EXPECT_LE(difference(swatch(picture, 0), firstKey), 2);
    EXPECT_LE(difference(swatch(picture, 1), secondKey), 2);
    EXPECT_GT(countNear(picture, secondKey), 150); // the outline of the larger one
    const QImage without = annotated({}, QStringLiteral("sRGB AdobeRGB"), QStringLiteral("scales"));
    EXPECT_GT(difference(swatch(without, 0), firstKey), 40);
    EXPECT_LT(countNear(without, secondKey), 50);
}

TEST_F(AnnotationTest, ofADarkStyleAreLightOnDark)
{
    const QImage picture = annotated(QStringLiteral("--style dark"));
    EXPECT_EQ(picture.pixelColor(599, 0), QColor(24, 26, 31));
    EXPECT_GT(countNear(picture, Qt::white, 40), 100);
    const QImage paper = annotated(QStringLiteral("--style paper"));
    EXPECT_EQ(paper.pixelColor(599, 0), QColor(Qt::white));
    EXPECT_GT(countNear(paper, Qt::black, 40), 100);
}

TEST_F(AnnotationTest, backgroundReplacesThatOfTheStyle)
{
    for (const QString& order : {QStringLiteral("--style dark --background white"),
                                 QStringLiteral("--background white --style dark")})
        EXPECT_EQ(annotated(order).pixelColor(599, 0), QColor(Qt::white)) << qPrintable(order);
}

TEST_F(AnnotationTest, linesReplaceTheSurface)
{
    const QImage body = annotated({}), lines = annotated(QStringLiteral("--look lines"));
    const QColor ground(Qt::gray);
    const auto drawn = [&](const QImage& picture) { return 600 * 440 - countNear(picture, ground, 30); };
    EXPECT_LT(drawn(lines), 0.7 * drawn(body));
    // the outline on the ab plane has the key colour, too
    const QString none = QStringLiteral("--no-projection ");
    EXPECT_GT(countNear(annotated(none + QStringLiteral("--look lines")), firstKey, 40),
              4 * countNear(annotated(none), firstKey, 40));
}

TEST_F(AnnotationTest, linesAreCutOffWithTheSurface)
{
    const QString look =
        QStringLiteral("--look lines --no-projection --no-grid --no-axes --orthogonal --view front");
    const auto top = [this](const QImage& picture) {
        for (int y = 60; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (difference(picture.pixelColor(x, y), QColor(Qt::gray)) > 30)
                    return y;
        return picture.height();
    };
    const int whole = top(annotated(look + QStringLiteral(" --frame none")));
    const int cut = top(annotated(look + QStringLiteral(" --frame none --clip 50")));
    EXPECT_GT(cut, whole + 30);
}

TEST_F(AnnotationTest, cutGamutsAreClosedInTrueColours)
{
    const Device device{0.78, 0.42, 0.25};
    const QString look = QStringLiteral("--view top --orthogonal --no-axes --no-projection --clip %1")
                             .arg(labOf(device).L, 0, 'f', 4);
    const QImage lid = annotated(look);
    const QImage open = annotated(look + QStringLiteral(" --section outline"));
    EXPECT_EQ(annotated(look + QStringLiteral(" --section lid")), lid);
    EXPECT_GT(countNear(lid, colorOf(device), 3), countNear(open, colorOf(device), 3) + 2);
}

/// Pixels that differ by more than the colours of two lids in the same place.
int differing(const QImage& one, const QImage& other)
{
    int count = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
            count += difference(one.pixelColor(x, y), other.pixelColor(x, y)) > 6;
    return count;
}

TEST_F(AnnotationTest, lidsDoNotDependOnTheOrderOfTheGamuts)
{
    const auto cut = [this](const QString& profiles, const QString& alpha) {
        return annotated(QStringLiteral("--section lid --clip 60 --frame none --alpha ") + alpha, profiles,
                         QStringLiteral("none"));
    };
    const QString both = QStringLiteral("sRGB ProPhoto"), reversed = QStringLiteral("ProPhoto sRGB");
    for (const auto& [alpha, ofReversed] :
         {std::pair("1,1", "1,1"), {"0.4,0.4", "0.4,0.4"}, {"1,0.35", "0.35,1"}, {"0.35,1", "1,0.35"}}) {
        const QString alphaOfLarger = QString::fromLatin1(alpha).section(QLatin1Char(','), 1);
        const QImage picture = cut(both, QString::fromLatin1(alpha));
        const QImage other = cut(reversed, QString::fromLatin1(ofReversed));
        EXPECT_LT(differing(picture, other), 300) << alpha; // along the edges of outlines
        // the smaller one is seen on the larger one by its outline
        EXPECT_GT(differing(picture, cut(QStringLiteral("ProPhoto"), alphaOfLarger)), 1000);
    }
}

TEST_F(AnnotationTest, lidsInTheSamePlaceHaveTheTrueColour)
{
    const Device device{0.78, 0.42, 0.25};
    const QString look =
        QStringLiteral("--view top --orthogonal --no-axes --no-projection --frame none --clip %1")
            .arg(labOf(device).L, 0, 'f', 4);
    const int alone = countNear(annotated(look), colorOf(device), 3);
    for (const char* more : {" --alpha 1,1", " --alpha 1,0.35"})
        EXPECT_NEAR(countNear(annotated(look + QString::fromLatin1(more), QStringLiteral("sRGB ProPhoto")),
                              colorOf(device), 3),
                    alone, 5 + alone / 10)
            << more;
}

TEST_F(AnnotationTest, plainPicturesHaveNoLidUnlessAsked)
{
    const QString none = QStringLiteral("none"), sRGB = QStringLiteral("sRGB");
    const QImage plain = annotated(QStringLiteral("--clip 50"), sRGB, none);
    EXPECT_EQ(annotated(QStringLiteral("--clip 50 --section outline"), sRGB, none), plain);
    EXPECT_NE(annotated(QStringLiteral("--clip 50 --section lid"), sRGB, none), plain);
}

TEST_F(AnnotationTest, aSectionIsShownWithoutCutting)
{
    const QImage whole = annotated(QStringLiteral("--alpha 0.4"));
    const QImage section = annotated(QStringLiteral("--alpha 0.4 --section-at 50"));
    EXPECT_NE(section, whole);
    // the top of the gamut is still there
    EXPECT_EQ(section.copy(0, 0, 600, 110), whole.copy(0, 0, 600, 110));
    EXPECT_NE(annotated(QStringLiteral("--section-at 50")), annotated({})); // its outline on a solid gamut
}

TEST_F(AnnotationTest, withoutAxesThereAreNoScales)
{
    EXPECT_EQ(annotated(QStringLiteral("--no-axes")),
              annotated(QStringLiteral("--no-axes"), QStringLiteral("sRGB"), QStringLiteral("legend")));
}

TEST_F(AnnotationTest, theInnermostGamutIsSolidWhateverItsPlace)
{
    const auto lookOf = [this](const QStringList& profiles) {
        return kvgamut(QStringList{QStringLiteral("render"), QStringLiteral("--verbose"),
                                   QStringLiteral("-o"), path(QStringLiteral("p.png")),
                                   QStringLiteral("--size"), QStringLiteral("100x100")} +
                       profiles)
            .errors;
    };
    const QByteArray text =
        lookOf({QStringLiteral("ProPhoto"), QStringLiteral("sRGB"), QStringLiteral("AdobeRGB")});
    EXPECT_TRUE(text.contains("kvgamut: sRGB is drawn as: solid")) << text.constData();
    EXPECT_TRUE(text.contains("kvgamut: AdobeRGB is drawn as: translucent"));
    EXPECT_TRUE(text.contains("kvgamut: ProPhoto is drawn as: lines"));
}

TEST_F(AnnotationTest, opacitiesByHandReplaceTheChoice)
{
    const Answer answer =
        kvgamut({QStringLiteral("render"), QStringLiteral("--verbose"), QStringLiteral("ProPhoto"),
                 QStringLiteral("sRGB"), QStringLiteral("--alpha"), QStringLiteral("1"), QStringLiteral("-o"),
                 path(QStringLiteral("p.png")), QStringLiteral("--size"), QStringLiteral("100x100")});
    EXPECT_FALSE(answer.errors.contains("is drawn as"));
}

TEST_F(AnnotationTest, areKeptOnATransparentGround)
{
    const QImage picture = annotated(QStringLiteral("--no-background"));
    EXPECT_EQ(picture.pixelColor(599, 0).alpha(), 0);
    EXPECT_EQ(swatch(picture, 0), firstKey);
    EXPECT_EQ(swatch(picture, 0).alpha(), 255);
}

TEST_F(AnnotationTest, areVectorsInSvg)
{
    const auto paths = [this](const QString& what) {
        const QString file = path(what + QStringLiteral(".svg"));
        EXPECT_TRUE(succeeded(kvgamut({QStringLiteral("render"), QStringLiteral("sRGB"), QStringLiteral("-o"),
                                       file, QStringLiteral("--size"), QStringLiteral("300x200"),
                                       QStringLiteral("--annotate"), what})));
        return contents(file).count("<path");
    };
    EXPECT_EQ(paths(QStringLiteral("none")), 0);
    EXPECT_GT(paths(QStringLiteral("all")), 20);
}

TEST_F(AnnotationTest, ofUnknownWordsAreRefused)
{
    for (const char* word : {"--style", "--annotate", "--look"}) {
        const Answer answer =
            kvgamut({QStringLiteral("render"), QStringLiteral("sRGB"), QStringLiteral("-o"),
                     path(QStringLiteral("p.png")), QLatin1String(word), QStringLiteral("neon")});
        EXPECT_EQ(answer.exitCode, 2) << word;
        EXPECT_TRUE(answer.errors.contains("neon")) << answer.errors.constData();
    }
}
