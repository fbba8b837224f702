// SPDX-License-Identifier: Apache-2.0
#include "app/support/Picture.h"
#include "app/support/Program.h"

#include <QtCore/QFile>

#include <vector>

using namespace kvtest;

namespace {

using PictureTest = ProgramTest;

// A pixel of the pictures below covers less than half a Lab unit, over which the surface's colour
// changes by a few steps.
constexpr int pixelTolerance = 8;
constexpr QSize size(600, 600);
const QString sizeText = QStringLiteral("600x600");
const QColor grey(Qt::gray);

// Points inside the faces of the device cube. Those with a channel at its maximum bound the gamut from
// above, those with one at its minimum from below.
const std::vector<Device> upperFaces{{1, 0.25, 0.25}, {1, 0.5, 0.25}, {1, 0.75, 0.5}, {1, 0.5, 0.75},
                                     {0.25, 1, 0.25}, {0.5, 1, 0.25}, {0.75, 1, 0.5}, {0.5, 1, 0.75},
                                     {0.25, 0.25, 1}, {0.5, 0.25, 1}, {0.5, 0.75, 1}, {0.75, 0.5, 1}};
const std::vector<Device> lowerFaces{{0, 0.5, 0.25}, {0, 0.75, 0.5}, {0, 0.5, 0.75},
                                     {0.5, 0, 0.25}, {0.75, 0, 0.5}, {0.75, 0, 0.25},
                                     {0.5, 0.25, 0}, {0.75, 0.5, 0}, {0.5, 0.75, 0}};

void expectColours(const QImage& picture, const PinholeCamera& camera, const std::vector<Device>& devices)
{
    for (const Device& device : devices) {
        const QPoint pixel = camera.pixelOf(labOf(device));
        const QColor seen = picture.pixelColor(pixel);
        EXPECT_LE(difference(seen, colorOf(device)), pixelTolerance)
            << testing::PrintToString(device) << " at (" << pixel.x() << ", " << pixel.y() << ") is "
            << seen.name().toStdString();
    }
}

TEST_F(PictureTest, isAPngOfTheGivenSize)
{
    const QByteArray bytes =
        renderedBytes({QStringLiteral("sRGB"), QStringLiteral("--size"), QStringLiteral("321x203")});
    EXPECT_TRUE(bytes.startsWith("\x89PNG\r\n\x1a\n"));
    EXPECT_EQ(QImage::fromData(bytes).size(), QSize(321, 203));
}

TEST_F(PictureTest, isWiderThanTheScreenWhenAsked)
{
    // the screen of these tests has 1280x1024 pixels; the part of the window outside it is drawn, too
    const QSize large(2000, 1500);
    const QImage picture =
        rendered({QStringLiteral("sRGB"), QStringLiteral("--size"), QStringLiteral("2000x1500"),
                  QStringLiteral("--frame"), QStringLiteral("none"), QStringLiteral("--view"),
                  QStringLiteral("top"), QStringLiteral("--ambient"), QStringLiteral("1")});
    ASSERT_EQ(picture.size(), large);
    expectColours(picture, topCamera(large), upperFaces);
    EXPECT_EQ(picture.pixelColor(1999, 1499), grey);
}

TEST_F(PictureTest, hasTheSmallestSize)
{
    const QImage picture =
        rendered({QStringLiteral("sRGB"), QStringLiteral("--size"), QStringLiteral("16x16"),
                  QStringLiteral("--frame"), QStringLiteral("none"), QStringLiteral("--view"),
                  QStringLiteral("top"), QStringLiteral("--no-grid")});
    ASSERT_EQ(picture.size(), QSize(16, 16));
    EXPECT_EQ(picture.pixelColor(0, 0), grey);
    EXPECT_NE(picture.pixelColor(8, 8), grey);
}

TEST_F(PictureTest, isTheSameFileEachTime)
{
    const QStringList arguments{QStringLiteral("sRGB"), QStringLiteral("DisplayP3"),
                                QStringLiteral(KVGAMUT_CMYK_PROFILE), QStringLiteral("--size"),
                                QStringLiteral("400x300")};
    const QByteArray first = renderedBytes(arguments);
    ASSERT_FALSE(first.isEmpty());
    EXPECT_EQ(first, renderedBytes(arguments));
    EXPECT_EQ(first, renderedBytes(arguments));
}

TEST_F(PictureTest, hasTheSameSizeForEveryScaleFactor)
{
    const QString file = path(QStringLiteral("picture.png"));
    const QStringList arguments{QStringLiteral("sRGB"), QStringLiteral("--size"), QStringLiteral("200x150"),
                                QStringLiteral("--annotate"), QStringLiteral("none")};
    const QByteArray plain = renderedBytes(arguments);
    QProcessEnvironment magnified = environment();
    magnified.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    ASSERT_TRUE(succeeded(
        kvgamut(QStringList{QStringLiteral("render"), QStringLiteral("-o"), file} + arguments, magnified)));
    EXPECT_EQ(contents(file), plain);
}

TEST_F(PictureTest, hasTheBackgroundColourAroundTheScene)
{
    const QStringList arguments{QStringLiteral("sRGB"), QStringLiteral("--size"), QStringLiteral("200x150")};
    const QImage usual = rendered(arguments);
    const QImage blue =
        rendered(arguments + QStringList{QStringLiteral("--background"), QStringLiteral("#102040")});
    for (const QPoint corner : {QPoint(0, 0), QPoint(199, 0)}) {
        EXPECT_EQ(usual.pixelColor(corner), grey);
        EXPECT_EQ(blue.pixelColor(corner), QColor(0x10, 0x20, 0x40));
    }
}

TEST_F(PictureTest, showsFromAboveEachColourOfTheUpperFacesWhereItProjects)
{
    const QImage picture =
        rendered({QStringLiteral("sRGB"), QStringLiteral("--size"), sizeText, QStringLiteral("--frame"),
                  QStringLiteral("none"), QStringLiteral("--view"), QStringLiteral("top"),
                  QStringLiteral("--ambient"), QStringLiteral("1")});
    expectColours(picture, topCamera(size), upperFaces);
}

TEST_F(PictureTest, showsFromBelowEachColourOfTheLowerFacesWhereItProjects)
{
    const QImage picture =
        rendered({QStringLiteral("sRGB"), QStringLiteral("--size"), sizeText, QStringLiteral("--frame"),
                  QStringLiteral("none"), QStringLiteral("--view"), QStringLiteral("bottom"),
                  QStringLiteral("--ambient"), QStringLiteral("1"), QStringLiteral("--no-grid"),
                  QStringLiteral("--no-axes")});
    expectColours(picture, bottomCamera(size), lowerFaces);
}

TEST_F(PictureTest, showsFromTheSideTheFacesThatLookThere)
{
    // seen from -b*, the blue face and the red face are visible
    const QImage picture =
        rendered({QStringLiteral("sRGB"), QStringLiteral("--size"), sizeText, QStringLiteral("--camera"),
                  QStringLiteral("230,120,-420"), QStringLiteral("--look-at"), QStringLiteral("35,10,-5"),
                  QStringLiteral("--ambient"), QStringLiteral("1"), QStringLiteral("--no-axes")});
    const std::vector<Device> seen{{0.25, 0.25, 1}, {0.5, 0.25, 1}, {0.5, 0.75, 1}, {0.75, 0.5, 1},
                                   {0.5, 0.5, 1},   {1, 0.25, 0.5}, {1, 0.5, 0.5},  {1, 0.5, 0.75}};
    expectColours(picture, freeCamera({230, 120, -420}, {35, 10, -5}, size), seen);
}

TEST_F(PictureTest, keepsTheScaleOfLabInWideAndInTallPictures)
{
    for (const QSize shape : {QSize(900, 450), QSize(450, 900)}) {
        const QImage picture =
            rendered({QStringLiteral("sRGB"), QStringLiteral("--size"),
                      QStringLiteral("%1x%2").arg(shape.width()).arg(shape.height()),
                      QStringLiteral("--camera"), QStringLiteral("230,120,-420"), QStringLiteral("--look-at"),
                      QStringLiteral("35,10,-5"), QStringLiteral("--angle"), QStringLiteral("60"),
                      QStringLiteral("--ambient"), QStringLiteral("1"), QStringLiteral("--no-axes")});
        const std::vector<Device> seen{{0.5, 0.25, 1}, {0.5, 0.75, 1}, {0.5, 0.5, 1}, {1, 0.5, 0.5}};
        // a pixel covers more of the surface here
        for (const Device& device : seen) {
            const QPoint pixel =
                freeCamera({230, 120, -420}, {35, 10, -5}, shape, 60.0).pixelOf(labOf(device));
            EXPECT_LE(difference(picture.pixelColor(pixel), colorOf(device)), 2 * pixelTolerance)
                << testing::PrintToString(device) << " in " << shape.width() << "x" << shape.height();
        }
    }
}

TEST_F(PictureTest, isShadedByLightButNeitherBlackNorOverexposed)
{
    const QImage picture =
        rendered({QStringLiteral("sRGB"), QStringLiteral("--size"), sizeText, QStringLiteral("--frame"),
                  QStringLiteral("none"), QStringLiteral("--view"), QStringLiteral("top"),
                  QStringLiteral("--ambient"), QStringLiteral("0.2")});
    double darkest = 1.0;
    double brightest = 0.0;
    for (const Device& device : upperFaces) {
        const QColor seen = picture.pixelColor(topCamera(size).pixelOf(labOf(device)));
        const QColor pure = colorOf(device);
        const double share = (seen.redF() + seen.greenF() + seen.blueF()) /
                             static_cast<double>(pure.redF() + pure.greenF() + pure.blueF());
        darkest = std::min(darkest, share);
        brightest = std::max(brightest, share);
    }
    EXPECT_GT(darkest, 0.2);
    EXPECT_LT(darkest, 0.95);
    EXPECT_LE(brightest, 1.03); // the pixel tolerance
}

TEST_F(PictureTest, letsTheFirstGamutShineThroughTheLaterOnes)
{
    // Here the surface of the wider gamut is clearly outside the narrower one. The narrower gamut is opaque,
    // so that the pixel shows it through one translucent layer of the wider gamut.
    const std::vector<Device> devices{{1, 0.25, 0.25}, {1, 0.5, 0.25}, {0.25, 1, 0.25}, {0.5, 1, 0.25}};
    const QStringList look{QStringLiteral("--size"),    sizeText,
                           QStringLiteral("--frame"),   QStringLiteral("none"),
                           QStringLiteral("--view"),    QStringLiteral("top"),
                           QStringLiteral("--ambient"), QStringLiteral("1")};
    const QImage narrow = rendered(QStringList{QStringLiteral("sRGB")} + look);
    const QImage wide = rendered(QStringList{QStringLiteral("DisplayP3")} + look);
    const QImage both = rendered(QStringList{QStringLiteral("sRGB"), QStringLiteral("DisplayP3")} + look);
    for (const Device& device : devices) {
        const QPoint pixel = topCamera(size).pixelOf(labOf(device));
        const QColor inner = narrow.pixelColor(pixel);
        const QColor outer = wide.pixelColor(pixel);
        const QColor expected = QColor::fromRgbF(0.65f * inner.redF() + 0.35f * outer.redF(),
                                                 0.65f * inner.greenF() + 0.35f * outer.greenF(),
                                                 0.65f * inner.blueF() + 0.35f * outer.blueF());
        EXPECT_LE(difference(both.pixelColor(pixel), expected), 2) << testing::PrintToString(device);
    }
}

TEST_F(PictureTest, putsNoColourOutsideTheOutlineOfTheGamut)
{
    const QImage picture =
        rendered({QStringLiteral("sRGB"), QStringLiteral("--size"), sizeText, QStringLiteral("--frame"),
                  QStringLiteral("none"), QStringLiteral("--view"), QStringLiteral("top"),
                  QStringLiteral("--no-grid"), QStringLiteral("--no-axes")});
    const PinholeCamera camera = topCamera(size);
    // farther out than yellow, red, blue, cyan and green, at their lightness
    const Lab beyond[] = {{97, 0, 105}, {54, 95, 82}, {30, 77, -126}, {91, -63, -19}, {88, -92, 94}};
    for (const Lab& lab : beyond)
        EXPECT_EQ(picture.pixelColor(camera.pixelOf(lab)), grey) << lab.L << ", " << lab.a << ", " << lab.b;
}

TEST_F(PictureTest, showsThePaperOfAPrinterWhiteRelativeToItselfAndDarkerAbsolutely)
{
    const QStringList look{QStringLiteral(KVGAMUT_CMYK_PROFILE),
                           QStringLiteral("--size"),
                           QStringLiteral("200x200"),
                           QStringLiteral("--frame"),
                           QStringLiteral("none"),
                           QStringLiteral("--view"),
                           QStringLiteral("top"),
                           QStringLiteral("--ambient"),
                           QStringLiteral("1"),
                           QStringLiteral("--no-axes")};
    const QImage relative =
        rendered(look + QStringList{QStringLiteral("--intent"), QStringLiteral("relative")});
    const QImage absolute = rendered(look);
    // relative to itself, paper white is neutral, so it is in the middle of the picture
    EXPECT_LE(difference(relative.pixelColor(100, 100), Qt::white), pixelTolerance);
    EXPECT_LT(absolute.pixelColor(100, 100).lightness(), 245);
    EXPECT_GT(absolute.pixelColor(100, 100).lightness(), 180);
}

} // namespace
