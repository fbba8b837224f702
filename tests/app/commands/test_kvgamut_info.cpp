// SPDX-License-Identifier: Apache-2.0
#include "app/support/Boxes.h"
#include "app/support/Numbers.h"

#include "model/inputs/GamutSource.h"
#include "model/inputs/SavedGamut.h"

using namespace kvtest;

namespace {

class InfoTest : public NumbersTest
{
protected:
    QJsonObject info(const QStringList& arguments)
    {
        const auto rows = json(QStringList{QStringLiteral("info")} + arguments);
        EXPECT_EQ(rows.size(), 1);
        return rows.value(0);
    }

    static QStringList list(const QJsonObject& row, const char* key)
    {
        EXPECT_TRUE(row.value(QLatin1String(key)).isArray()) << key;
        return row.value(QLatin1String(key)).toVariant().toStringList();
    }
};

TEST_F(InfoTest, printsThePropertiesOfAPrinterProfile)
{
    const QJsonObject row = info({cmyk});
    EXPECT_EQ(word(row, "profile"), cmyk);
    EXPECT_EQ(word(row, "kind"), QStringLiteral("profile"));
    EXPECT_EQ(word(row, "class"), QStringLiteral("output"));
    EXPECT_EQ(word(row, "device_space"), QStringLiteral("CMYK"));
    EXPECT_EQ(number(row, "channels"), 4);
    EXPECT_EQ(word(row, "pcs"), QStringLiteral("Lab"));
    EXPECT_EQ(list(row, "intents"), words(QStringLiteral("perceptual relative saturation absolute")));
    EXPECT_EQ(list(row, "tables"), words(QStringLiteral("A2B0 A2B1 A2B2 B2A0 B2A1 B2A2")));

    // read directly from the header and the text tags of the file
    const QByteArray bytes = contents(cmyk);
    EXPECT_EQ(word(row, "version"), QStringLiteral("%1.%2").arg(int(bytes[8])).arg(int(bytes[9]) >> 4));
    EXPECT_TRUE(bytes.contains(word(row, "description").toLatin1()));
    EXPECT_TRUE(bytes.contains(word(row, "copyright").toLatin1()));
    EXPECT_GT(word(row, "description").size(), 5);
    EXPECT_GT(word(row, "copyright").size(), 5);
}

TEST_F(InfoTest, printsThePropertiesOfAMatrixProfile)
{
    const QJsonObject row = info({QStringLiteral("AdobeRGB")});
    EXPECT_EQ(word(row, "class"), QStringLiteral("display"));
    EXPECT_EQ(word(row, "device_space"), QStringLiteral("RGB"));
    EXPECT_EQ(word(row, "pcs"), QStringLiteral("XYZ"));
    EXPECT_EQ(word(row, "description"), QStringLiteral("AdobeRGB"));
    EXPECT_EQ(list(row, "intents"), words(QStringLiteral("relative absolute")));
    EXPECT_EQ(list(row, "tables"), QStringList{QStringLiteral("matrix")});
}

TEST_F(InfoTest, listsOnlyAvailableIntents)
{
    write(path(QStringLiteral("box.icc")), Box{{0, -40, -40}, {100, 40, 40}}.profile()); // has only A2B0
    const QJsonObject row = info({path(QStringLiteral("box.icc"))});
    EXPECT_EQ(list(row, "intents"), QStringList{QStringLiteral("perceptual")});
    EXPECT_EQ(list(row, "tables"), QStringList{QStringLiteral("A2B0")});
    EXPECT_EQ(word(row, "version"), QStringLiteral("4.3"));
}

TEST_F(InfoTest, whiteAndBlackAreThoseOfTheIntent)
{
    const QJsonObject absolute = info({cmyk});
    const QJsonObject relative = info({cmyk, QStringLiteral("--intent"), QStringLiteral("relative")});
    const QJsonObject compensated =
        info({cmyk, QStringLiteral("--intent"), QStringLiteral("relative"), QStringLiteral("--bpc")});
    // the paper white that Little CMS computes
    const auto paper = testprofiles::labOf(contents(cmyk), {0, 0, 0, 0}, INTENT_ABSOLUTE_COLORIMETRIC);
    expectNear(lab(absolute, "white"), QVector3D(float(paper[0]), float(paper[1]), float(paper[2])), 0.01f);
    expectNear(lab(relative, "white"), QVector3D(100, 0, 0), 0.01f);
    EXPECT_GT(lab(relative, "black").x(), 5.0f);
    EXPECT_LE(lab(compensated, "black").x(), 0.1f); // negative for inks below the black point
    EXPECT_EQ(word(absolute, "intent"), QStringLiteral("absolute"));
    EXPECT_TRUE(flag(compensated, "bpc"));
}

TEST_F(InfoTest, reportsWhyAProfileHasNoGamut)
{
    const QJsonObject row = info({grey});
    EXPECT_EQ(word(row, "device_space"), QStringLiteral("GRAY"));
    EXPECT_EQ(number(row, "channels"), 1);
    EXPECT_EQ(list(row, "tables"), QStringList{QStringLiteral("curve")});
    EXPECT_TRUE(row.value(QStringLiteral("white")).isNull());
    EXPECT_EQ(word(row, "no_gamut"), QStringLiteral("a gamut needs at least three channels; grey has one"));
    EXPECT_TRUE(info({sRGB}).value(QStringLiteral("no_gamut")).isNull());
}

TEST_F(InfoTest, printsThePropertiesOfASavedGamut)
{
    const QString file = path(QStringLiteral("印刷 saved.kvgamut"));
    const GamutSource source = GamutSource::open(cmyk).value();
    const auto gamut = source.compute({KVVMRenderRelativeColorimetric, true, 9}).value();
    write(file, SavedGamut{gamut.serialize(), cmyk}.bytes());
    const QJsonObject row = info({file, QStringLiteral("--intent"), QStringLiteral("perceptual")});
    EXPECT_EQ(word(row, "profile"), file);
    EXPECT_EQ(word(row, "kind"), QStringLiteral("saved gamut"));
    EXPECT_EQ(word(row, "saved_of"), cmyk);
    EXPECT_EQ(number(row, "channels"), 4);
    EXPECT_EQ(word(row, "intent"), QStringLiteral("relative")); // the intent with which it was saved
    EXPECT_TRUE(flag(row, "bpc"));
    EXPECT_EQ(number(row, "grid"), 9);
    expectNear(lab(row, "white"), QVector3D(100, 0, 0), 0.01f);
    for (const char* unknown : {"class", "pcs", "version", "intents", "tables", "copyright", "description"})
        EXPECT_TRUE(row.value(QLatin1String(unknown)).isNull()) << unknown;
}

TEST_F(InfoTest, hasTheDocumentedKeys)
{
    EXPECT_EQ(keysOf(info({sRGB})),
              words(QStringLiteral("black bpc channels class copyright description device_space grid intent "
                                   "intents kind no_gamut pcs profile saved_of tables version white")));
}

TEST_F(InfoTest, printsAParagraphForEachInput)
{
    const Answer answer = run({QStringLiteral("info"), sRGB, cmyk});
    EXPECT_TRUE(succeeded(answer));
    EXPECT_TRUE(answer.output.startsWith("sRGB\n  kind          profile\n"));
    EXPECT_TRUE(answer.output.contains("\n\n" + cmyk.toUtf8() + "\n"));
    EXPECT_TRUE(answer.output.contains("\n  intents       relative, absolute\n"))
        << answer.output.toStdString();
    EXPECT_FALSE(answer.output.contains("no gamut"));
}

TEST_F(InfoTest, reportsABadInputAndProcessesTheOthers)
{
    const Answer answer = run({QStringLiteral("info"), missing, sRGB});
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors, missingLine.toUtf8() + '\n');
    EXPECT_EQ(answer.output, run({QStringLiteral("info"), sRGB}).output);
}

} // namespace
