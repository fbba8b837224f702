// SPDX-License-Identifier: Apache-2.0
#include "app/support/AffineProfile.h"
#include "app/support/Picture.h"
#include "app/support/Program.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QXmlStreamReader>

#include <cmath>

using namespace kvtest;

namespace {

class SliceTest : public ProgramTest
{
protected:
    void SetUp() override { write(affine(), AffineDevice::profile()); }

    QString affine() const { return path(QStringLiteral("affine device é 印.icc")); }
    QString output(const char* suffix) const
    {
        return path(QStringLiteral("a slice ü.") + QLatin1String(suffix));
    }

    static Answer slice(const QStringList& arguments, const QProcessEnvironment& env = withoutDisplay())
    {
        return kvgamut(QStringList{QStringLiteral("slice")} + arguments, env);
    }
    static QJsonArray json(const QStringList& arguments)
    {
        const Answer answer = slice(arguments + words("--format json"));
        EXPECT_TRUE(succeeded(answer));
        return QJsonDocument::fromJson(answer.output).array();
    }
    static double number(const QJsonValue& object, const char* key)
    {
        return object.toObject()[QLatin1String(key)].toDouble();
    }

    const QString sRGB = QStringLiteral("sRGB");
    const QString cmyk = QStringLiteral(KVGAMUT_CMYK_PROFILE);
};

double distance(const QPointF& p, const QPointF& a, const QPointF& b)
{
    const QPointF d = b - a;
    const double t = std::clamp(QPointF::dotProduct(p - a, d) / QPointF::dotProduct(d, d), 0.0, 1.0);
    const QPointF off = p - (a + t * d);
    return std::hypot(off.x(), off.y());
}

// --- Data ---------------------------------------------------------------------------------------------

TEST_F(SliceTest, atALightnessIsThePolygonOfAnAffineDevice)
{
    // at L* 50, r + g + b = 1.5: a hexagon whose corners are the permutations of (0, 1/2, 1)
    QPolygonF hexagon;
    for (const auto& [r, g, b] : {std::array{1.0, 0.5, 0.0},
                                  {0.5, 1.0, 0.0},
                                  {0.0, 1.0, 0.5},
                                  {0.0, 0.5, 1.0},
                                  {0.5, 0.0, 1.0},
                                  {1.0, 0.0, 0.5}}) {
        const cmsCIELab lab = AffineDevice::lab(r, g, b);
        hexagon.append({lab.a, lab.b});
    }
    const QJsonArray gamuts = json({affine(), QStringLiteral("--lightness"), QStringLiteral("50")});
    ASSERT_EQ(gamuts.size(), 1);
    const QJsonArray rings = gamuts[0].toObject()[QLatin1String("rings")].toArray();
    ASSERT_EQ(rings.size(), 1);
    for (const QPointF& corner : hexagon) {
        double nearest = 1e9;
        for (const QJsonValue& point : rings[0].toArray())
            nearest = std::min(
                nearest, std::hypot(point[1].toDouble() - corner.x(), point[2].toDouble() - corner.y()));
        EXPECT_LT(nearest, 0.02) << corner.x() << ", " << corner.y(); // rounding to 16 bits in the profile
    }
    for (const QJsonValue& point : rings[0].toArray()) {
        EXPECT_EQ(point[0].toDouble(), 50.0);
        double nearest = 1e9;
        for (qsizetype i = 0; i < 6; ++i)
            nearest = std::min(nearest, distance({point[1].toDouble(), point[2].toDouble()}, hexagon[i],
                                                 hexagon[(i + 1) % 6]));
        EXPECT_LT(nearest, 0.02);
    }
    // twice the area of the hexagon, by the shoelace formula
    double twice = 0.0;
    for (qsizetype i = 0; i < 6; ++i)
        twice += hexagon[i].x() * hexagon[(i + 1) % 6].y() - hexagon[(i + 1) % 6].x() * hexagon[i].y();
    EXPECT_NEAR(number(gamuts[0], "area"), std::abs(twice) / 2.0, 2.0);
}

TEST_F(SliceTest, atAHueEndsExactlyOnTheAxis)
{
    const QJsonArray gamuts = json({affine(), QStringLiteral("--hue"), QStringLiteral("270")});
    const QJsonArray rings = gamuts[0].toObject()[QLatin1String("rings")].toArray();
    ASSERT_EQ(rings.size(), 1);
    // the plane a* = 0 is r = g; on its half with b* < 0 the corners of the cube are black, blue and white
    QPolygonF triangle; // C*, L*
    for (const auto& [r, g, b] : {std::array{0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, {1.0, 1.0, 1.0}}) {
        const cmsCIELab lab = AffineDevice::lab(r, g, b);
        triangle.append({-lab.b, lab.L});
    }
    double smallest = 1e9;
    for (const QJsonValue& point : rings[0].toArray()) {
        EXPECT_NEAR(point[1].toDouble(), 0.0, 1e-3);
        const QPointF p(-point[2].toDouble(), point[0].toDouble());
        smallest = std::min(smallest, p.x());
        double nearest = 1e9;
        for (qsizetype i = 0; i < 3; ++i)
            nearest = std::min(nearest, distance(p, triangle[i], triangle[(i + 1) % 3]));
        EXPECT_LT(nearest, 0.03);
    }
    EXPECT_EQ(smallest, 0.0);
    EXPECT_NEAR(number(gamuts[0], "area"), 0.5 * 100.0 * 60.0, 2.0);
}

TEST_F(SliceTest, theOutermostRingEnclosesTheVolume)
{
    for (const QString& profile : {affine(), sRGB, cmyk}) {
        const QJsonArray gamuts = json({profile, QStringLiteral("--rings")});
        const Answer volume =
            kvgamut({QStringLiteral("volume"), profile, QStringLiteral("--format"), QStringLiteral("json")},
                    withoutDisplay());
        const double expected = number(QJsonDocument::fromJson(volume.output).array()[0], "volume");
        EXPECT_NEAR(number(gamuts[0], "volume"), expected, 0.051) << profile.toStdString(); // rounded to 0.1
        const QJsonArray rings = gamuts[0].toObject()[QLatin1String("rings")].toArray();
        ASSERT_EQ(rings.size(), 10);
        double before = 0.0;
        for (int i = 0; i < 10; ++i) {
            EXPECT_EQ(number(rings[i], "lightness"), 10.0 * (i + 1));
            EXPECT_GE(number(rings[i], "area"), before);
            before = number(rings[i], "area");
        }
        // a polygon of 360 corners is smaller than the smooth ring, and a surface than the volume of all
        // colours
        EXPECT_NEAR(before / expected, 1.0, 6e-4) << profile.toStdString();
    }
}

TEST_F(SliceTest, halfOfASymmetricSolidLiesBelowItsMiddle)
{
    // the gamut of the affine device has point symmetry about L* 50
    const QJsonArray rings =
        json({affine(), QStringLiteral("--rings")})[0].toObject()[QLatin1String("rings")].toArray();
    EXPECT_NEAR(number(rings[4], "area") / AffineDevice::volume, 0.5, 5e-4);
}

TEST_F(SliceTest, csvHasARowForEachPointInTheOrderOfTheRing)
{
    const Answer answer = slice(QStringList{affine()} + words("--lightness 50"));
    ASSERT_TRUE(succeeded(answer));
    const QList<QByteArray> lines = answer.output.trimmed().split('\n');
    EXPECT_EQ(lines[0], "profile,ring,L,a,b,C");
    const QJsonArray ring = json(QStringList{affine()} + words("--lightness 50"))[0]
                                .toObject()[QLatin1String("rings")]
                                .toArray()[0]
                                .toArray();
    ASSERT_EQ(lines.size(), ring.size() + 1);
    for (qsizetype i = 0; i < ring.size(); ++i) {
        const QList<QByteArray> fields = lines[i + 1].split(',');
        EXPECT_EQ(fields[0], affine().toUtf8());
        EXPECT_EQ(fields[1], "1");
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(fields[2 + k].toDouble(), ring[i][k].toDouble(), 1e-9);
        EXPECT_NEAR(fields[5].toDouble(), std::hypot(fields[3].toDouble(), fields[4].toDouble()), 2e-4);
    }
}

TEST_F(SliceTest, statesProfileIntentAndWhite)
{
    const QJsonObject gamut = json({cmyk, QStringLiteral("--lightness"), QStringLiteral("50"),
                                    QStringLiteral("--intent"), QStringLiteral("relative")})[0]
                                  .toObject();
    EXPECT_EQ(gamut[QLatin1String("profile")].toString(), cmyk);
    EXPECT_EQ(gamut[QLatin1String("intent")].toString(), QStringLiteral("relative"));
    EXPECT_NEAR(gamut[QLatin1String("white")][0].toDouble(), 100.0, 0.1);
    EXPECT_EQ(gamut[QLatin1String("lightness")].toDouble(), 50.0);
}

TEST_F(SliceTest, numbersDoNotDependOnTheOrderOfTheInputs)
{
    for (const char* what : {"--lightness 60", "--hue 40", "--rings"}) {
        const QJsonArray one = json(QStringList{sRGB, cmyk} + words(what));
        const QJsonArray other = json(QStringList{cmyk, sRGB} + words(what));
        ASSERT_EQ(one.size(), 2);
        EXPECT_EQ(one[0], other[1]) << what;
        EXPECT_EQ(one[1], other[0]) << what;
    }
}

TEST_F(SliceTest, hasNoRingsOutsideTheGamut)
{
    // the paper has an L* of 88.7
    const QJsonArray gamuts = json(QStringList{cmyk} + words("--lightness 95"));
    EXPECT_TRUE(gamuts[0].toObject()[QLatin1String("rings")].toArray().isEmpty());
    EXPECT_EQ(number(gamuts[0], "area"), 0.0);
    EXPECT_EQ(slice(QStringList{cmyk} + words("--lightness 95")).output, "profile,ring,L,a,b,C\n");
}

TEST_F(SliceTest, refusesALightnessBeyondTheScale)
{
    for (const char* value : {"150", "100.1", "-1"})
        EXPECT_TRUE(failedWith(
            slice({sRGB, QStringLiteral("--lightness"), QLatin1String(value), QStringLiteral("-o"),
                   output("svg")}),
            WrongUsage,
            QStringLiteral("kvgamut: --lightness: '%1' is not a number from 0 to 100 (see kvgamut --help)")
                .arg(QLatin1String(value))));
    EXPECT_TRUE(succeeded(slice(QStringList{sRGB} + words("--lightness 100"))));
}

TEST_F(SliceTest, aDrawingSaysWhichGamutsThePlaneMisses)
{
    const Answer answer =
        slice(QStringList{cmyk, sRGB} + words("--lightness 95 -o") + QStringList{output("svg")});
    EXPECT_EQ(answer.exitCode, Done);
    const QString start =
        QStringLiteral("kvgamut: '%1': no colours at L* 95; the gamut reaches from L* ").arg(cmyk);
    EXPECT_TRUE(answer.errors.startsWith(start.toUtf8())) << answer.errors.toStdString();
    EXPECT_TRUE(answer.errors.endsWith(" to 88.7\n")) << answer.errors.toStdString(); // the paper
    EXPECT_EQ(answer.errors.count('\n'), 1);
    EXPECT_TRUE(contents(output("svg")).contains("default_cmyk.icc"));
}

TEST_F(SliceTest, settingsHaveAnEffect)
{
    const QStringList plain = QStringList{cmyk} + words("--lightness 50");
    const QByteArray usual = slice(plain).output;
    EXPECT_NE(slice(plain + words("--intent relative")).output, usual);
    EXPECT_NE(slice(plain + words("--intent relative --bpc")).output,
              slice(plain + words("--intent relative")).output);
    EXPECT_NE(slice(plain + words("--grid 9")).output, usual);
}

// --- Drawings -----------------------------------------------------------------------------------------

TEST_F(SliceTest, isDrawnInTheFormatThatTheSuffixNames)
{
    const QStringList what = QStringList{sRGB, cmyk} + words("--lightness 50 -o");
    ASSERT_TRUE(succeeded(slice(what + QStringList{output("png")})));
    ASSERT_TRUE(succeeded(slice(what + QStringList{output("SVG")})));
    ASSERT_TRUE(succeeded(slice(what + QStringList{output("pdf")})));
    ASSERT_TRUE(succeeded(slice(what + QStringList{output("csv")})));
    EXPECT_EQ(QImage(output("png")).size(), QSize(1000, 750));
    EXPECT_TRUE(contents(output("pdf")).startsWith("%PDF-"));
    EXPECT_TRUE(contents(output("csv")).startsWith("profile,"));
    QXmlStreamReader svg(contents(output("SVG")));
    while (!svg.atEnd())
        svg.readNext();
    EXPECT_FALSE(svg.hasError()) << svg.errorString().toStdString();
}

TEST_F(SliceTest, theFormatOptionTakesPrecedenceOverTheSuffix)
{
    const Answer answer = slice(QStringList{sRGB} + words("--hue 30 --format png -o -"));
    EXPECT_TRUE(succeeded(answer));
    EXPECT_FALSE(QImage::fromData(answer.output, "PNG").isNull());
    const QString odd = path(QStringLiteral("drawing"));
    EXPECT_TRUE(succeeded(slice(QStringList{sRGB} + words("--hue 30 --format svg -o") + QStringList{odd})));
    EXPECT_TRUE(contents(odd).contains("<svg"));
}

TEST_F(SliceTest, drawsNamesWithControlCharactersAsWellFormedSvg)
{
    const QString odd = path(QStringLiteral("a\x1b[31m\x01<&>.icc"));
    write(odd, AffineDevice::profile());
    const Answer answer = slice(QStringList{odd} + words("--lightness 50 --format svg"));
    EXPECT_TRUE(succeeded(answer));
    QXmlStreamReader svg(answer.output);
    while (!svg.atEnd())
        svg.readNext();
    EXPECT_FALSE(svg.hasError()) << svg.errorString().toStdString();
    EXPECT_TRUE(answer.output.contains("a\\x1b[31m\\x01&lt;&amp;"));
}

TEST_F(SliceTest, aDrawingIsTheSameFileEachTime)
{
    // each process has another hash seed, so that output in hash order would differ between runs
    constexpr int processes = 6;
    for (const char* format : {"png", "svg", "pdf"})
        for (const char* what : {"--lightness 50", "--rings"}) {
            const QStringList arguments = QStringList{sRGB, cmyk} + words(what) +
                                          QStringList{QStringLiteral("--format"), QLatin1String(format)};
            const Answer first = slice(arguments);
            ASSERT_TRUE(succeeded(first));
            for (int i = 1; i < processes; ++i)
                EXPECT_TRUE(slice(arguments).output == first.output) << format << " " << what;
        }
}

TEST_F(SliceTest, theLegendStatesProfileIntentWhiteAndArea)
{
    const Answer answer =
        slice(QStringList{cmyk, sRGB} + words("--lightness 50 --intent relative --format svg"));
    ASSERT_TRUE(succeeded(answer));
    const QByteArray& svg = answer.output;
    for (const char* part : {">default_cmyk.icc<", ">sRGB<", ">relative intent<", ">white L* 100.0",
                             " dE\xc2\xb2<", "Gamut slice at L* = 50", ">a*<", ">b*<",
                             ">\xe2\x88\x92"
                             "40<"})
        EXPECT_TRUE(svg.contains(part)) << part;
    EXPECT_FALSE(svg.contains(cmyk.toUtf8()));
    const Answer rings = slice(QStringList{sRGB} + words("--rings --format svg"));
    for (const char* part : {">volume 833,", "Gamut rings", ">RSS<", ">L* 10<", ">L* 50<", ">L* 100<"})
        EXPECT_TRUE(rings.output.contains(part)) << part;
    const Answer hue = slice(QStringList{sRGB} + words("--hue 40 --format svg"));
    for (const char* part : {">C*<", ">L*<", "hue h = 40"})
        EXPECT_TRUE(hue.output.contains(part)) << part;
}

TEST_F(SliceTest, filesWithTheSameNameAreListedWithTheirFolders)
{
    const QString one = path(QStringLiteral("one")), other = path(QStringLiteral("other"));
    ASSERT_TRUE(QDir().mkdir(one) && QDir().mkdir(other));
    const QString files[] = {one + QStringLiteral("/p.icc"), other + QStringLiteral("/p.icc")};
    ASSERT_TRUE(QFile::copy(affine(), files[0]) && QFile::copy(cmyk, files[1]));
    const QStringList both{files[0], files[1], QStringLiteral("--lightness"), QStringLiteral("50")};
    const QJsonArray gamuts = json(both);
    EXPECT_EQ(gamuts[0].toObject()[QLatin1String("profile")].toString(), files[0]);
    EXPECT_EQ(gamuts[1].toObject()[QLatin1String("profile")].toString(), files[1]);
    const QByteArray svg = slice(both + words("--size 3000x600 --format svg")).output;
    for (const QString& file : files)
        EXPECT_TRUE(svg.contains('>' + file.toUtf8() + '<'));
}

TEST_F(SliceTest, sizeAndColourHaveAnEffect)
{
    const QStringList what = QStringList{sRGB} + words("--lightness 50 --format png");
    EXPECT_EQ(QImage::fromData(slice(what + words("--size 640x480")).output).size(), QSize(640, 480));
    const auto magenta = [](const QByteArray& png) {
        const QImage picture = QImage::fromData(png);
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == QColor(255, 0, 255) ? 1 : 0;
        return count;
    };
    EXPECT_EQ(magenta(slice(what).output), 0);
    EXPECT_GT(magenta(slice(what + words("--color #ff00ff")).output), 300);
}

TEST_F(SliceTest, fillsWithTrueColoursOnRequest)
{
    // grey: L* 53.6 is sRGB 128
    const QStringList what = QStringList{sRGB} + words("--lightness 53.585 --size 900x900 --format png");
    const auto greys = [](const QByteArray& png) {
        const QImage picture = QImage::fromData(png);
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += difference(picture.pixelColor(x, y), QColor(128, 128, 128)) <= 3 ? 1 : 0;
        return count;
    };
    const QByteArray tinted = slice(what).output;
    EXPECT_EQ(slice(what + words("--fill tint")).output, tinted);
    EXPECT_GT(greys(slice(what + words("--fill colors")).output), greys(tinted) + 5);
}

TEST_F(SliceTest, plotsPointsNearTheCut)
{
    const QString one = path(QStringLiteral("one.csv")), other = path(QStringLiteral("other.csv"));
    write(one, "L;a;b;name\n50;0;0;grey <1>\n52;90;90;orange\n53;0;0;light\n");
    write(other, "L;a;b;name\n49;20;20;brown\n");
    const QStringList what = QStringList{sRGB} + words("--lightness 50 --format svg --points") +
                             QStringList{one, QStringLiteral("--points"), other};
    const Answer answer = slice(what);
    ASSERT_TRUE(succeeded(answer));
    for (const char* part :
         {">inside sRGB: 2<", ">outside sRGB: 1<", ">grey &lt;1&gt;<", ">orange<", ">brown<"})
        EXPECT_TRUE(answer.output.contains(part)) << part;
    EXPECT_FALSE(answer.output.contains(">light<"));
    EXPECT_TRUE(slice(what + words("--points-within 3")).output.contains(">inside sRGB: 3<"));
    EXPECT_TRUE(slice(what + words("--points-within 0")).output.contains(">inside sRGB: 1<"));
}

TEST_F(SliceTest, drawsTheRestIfPointsCannotBeRead)
{
    const QString missing = path(QStringLiteral("missing.csv"));
    const Answer answer =
        slice(QStringList{sRGB} + words("--lightness 50 --format svg --points") + QStringList{missing});
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(
        answer.errors,
        QStringLiteral("kvgamut: '%1': cannot be read: No such file or directory\n").arg(missing).toUtf8());
    EXPECT_TRUE(answer.output.contains(">sRGB<"));
}

TEST_F(SliceTest, doesNotOverwriteItsPoints)
{
    const QString points = path(QStringLiteral("points.svg"));
    write(points, "50,0,0\n");
    const Answer answer = slice(QStringList{sRGB} + words("--lightness 50 --points") +
                                QStringList{points, QStringLiteral("-o"), points});
    EXPECT_EQ(answer.exitCode, WrongUsage);
    EXPECT_EQ(contents(points), "50,0,0\n");
}

// --- Errors -------------------------------------------------------------------------------------------

TEST_F(SliceTest, writesTheRestWhenOneInputIsBad)
{
    const QString missing = path(QStringLiteral("missing.icc"));
    const Answer alone = slice(QStringList{sRGB} + words("--lightness 50"));
    for (const QStringList& inputs : {QStringList{missing, sRGB}, QStringList{sRGB, missing}}) {
        const Answer answer = slice(inputs + words("--lightness 50"));
        EXPECT_EQ(answer.exitCode, BadInput);
        EXPECT_EQ(answer.errors, QStringLiteral("kvgamut: '%1': no such file\n").arg(missing).toUtf8());
        EXPECT_EQ(answer.output, alone.output);
    }
}

TEST_F(SliceTest, writesNothingIfNoInputIsUsable)
{
    const Answer answer = slice({path(QStringLiteral("missing.icc")), QStringLiteral(KVGAMUT_GREY_PROFILE),
                                 QStringLiteral("--rings"), QStringLiteral("-o"), output("svg")});
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors.count('\n'), 2);
    EXPECT_FALSE(QFile::exists(output("svg")));
}

TEST_F(SliceTest, reportsWhatItCannotWrite)
{
    const QString nowhere = path(QStringLiteral("no folder/a.svg"));
    EXPECT_TRUE(failedWith(
        slice(QStringList{sRGB} + words("--hue 3 -o") + QStringList{nowhere}), BadOutput,
        QStringLiteral("kvgamut: '%1': cannot be written: No such file or directory").arg(nowhere)));
    const Answer closed =
        shell(QStringLiteral("set -o pipefail; \"$KVGAMUT\" slice sRGB --rings --format json | true"));
    EXPECT_EQ(closed.exitCode, BadOutput);
    EXPECT_EQ(closed.errors, ""); // the reader has enough
}

TEST_F(SliceTest, refusesInvalidArguments)
{
    for (const char* line :
         {"sRGB", "--lightness 50", "sRGB --lightness 50 --hue 3", "sRGB --lightness 50 --rings",
          "sRGB --hue 3 --rings", "sRGB --lightness high", "sRGB --lightness nan", "sRGB --hue 361",
          "sRGB --rings -o x.txt", "sRGB --rings -o x", "sRGB --rings --format text", "sRGB --rings --size 3",
          "sRGB --rings --color blurple", "sRGB --rings --fill colors -o x.svg", "sRGB --hue 3 --fill blue",
          "sRGB --rings --points x.csv -o x.svg", "sRGB --hue 3 --points x.csv",
          "sRGB --hue 3 --points-within 3 -o x.svg",
          "sRGB --hue 3 --points x.csv --points-within -1 -o x.svg"}) {
        const Answer answer = slice(words(line));
        EXPECT_EQ(answer.exitCode, WrongUsage) << line;
        EXPECT_EQ(answer.errors.count('\n'), 1) << answer.errors.toStdString();
        EXPECT_TRUE(answer.output.isEmpty());
    }
    EXPECT_TRUE(slice(words("sRGB --rings -o x.txt")).errors.contains(".csv, .json, .svg, .png and .pdf"));
}

} // namespace
