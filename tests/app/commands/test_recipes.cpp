// SPDX-License-Identifier: Apache-2.0
#include "app/support/Program.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtGui/QColorSpace>
#include <QtGui/QImage>

#include <gmock/gmock.h>

// Runs the scripts of docs/RECIPES.md unchanged, in the order of the page.

using testing::HasSubstr;

namespace {

struct Recipe
{
    QString section;
    QString script;
};

QList<Recipe> recipes()
{
    QFile page(QStringLiteral(KVGAMUT_RECIPES));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll());
    static const QRegularExpression heading(QStringLiteral("^## ([^\n]*)$"));
    QList<Recipe> found;
    QString section;
    QStringList lines;
    bool inside = false;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        const auto match = heading.match(line);
        if (match.hasMatch())
            section = match.captured(1);
        if (inside && line == QLatin1String("```"))
            found.append({section, lines.join(QLatin1Char('\n'))});
        else if (inside)
            lines.append(line);
        if (line == QLatin1String("```sh")) {
            lines.clear();
            inside = true;
        } else if (line == QLatin1String("```")) {
            inside = false;
        }
    }
    return found;
}

/// A photo of sky, grass and a red flag. The red is outside the gamut of any printer.
void writePhoto(const QString& file)
{
    QImage photo(120, 80, QImage::Format_RGB32);
    for (int y = 0; y < photo.height(); ++y)
        for (int x = 0; x < photo.width(); ++x)
            photo.setPixelColor(x, y, y < 40 ? QColor(150, 170 + y, 200) : QColor(110 + x / 4, 130, 90));
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 24; ++x)
            photo.setPixelColor(x, y, QColor(255, 0, 0)); // a tenth of the pixels
    QFile profile(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc"));
    ASSERT_TRUE(profile.open(QIODevice::ReadOnly));
    photo.setColorSpace(QColorSpace::fromIccProfile(profile.readAll()));
    ASSERT_TRUE(photo.save(file, "JPG", 100));
}

class RecipeTest : public kvtest::ProgramTest
{
protected:
    void SetUp() override
    {
        for (const char* name : {"printer.icc", "inks.icc"})
            ASSERT_TRUE(QFile::copy(QStringLiteral(KVGAMUT_CMYK_PROFILE), path(QLatin1String(name))));
        writePhoto(path(QStringLiteral("photo.jpg")));
        for (const char* name : {"patches.csv", "display.ti3"})
            ASSERT_TRUE(QFile::copy(QFileInfo(QStringLiteral(KVGAMUT_RECIPES))
                                        .dir()
                                        .filePath(QStringLiteral("data/") + QLatin1String(name)),
                                    path(QLatin1String(name))));
    }

    /// Runs the scripts of @p section in order. @return their output
    QByteArrayList run(const QString& section)
    {
        QByteArrayList outputs;
        for (const Recipe& recipe : recipes()) {
            if (recipe.section != section)
                continue;
            const QString prepared =
                QStringLiteral("cd \"$1\"\nexport PATH=\"${KVGAMUT%/*}:$PATH\"\n") + recipe.script;
            const kvtest::Answer answer = kvtest::shell(prepared, {path(QString())});
            EXPECT_EQ(answer.exitCode, 0) << recipe.script.toStdString();
            EXPECT_EQ(answer.errors.toStdString(), "") << recipe.script.toStdString();
            outputs.append(answer.output);
        }
        return outputs;
    }
};

} // namespace

TEST_F(RecipeTest, findHowMuchOfAPhotoAPrinterCannotPrint)
{
    const QByteArrayList outputs = run(QStringLiteral("Does this photo fit this printer?"));
    ASSERT_EQ(outputs.size(), 5);
    EXPECT_THAT(outputs[0].toStdString(), HasSubstr("photos: 0 of 1 fit")) << "the red flag";
    EXPECT_EQ(outputs[1], "exit code 5\n");
    EXPECT_EQ(QImage(path(QStringLiteral("lost-pixels.png"))).size(), QSize(120, 80));
    EXPECT_EQ(QImage(path(QStringLiteral("lost-by-how-much.png"))).size(), QSize(120, 80));
    EXPECT_THAT(kvtest::contents(path(QStringLiteral("fits.pdf"))).toStdString(),
                testing::StartsWith("%PDF"));
    EXPECT_NEAR(outputs[3].toDouble(), 0.1, 0.02) << "the red flag";
    EXPECT_EQ(outputs[4].count('\n'), 10);
}

TEST_F(RecipeTest, findTheBrandColoursThatAPrinterCanPrint)
{
    const QByteArrayList outputs = run(QStringLiteral("Which of my brand colours can it print?"));
    ASSERT_EQ(outputs.size(), 1);
    EXPECT_THAT(outputs[0].toStdString(), HasSubstr("brand blue: out, dE00 "));
    EXPECT_THAT(outputs[0].toStdString(), HasSubstr("brand grey: in, dE00 0, prints as ["));
}

TEST_F(RecipeTest, findWhatADeviceReachesAsMeasured)
{
    const QByteArrayList outputs = run(QStringLiteral("What does my device reach, as measured?"));
    ASSERT_EQ(outputs.size(), 2);
    EXPECT_THAT(outputs[1].toStdString(), HasSubstr("sRGB predicts the patches with a CIEDE2000 of 0.0"));
    EXPECT_THAT(outputs[0].toStdString(),
                HasSubstr("display.ti3: As measured: display chart of 125 patches"));
}

TEST_F(RecipeTest, findTheDisplayThatCoversMostOfAnInkSet)
{
    const QByteArrayList outputs = run(QStringLiteral("Which display covers most of this ink set?"));
    ASSERT_EQ(outputs.size(), 3);
    EXPECT_THAT(outputs[0].split('\n').first().toStdString(), HasSubstr("Rec2020")) << "the widest of them";
    EXPECT_THAT(outputs[0].trimmed().split('\n').last().toStdString(), HasSubstr("sRGB"));
    EXPECT_THAT(files(),
                testing::IsSupersetOf({QStringLiteral("cyan-level.svg"), QStringLiteral("around.png")}));
}

TEST_F(RecipeTest, showWhereAPressLosesColours)
{
    ASSERT_EQ(run(QStringLiteral("Where does the press lose colours?")).size(), 2);
    EXPECT_THAT(files(), testing::IsSupersetOf({QStringLiteral("lost.png"), QStringLiteral("lost.pdf")}));
    EXPECT_EQ(QImage(path(QStringLiteral("lost.png"))).size(), QSize(1200, 900));
    EXPECT_THAT(files(), testing::IsSupersetOf(
                             {QStringLiteral("unprintable.png"), QStringLiteral("unprintable.ply")}));
}

TEST_F(RecipeTest, writeAPageToSend)
{
    const QByteArrayList outputs = run(QStringLiteral("A page to send"));
    ASSERT_EQ(outputs.size(), 2);
    EXPECT_THAT(outputs[1].toStdString(),
                testing::MatchesRegex("The press covers 4[0-9].[0-9] % of sRGB.\n"));
    EXPECT_THAT(kvtest::contents(path(QStringLiteral("gamuts.html"))).toStdString(),
                HasSubstr("<title>printer.icc, sRGB - gamut</title>"));
}

TEST_F(RecipeTest, compareADeviceWithWhatIsPossible)
{
    const QByteArrayList outputs = run(QStringLiteral("How much of what is possible does it reach?"));
    ASSERT_EQ(outputs.size(), 1);
    const QByteArrayList lines = outputs[0].trimmed().split('\n');
    ASSERT_EQ(lines.size(), 4);
    double last = 100.0; // each body contains the one before, or most of it
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const double share = lines[i].split(' ').first().toDouble();
        EXPECT_GT(share, 0.0) << lines[i].toStdString();
        EXPECT_LT(share, last) << lines[i].toStdString();
        last = share;
    }
    EXPECT_TRUE(lines.last().endsWith("SpectralLimit")) << lines.last().toStdString();
}

TEST_F(RecipeTest, drawTheColoursOfOneLightness)
{
    EXPECT_EQ(run(QStringLiteral("The colours of one lightness")).size(), 1);
    EXPECT_THAT(files(), testing::IsSupersetOf({QStringLiteral("level.pdf"), QStringLiteral("reds.svg"),
                                                QStringLiteral("cut.png")}));
    EXPECT_FALSE(QImage(path(QStringLiteral("cut.png"))).isNull());
}

TEST_F(RecipeTest, measureManyProfiles)
{
    ASSERT_TRUE(QDir(path(QString())).mkpath(QStringLiteral("archive/presses")));
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(QFile::copy(QStringLiteral(KVGAMUT_CMYK_PROFILE),
                                path(QStringLiteral("archive/presses/%1 copy.icc").arg(i))));
    ASSERT_TRUE(QFile::copy(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc"),
                            path(QStringLiteral("archive/screen.icc"))));
    const QByteArrayList outputs = run(QStringLiteral("The volumes of a hundred thousand profiles"));
    ASSERT_EQ(outputs.size(), 2);
    EXPECT_EQ(kvtest::contents(path(QStringLiteral("volumes.jsonl"))).count('\n'), 6);
    EXPECT_THAT(outputs[1].split('\n').first().toStdString(), HasSubstr("archive/screen.icc"));
    EXPECT_EQ(outputs[1].count('\n'), 3);
}

TEST_F(RecipeTest, passAnUnchangedProfileInTheNightlyCheck)
{
    EXPECT_EQ(run(QStringLiteral("Nightly check of a profile in CI")).size(), 2);
}

TEST_F(RecipeTest, stopAChangedProfileInTheNightlyCheck)
{
    const QString section = QStringLiteral("Nightly check of a profile in CI");
    QStringList scripts;
    for (const Recipe& recipe : recipes())
        if (recipe.section == section)
            scripts.append(recipe.script);
    ASSERT_EQ(scripts.size(), 2);
    const auto exitCode = [this](const QString& script) {
        return kvtest::shell(QStringLiteral("cd \"$1\"\nexport PATH=\"${KVGAMUT%/*}:$PATH\"\n") + script,
                             {path(QString())})
            .exitCode;
    };
    ASSERT_EQ(exitCode(scripts[0]), 0);
    ASSERT_TRUE(QFile::remove(path(QStringLiteral("printer.icc"))));
    ASSERT_TRUE(QFile::copy(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc"),
                            path(QStringLiteral("printer.icc"))));
    EXPECT_NE(exitCode(scripts[1]), 0);
}
