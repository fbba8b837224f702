// SPDX-License-Identifier: Apache-2.0
#include "app/support/Picture.h"
#include "app/support/Program.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cmath>

using namespace kvtest;

namespace {

using RenderTest = ProgramTest;

// --- Light --------------------------------------------------------------------------------------------

TEST_F(RenderTest, theLitSideIsBrighter)
{
    const QString ball = path(QStringLiteral("ball.csv"));
    write(ball, "L,a,b,colour\n50,0,0,white\n");
    const QStringList look = words("sRGB --size 200x200 --camera 50,0,-450 --no-surface --no-projection "
                                   "--no-axes --no-grid --marker-size 90 --markers") +
                             QStringList{ball};
    struct Side
    {
        const char* light;
        Lab bright, dark;
    };
    for (const Side& side :
         {Side{"50,300,-100", {50, 35, 0}, {50, -35, 0}}, Side{"50,-300,-100", {50, -35, 0}, {50, 35, 0}},
          Side{"300,0,-100", {85, 0, 0}, {15, 0, 0}}, Side{"-200,0,-100", {15, 0, 0}, {85, 0, 0}}}) {
        const QImage picture =
            rendered(look + QStringList{QStringLiteral("--light"), QLatin1String(side.light)});
        const PinholeCamera camera = freeCamera({50, 0, -450}, {50, 0, 0}, {200, 200});
        EXPECT_GT(picture.pixelColor(camera.pixelOf(side.bright)).value(),
                  picture.pixelColor(camera.pixelOf(side.dark)).value() + 20)
            << side.light;
    }
}

TEST_F(RenderTest, colouredLightFiltersColours)
{
    const QStringList look = words("sRGB --size 300x300 --frame none --view top --ambient 0 --no-axes");
    const QPoint white = topCamera({300, 300}).pixelOf({95, 2, 2});
    const QColor inWhite = rendered(look).pixelColor(white);
    const QColor inYellow = rendered(look + words("--light-color yellow")).pixelColor(white);
    EXPECT_GT(inWhite.blue(), 100);
    EXPECT_LT(inYellow.blue(), inWhite.blue() / 2);
    EXPECT_NEAR(inYellow.red(), inWhite.red(), 3);
}

// --- Shaders ------------------------------------------------------------------------------------------

/// A copy of the program, with files of its own beside it.
class ShaderTest : public RenderTest
{
protected:
    Answer render()
    {
        QDir().mkpath(path(QStringLiteral("bin")));
        QFile::copy(QStringLiteral(KVGAMUT_BINARY), path(QStringLiteral("bin/kvgamut")));
        // the program finds its libraries in ../lib
        QFile::link(QFileInfo(QStringLiteral(KVGAMUT_BINARY)).path() + QStringLiteral("/../lib"),
                    path(QStringLiteral("lib")));
        return shell(QStringLiteral("\"$1\" render sRGB --size 64x48 -o \"$2\""),
                     {path(QStringLiteral("bin/kvgamut")), output()});
    }

    QString output() const { return path(QStringLiteral("out.png")); }
};

TEST_F(ShaderTest, thatIsFaultyGivesAnErrorAndNoPicture)
{
    QDir().mkpath(path(QStringLiteral("Resources/Shaders")));
    const QString vertex = path(QStringLiteral("Resources/Shaders/simple.vert"));
    const QString fragment = path(QStringLiteral("Resources/Shaders/simple.frag"));
    write(vertex, "void main() { gl_Position = gl_Vertex; }");
    write(fragment, "void main() { gl_FragColor = nothing; }");
    const Answer answer = render();
    EXPECT_EQ(answer.exitCode, BadOutput);
    const QString said = QString::fromUtf8(answer.errors);
    EXPECT_TRUE(said.startsWith(QStringLiteral("kvgamut: '%1': the shader cannot be built: ").arg(fragment)))
        << said.toStdString();
    EXPECT_EQ(said.count(QLatin1Char('\n')), 1) << said.toStdString();
    EXPECT_FALSE(QFile::exists(output()));
}

TEST_F(ShaderTest, isPartOfTheProgramWithoutFiles)
{
    EXPECT_TRUE(succeeded(render()));
    EXPECT_EQ(QImage(output()), rendered(words("sRGB --size 64x48 --annotate all")));
}

// --- Transparent background ---------------------------------------------------------------------------

class TransparencyTest : public RenderTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(TransparencyTest, showsOnAnyColourWhatIsDrawnOnThatColour)
{
    const QStringList look = words(GetParam()) + words("--size 320x240");
    const QImage picture = rendered(look + words("--no-background"));
    ASSERT_TRUE(picture.hasAlphaChannel());
    for (const QColor& background : {QColor(0xc0, 0x30, 0x80), QColor(0x10, 0xa0, 0xff)}) {
        const QImage expected =
            rendered(look + QStringList{QStringLiteral("--background"), background.name()});
        int worst = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QColor front = picture.pixelColor(x, y);
                const double alpha = front.alpha() / 255.0;
                const auto mix = [alpha](int f, int b) {
                    return static_cast<int>(std::lround(alpha * f + (1.0 - alpha) * b));
                };
                worst = std::max(worst, difference(QColor(mix(front.red(), background.red()),
                                                          mix(front.green(), background.green()),
                                                          mix(front.blue(), background.blue())),
                                                   expected.pixelColor(x, y)));
            }
        // each translucent layer is rounded to 256 steps
        EXPECT_LE(worst, 3) << background.name().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(OfAScene, TransparencyTest,
                         testing::Values("sRGB", "sRGB DisplayP3", "sRGB --alpha 0.3", "sRGB --plane",
                                         "sRGB --mode wireframe --orthogonal"));

TEST_F(RenderTest, withoutBackgroundOnlyWhatIsDrawnIsOpaque)
{
    const QImage picture =
        rendered(words("sRGB --no-background --size 300x300 --frame none --view top --no-grid --no-axes"));
    const PinholeCamera camera = topCamera({300, 300});
    EXPECT_EQ(picture.pixelColor(camera.pixelOf({60, 30, 20})).alpha(), 255);
    EXPECT_EQ(picture.pixel(0, 0), qRgba(0, 0, 0, 0));
    // with antialiasing the outline has pixels of intermediate opacity
    int between = 0;
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 300; ++x) {
            const int alpha = qAlpha(picture.pixel(x, y));
            between += alpha > 0 && alpha < 255 ? 1 : 0;
        }
    EXPECT_GT(between, 100);
}

TEST_F(RenderTest, aTranslucentGamutIsAsOpaqueAsItsAlpha)
{
    const QImage picture = rendered(
        words("sRGB --alpha 0.4 --no-background --size 300x300 --frame none --view top --no-grid --no-axes "
              "--no-projection"));
    // two layers with opacity 0.4: 1 - 0.6 * 0.6
    EXPECT_NEAR(qAlpha(picture.pixel(topCamera({300, 300}).pixelOf({60, 30, 20}))), 0.64 * 255.0, 2.0);
}

// --- Size ---------------------------------------------------------------------------------------------

TEST_F(RenderTest, hasTheRequestedSize)
{
    for (const char* size : {"8192x16", "16x8192"}) {
        const QByteArray bytes =
            renderedBytes({QStringLiteral("sRGB"), QStringLiteral("--size"), QLatin1String(size)});
        const QImage picture = QImage::fromData(bytes);
        EXPECT_EQ(QStringLiteral("%1x%2").arg(picture.width()).arg(picture.height()), QLatin1String(size));
    }
}

TEST_F(RenderTest, tilesShowTheSameViewAsOnePicture)
{
    const QStringList look = words("sRGB DisplayP3 --no-grid");
    const QImage large = rendered(look + words("--size 4200x3000")); // rendered in six tiles
    const QImage small = rendered(look + words("--size 1400x1000")); // rendered in one tile
    ASSERT_EQ(large.size(), QSize(4200, 3000));
    const QImage shrunk = large.scaled(1400, 1000, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    int wrong = 0;
    for (int y = 0; y < 1000; ++y)
        for (int x = 0; x < 1400; ++x)
            wrong += difference(shrunk.pixelColor(x, y), small.pixelColor(x, y)) > 48 ? 1 : 0;
    EXPECT_LT(wrong, 1400 * 1000 / 500); // only lines of one pixel differ
}

TEST_F(RenderTest, showsEachColourWhereItProjectsAlsoWhenItIsLarge)
{
    const QSize size(4500, 4500);
    const QImage picture =
        rendered(words("sRGB --size 4500x4500 --frame none --view top --ambient 1 --no-axes --no-grid"));
    for (const Device& device :
         {Device{1, 0.25, 0.25}, Device{0.25, 1, 0.5}, Device{0.5, 0.25, 1}, Device{1, 0.75, 0.5}})
        EXPECT_LE(difference(picture.pixelColor(topCamera(size).pixelOf(labOf(device))), colorOf(device)), 4);
    // sharp: from the background to the surface in two pixels, wherever a row crosses the outline
    for (const int y : {1200, 2016, 2250, 3000}) {
        int x = 0;
        while (x < 4500 && picture.pixelColor(x, y) == QColor(Qt::gray))
            ++x;
        ASSERT_LT(x, 4499);
        EXPECT_LE(difference(picture.pixelColor(x + 2, y), picture.pixelColor(x + 4, y)), 8) << y;
        EXPECT_GT(difference(picture.pixelColor(x - 1, y), picture.pixelColor(x + 2, y)), 40) << y;
    }
}

// --- Reference ----------------------------------------------------------------------------------------

class ReferenceTest : public RenderTest
{
protected:
    void SetUp() override
    {
        write(reference(), renderedBytes(look));
        ASSERT_TRUE(QFile::remove(path(QStringLiteral("picture.png"))));
    }

    QString reference() const { return path(QStringLiteral("the reference é.png")); }

    Answer compared(const char* more)
    {
        return kvgamut(QStringList{QStringLiteral("render"), QStringLiteral("--reference"), reference()} +
                       look + words(more));
    }

    const QStringList look = words("sRGB --size 200x150 --annotate none");
};

TEST_F(ReferenceTest, matchesTheSamePicture)
{
    EXPECT_TRUE(succeeded(compared("--reference-threshold 0")));
    EXPECT_EQ(files().size(), 1); // no other file is written
}

TEST_F(ReferenceTest, reportsTheDifferenceInOneLine)
{
    const Answer answer = compared("--view top");
    EXPECT_EQ(answer.exitCode, Different);
    EXPECT_EQ(answer.errors.count('\n'), 1);
    EXPECT_TRUE(answer.errors.contains("the reference é.png': the picture differs from the reference by "))
        << answer.errors.toStdString();
    EXPECT_TRUE(answer.errors.endsWith(" percent; the threshold is 0.5\n")) << answer.errors.toStdString();
    EXPECT_EQ(files().size(), 1);
}

TEST_F(ReferenceTest, measuresTheRootMeanSquareOfTheDifference)
{
    const QImage one = QImage::fromData(contents(reference()));
    const QImage other = rendered(look + words("--background #607080"));
    double sum = 0.0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y), b = other.pixelColor(x, y);
            sum += std::pow(a.red() - b.red(), 2) + std::pow(a.green() - b.green(), 2) +
                   std::pow(a.blue() - b.blue(), 2);
        }
    const double percent = 100.0 * std::sqrt(sum / (3.0 * one.width() * one.height())) / 255.0;
    const Answer answer = compared("--background #607080");
    const QByteArray said = answer.errors.mid(answer.errors.indexOf("by ") + 3);
    EXPECT_NEAR(said.left(said.indexOf(' ')).toDouble(), percent, 0.0002);
}

TEST_F(ReferenceTest, acceptsDifferencesWithinTheThreshold)
{
    EXPECT_EQ(compared("--ambient 0.56").exitCode, Done);
    EXPECT_EQ(compared("--ambient 0.56 --reference-threshold 0").exitCode, Different);
    EXPECT_EQ(compared("--view top --reference-threshold 100").exitCode, Done);
}

TEST_F(ReferenceTest, neverMatchesAPictureOfAnotherSize)
{
    const Answer answer =
        kvgamut(QStringList{QStringLiteral("render"), QStringLiteral("--reference"), reference(),
                            QStringLiteral("--reference-threshold"), QStringLiteral("100"),
                            QStringLiteral("sRGB"), QStringLiteral("--size"), QStringLiteral("150x200")});
    EXPECT_TRUE(
        failedWith(answer, Different,
                   QStringLiteral("kvgamut: '%1': the picture is 150x200 pixels large, the reference 200x150")
                       .arg(reference())));
}

TEST_F(ReferenceTest, theDifferingPictureIsWrittenWhenAsked)
{
    const QString output = path(QStringLiteral("out.png"));
    const QByteArray before = contents(reference());
    const Answer answer = kvgamut(QStringList{QStringLiteral("render"), QStringLiteral("--reference"),
                                              reference(), QStringLiteral("-o"), output} +
                                  look + words("--frame none --view top"));
    EXPECT_EQ(answer.exitCode, Different);
    EXPECT_EQ(contents(output), renderedBytes(look + words("--frame none --view top")));
    EXPECT_EQ(contents(reference()), before);
}

TEST_F(ReferenceTest, comparesOpacity)
{
    write(reference(), renderedBytes(look + words("--no-background")));
    EXPECT_TRUE(succeeded(compared("--no-background --reference-threshold 0")));
    EXPECT_EQ(compared("--background black").exitCode, Different);
}

TEST_F(ReferenceTest, reportsAnUnreadableReferenceAsBadInput)
{
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("no picture"), contents(reference()).left(100)}) {
        write(reference(), bytes);
        const Answer answer = compared("");
        EXPECT_EQ(answer.exitCode, BadInput);
        EXPECT_EQ(answer.errors.count('\n'), 1) << answer.errors.toStdString();
        EXPECT_TRUE(answer.errors.contains("the reference é.png': not a readable PNG picture: "))
            << answer.errors.toStdString();
    }
    ASSERT_TRUE(QFile::remove(reference()));
    EXPECT_EQ(compared("").exitCode, BadInput);
}

} // namespace
