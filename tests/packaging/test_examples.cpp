// SPDX-License-Identifier: Apache-2.0
// Runs each example and checks the picture that it writes.

#include "app/support/Picture.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include <set>

using namespace kvtest;

namespace {

const QColor grey(Qt::gray);

class ExampleTest : public testing::Test
{
protected:
    /// Path of a copy of an sRGB profile; the tests compute its colours from the definition of sRGB.
    QString srgbProfile()
    {
        const QString path = m_folder.filePath(QStringLiteral("srgb.icc"));
        return QFile::copy(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc"), path) ? path : QString();
    }

    /// Runs example @p name with @p arguments and reads back the picture that it wrote; null when it failed.
    QImage drawn(const QString& name, QStringList arguments)
    {
        const QString file = m_folder.filePath(name + QStringLiteral(".png"));
        QProcess example;
        example.setProcessChannelMode(QProcess::MergedChannels);
        arguments << QStringLiteral("--picture") << file;
        example.start(QStringLiteral(EXAMPLES) + QStringLiteral("/example_") + name, arguments);
        const bool ended = example.waitForFinished(300000);
        EXPECT_TRUE(ended && example.exitStatus() == QProcess::NormalExit && example.exitCode() == 0)
            << example.readAll().constData();
        return QImage(file);
    }

private:
    QTemporaryDir m_folder;
};

/// The sixths of the hue circle that occur in @p part of a picture in saturated colours.
std::set<int> strongHues(const QImage& picture, const QRect& part)
{
    std::set<int> sixths;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            if (colour.hsvSaturation() > 128 && colour.value() > 128)
                sixths.insert(colour.hsvHue() * 6 / 360);
        }
    return sixths;
}

int darkPixels(const QImage& picture, const QRect& part)
{
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            count += picture.pixelColor(x, y).lightness() < 100 ? 1 : 0;
    return count;
}

TEST_F(ExampleTest, theWindowShowsTheMarkersAroundTheGamut)
{
    const QImage picture = drawn(QStringLiteral("window"), {srgbProfile()});
    ASSERT_EQ(picture.size(), QSize(640, 480));
    EXPECT_EQ(picture.pixelColor(2, 2), grey);

    // The cyan of the press lies outside of sRGB. Nothing is in front of its marker, which is lit from the
    // side.
    const PinholeCamera camera = freeCamera({265, 160, -450}, {40, 0, 0}, picture.size());
    const QColor marker = picture.pixelColor(camera.pixelOf({55, -37, -50}));
    EXPECT_LT(marker.red(), 60) << marker.name().toStdString();
    EXPECT_GT(marker.green(), 120) << marker.name().toStdString();
    EXPECT_EQ(marker.green(), marker.blue()) << marker.name().toStdString();

    // The surface is translucent: the colour is between that of the surface and that of the background.
    const Device onTheBlueFace{0.5, 0.5, 1};
    const QColor surface = picture.pixelColor(camera.pixelOf(labOf(onTheBlueFace)));
    EXPECT_GT(difference(surface, grey), 20) << surface.name().toStdString();
    EXPECT_GT(difference(surface, colorOf(onTheBlueFace)), 20) << surface.name().toStdString();
}

TEST_F(ExampleTest, theDocksSurroundTheGamutsAndListThem)
{
    const QImage picture = drawn(QStringLiteral("docks"), {});
    ASSERT_EQ(picture.size(), QSize(1000, 600));

    const QRect middle(270, 50, 530, 500);
    EXPECT_EQ(strongHues(picture, middle).size(), 6u);
    const QRect list(5, 25, 120, 50);
    EXPECT_TRUE(strongHues(picture, list).empty()) << "the viewer covers the dock";
    EXPECT_GT(darkPixels(picture, list), 50) << "sRGB, Display P3 and their check boxes";
    const QRect below(5, 300, 120, 250);
    EXPECT_EQ(darkPixels(picture, below), 0) << "a list of two";
}

TEST_F(ExampleTest, thePictureShowsTheColoursOfTheGamutInTheSizeAskedFor)
{
    const QImage picture = drawn(QStringLiteral("picture"),
                                 {srgbProfile(), QStringLiteral("--size"), QStringLiteral("900x700")});
    ASSERT_EQ(picture.size(), QSize(900, 700));
    EXPECT_EQ(picture.pixelColor(2, 2), QColor(Qt::white));

    // Points inside the face where blue is at its maximum, which is turned towards the eye. A pixel covers
    // less than half a Lab unit, over which the surface's colour changes by a few steps.
    const PinholeCamera camera = freeCamera({300, 180, -500}, {45, 0, 0}, picture.size());
    for (const Device& device : {Device{0.25, 0.25, 1}, {0.5, 0.25, 1}, {0.25, 0.5, 1}, {0.75, 0.5, 1}}) {
        const QColor colour = picture.pixelColor(camera.pixelOf(labOf(device)));
        EXPECT_LE(difference(colour, colorOf(device)), 8)
            << testing::PrintToString(device) << ": " << colour.name().toStdString();
    }
}

#ifdef KV_WIDGET_EXAMPLE
TEST_F(ExampleTest, theWidgetLiesBelowItsCaption)
{
    const QImage picture = drawn(QStringLiteral("widget"), {srgbProfile()});
    ASSERT_EQ(picture.size(), QSize(640, 480));
    EXPECT_EQ(picture.pixelColor(2, 2), grey);
    EXPECT_GE(strongHues(picture, QRect(200, 80, 300, 300)).size(), 5u);
    const QRect caption(230, 445, 180, 12);
    EXPECT_GT(darkPixels(picture, caption), caption.width() * caption.height() / 2);
    EXPECT_EQ(darkPixels(picture, QRect(30, 445, 100, 12)), 0) << "beside it";
}
#endif

#ifdef KV_QUICK_EXAMPLE
TEST_F(ExampleTest, theItemLiesBelowTheListOfItsGamuts)
{
    const QImage picture = drawn(QStringLiteral("quick"), {srgbProfile()});
    ASSERT_EQ(picture.size(), QSize(640, 480));
    EXPECT_EQ(picture.pixelColor(2, 2), grey);
    EXPECT_GE(strongHues(picture, QRect(200, 80, 300, 300)).size(), 5u);
    EXPECT_GT(darkPixels(picture, QRect(12, 12, 150, 16)), 50) << "a row of the list";
    EXPECT_EQ(darkPixels(picture, QRect(12, 32, 150, 16)), 0) << "a list of one";
}

TEST(ExampleOfTheGuide, isTheExampleForQml)
{
    const auto read = [](const char* name) {
        QFile file(QStringLiteral(SOURCE) + QLatin1String(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll();
    };
    const QByteArray example = read("/examples/quick/Gamuts.qml");
    const QByteArray program = example.mid(example.indexOf("import")); // below the licence
    EXPECT_TRUE(read("/docs/QML.md").contains("```qml\n" + program + "```"));
    EXPECT_LT(program.count('\n'), 20);
}
#endif

TEST_F(ExampleTest, reportsAProfileThatDoesNotExist)
{
    QProcess example;
    example.start(
        QStringLiteral(EXAMPLES) + QStringLiteral("/example_window"),
        {QStringLiteral("/nowhere.icc"), QStringLiteral("--picture"), QStringLiteral("/nowhere.png")});
    ASSERT_TRUE(example.waitForFinished(300000));
    EXPECT_EQ(example.exitCode(), 1);
    EXPECT_TRUE(example.readAllStandardError().contains("nowhere.icc gives no gamut"));
}

} // namespace
