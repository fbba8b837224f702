// SPDX-License-Identifier: Apache-2.0
#include "app/support/Numbers.h"

#include <gmock/gmock.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QtEndian>
#include <QtGui/QColorSpace>

using namespace kvtest;
using testing::HasSubstr;

namespace {

/// Inputs that are neither profiles nor saved gamuts, in every command.
class InputsTest : public NumbersTest
{
protected:
    static QJsonObject row(const QString& arguments) { return json(words(arguments)).value(0); }

    static QByteArray text(const QString& arguments)
    {
        const Answer answer = run(words(arguments));
        EXPECT_TRUE(succeeded(answer)) << arguments.toStdString();
        return answer.output;
    }

    QString written(const QString& name, const QByteArray& bytes) const
    {
        write(path(name), bytes);
        return path(name);
    }
};

const QString optimal = QStringLiteral("reference body: optimal colours (D50, 2 degree observer)");

TEST_F(InputsTest, volumeSaysWhatAReferenceBodyIs)
{
    const QJsonObject found = row(QStringLiteral("volume OptimalColors"));
    EXPECT_EQ(word(found, "kind"), optimal);
    EXPECT_EQ(word(found, "method"), QStringLiteral("given surface"));
    EXPECT_EQ(word(found, "intent"), QStringLiteral("none"));
    EXPECT_FALSE(flag(found, "saved"));
    EXPECT_GT(number(found, "uncertainty"), 0.0);
    EXPECT_TRUE(found.value(QLatin1String("sha256")).isNull());
    EXPECT_THAT(text(QStringLiteral("volume OptimalColors")).toStdString(),
                HasSubstr("OptimalColors: " + optimal.toStdString() + '.'));
}

TEST_F(InputsTest, infoSaysWhatAReferenceBodyIs)
{
    const QJsonObject found = row(QStringLiteral("info OptimalColors"));
    EXPECT_EQ(word(found, "kind"), optimal);
    EXPECT_TRUE(found.value(QLatin1String("no_gamut")).isNull());
    expectNear(lab(found, "white"), {100, 0, 0}, 0.01f);
    expectNear(lab(found, "black"), {0, 0, 0}, 0.01f);
}

TEST_F(InputsTest, compareSaysWhatAReferenceBodyIs)
{
    const QJsonObject found = row(QStringLiteral("compare OptimalColors sRGB"));
    EXPECT_EQ(word(found, "kind_a"), optimal);
    EXPECT_EQ(word(found, "kind_b"), QStringLiteral("profile"));
    EXPECT_GT(number(found, "coverage_a_of_b"), 0.99);
    EXPECT_THAT(text(QStringLiteral("compare OptimalColors sRGB")).toStdString(),
                HasSubstr("\nOptimalColors: " + optimal.toStdString() + ".\n"));
    EXPECT_THAT(text(QStringLiteral("compare --matrix OptimalColors sRGB")).toStdString(),
                HasSubstr("\nOptimalColors: " + optimal.toStdString() + ".\n"));
    EXPECT_EQ(word(row(QStringLiteral("compare --matrix OptimalColors sRGB")), "kind"), optimal);
}

TEST_F(InputsTest, insideSaysWhatAReferenceBodyIs)
{
    const QJsonObject found = row(QStringLiteral("inside OptimalColors 50 0 0"));
    EXPECT_EQ(word(found, "kind"), optimal);
    EXPECT_TRUE(flag(found, "inside"));
    EXPECT_THAT(text(QStringLiteral("inside OptimalColors 50 0 0")).toStdString(),
                HasSubstr("\nOptimalColors: " + optimal.toStdString() + ".\n"));
}

TEST_F(InputsTest, checkSaysWhatAReferenceBodyIs)
{
    const QString arguments = QStringLiteral("check OptimalColors --colors ") +
                              written(QStringLiteral("d.csv"), "L,a,b\n50,10,10\n");
    EXPECT_EQ(word(row(arguments), "profile_kind"), optimal);
    EXPECT_THAT(text(arguments).toStdString(), HasSubstr("\nOptimalColors: " + optimal.toStdString() + '.'));
}

TEST_F(InputsTest, aReferenceBodyIsCutAndExported)
{
    const QByteArray section = text(QStringLiteral("slice OptimalColors --lightness 50 --format json"));
    const QJsonObject cut = rowsOf(section).value(0);
    EXPECT_EQ(word(cut, "intent"), QStringLiteral("none"));
    EXPECT_GT(number(cut, "area"), 20000.0);
    const QJsonObject mesh = rowsOf(text(QStringLiteral("export OptimalColors -o - --format json"))).value(0);
    EXPECT_EQ(word(mesh, "intent"), QStringLiteral("none"));
}

TEST_F(InputsTest, volumeOfAPictureSaysThatItIsThatOfItsProfile)
{
    QImage picture(16, 16, QImage::Format_RGB32);
    for (int x = 0; x < 16; ++x)
        for (int y = 0; y < 16; ++y)
            picture.setPixelColor(x, y, QColor(x * 16, y * 16, 100));
    picture.setColorSpace(QColorSpace::SRgb);
    const QString file = path(QStringLiteral("photo.png"));
    ASSERT_TRUE(picture.save(file));
    const QJsonObject whole = row(QStringLiteral("volume ") + file);
    EXPECT_EQ(word(whole, "kind"), QStringLiteral("profile of a picture"));
    EXPECT_THAT(text(QStringLiteral("volume ") + file).toStdString(),
                HasSubstr("not of its colours; for those add @pixels to its name."));
    const QJsonObject pixels = row(QStringLiteral("volume ") + file + QStringLiteral("@pixels"));
    EXPECT_THAT(word(pixels, "kind").toStdString(), HasSubstr("colours of the 256 pixels of a photo"));
    EXPECT_LT(number(pixels, "volume"), 0.5 * number(whole, "volume"));
}

TEST_F(InputsTest, aListOfColoursIsLabelledAsAHull)
{
    const QString list = written(QStringLiteral("list.csv"), "L,a,b\n40,0,0\n40,30,0\n40,0,30\n80,0,0\n");
    const QJsonObject found = row(QStringLiteral("volume ") + list);
    EXPECT_EQ(word(found, "method"), QStringLiteral("convex hull"));
    EXPECT_EQ(word(found, "kind"), QStringLiteral("hull of 4 colours"));
    EXPECT_NEAR(number(found, "volume"), 6000.0, 1.0);
    EXPECT_THAT(text(QStringLiteral("compare sRGB ") + list).toStdString(),
                HasSubstr(": hull of 4 colours.\n"));
}

TEST_F(InputsTest, aListOfDeviceValuesIsReadInTheDeclaredSpace)
{
    const QString list = written(QStringLiteral("rgb.csv"), "R,G,B\n0,0,0\n255,0,0\n0,255,0\n0,0,255\n");
    const Answer refused = run(words(QStringLiteral("volume ") + list));
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors.toStdString(), HasSubstr("--points-space"));
    const Answer misnamed =
        run(words(QStringLiteral("volume ") + list + QStringLiteral(" --points-space no.icc")));
    EXPECT_EQ(misnamed.exitCode, 1);
    EXPECT_THAT(misnamed.errors.toStdString(),
                testing::EndsWith("profile 'no.icc': cannot be read: No such file or directory\n"));
    const QString space = QStringLiteral(" --points-space sRGB");
    const double volume = number(row(QStringLiteral("volume ") + list + space), "volume");
    EXPECT_GT(volume, 200000.0);
    for (const char* command : {"volume ", "info ", "compare sRGB ", "compare --matrix sRGB "})
        EXPECT_FALSE(row(QLatin1String(command) + list + space).isEmpty()) << command;
    EXPECT_FLOAT_EQ(float(number(row(QStringLiteral("compare sRGB ") + list + space), "volume_b")),
                    float(volume));
    EXPECT_TRUE(flag(row(QStringLiteral("inside ") + list + space + QStringLiteral(" 40 10 10")), "inside"));
    EXPECT_THAT(text(QStringLiteral("slice ") + list + space + QStringLiteral(" --lightness 40 --format csv"))
                    .toStdString(),
                HasSubstr("rgb.csv"));
    EXPECT_FALSE(
        rowsOf(text(QStringLiteral("export ") + list + space + QStringLiteral(" -o - --format json")))
            .isEmpty());
    const QString picture = path(QStringLiteral("list.png"));
    EXPECT_TRUE(succeeded(kvgamut(
        words(QStringLiteral("render ") + list + space + QStringLiteral(" --size 64x48 -o ") + picture))));
}

TEST_F(InputsTest, theColoursOfAPhotoHaveTheHashOfTheFile)
{
    QImage picture(16, 16, QImage::Format_RGB32);
    for (int x = 0; x < 16; ++x)
        for (int y = 0; y < 16; ++y)
            picture.setPixelColor(x, y, QColor(x * 16, y * 16, 100));
    const QString file = path(QStringLiteral("photo.jpg"));
    ASSERT_TRUE(picture.save(file));
    const QByteArray hash = QCryptographicHash::hash(contents(file), QCryptographicHash::Sha256).toHex();
    EXPECT_EQ(word(row(QStringLiteral("volume ") + file + QStringLiteral("@pixels")), "sha256"),
              QString::fromLatin1(hash));
}

TEST_F(InputsTest, anExportedBoundaryIsReadAgain)
{
    const QString file = path(QStringLiteral("boundary.icc"));
    EXPECT_TRUE(succeeded(run(words(QStringLiteral("export sRGB --intent relative -o ") + file))));
    const QJsonObject whole = row(QStringLiteral("volume sRGB --intent relative"));
    const QJsonObject boundary = row(QStringLiteral("volume ") + file + QStringLiteral("@boundary"));
    EXPECT_EQ(word(boundary, "kind"), QStringLiteral("gamut boundary of a profile (tag gbd1, relative)"));
    EXPECT_NEAR(number(boundary, "volume"), number(whole, "surface_volume"), 0.2);
    EXPECT_EQ(number(boundary, "faces"), number(whole, "faces"));
    EXPECT_EQ(contents(file).size(), qFromBigEndian<quint32>(contents(file).constData()));
}

TEST_F(InputsTest, aReferenceBodyIsDrawn)
{
    const QString file = path(QStringLiteral("body.png"));
    EXPECT_TRUE(
        succeeded(kvgamut(words(QStringLiteral("render OptimalColors sRGB --size 200x150 -o ") + file))));
    EXPECT_FALSE(QImage(file).isNull());
}

TEST_F(InputsTest, theLargestReferenceBodyFitsIntoItsPicture)
{
    // seen along L*: a* from -410 to 1175 and b* from -986 to 172, by the chromaticities of 380 to 780 nm
    const QString file = path(QStringLiteral("limit.png"));
    EXPECT_TRUE(
        succeeded(kvgamut(words(QStringLiteral("render SpectralLimit --view top --orthogonal --no-axes "
                                               "--annotate none --size 400x300 -o ") +
                                file))));
    const QImage picture(file);
    const QRgb background = picture.pixel(0, 0);
    QRect drawn;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) != background)
                drawn |= QRect(x, y, 1, 1);
    EXPECT_TRUE(picture.rect().adjusted(2, 2, -2, -2).contains(drawn));
    EXPECT_GT(drawn.width(), 300);
    EXPECT_NEAR(double(drawn.width()) / drawn.height(), 1585.0 / 1158.0, 0.05);
}

} // namespace
