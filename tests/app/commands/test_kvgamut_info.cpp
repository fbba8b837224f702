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
              words(QStringLiteral(
                  "adaptation adapted_by black bpc channels chart_different chart_error_median "
                  "chart_error_p95 chart_largest_gap chart_levels chart_missing_corners chart_patches "
                  "chart_uncovered cicp class copyright description "
                  "device_space grid intent intents kind mapped_black media_white no_gamut "
                  "notes pcs profile program saved_of sha256 table table_fallback tables version white")));
}

TEST_F(InfoTest, namesTheWhiteOfThePaper)
{
    const QJsonObject row = info({cmyk, QStringLiteral("--intent"), QStringLiteral("relative")});
    const auto paper = testprofiles::labOf(contents(cmyk), {0, 0, 0, 0}, INTENT_ABSOLUTE_COLORIMETRIC);
    expectNear(lab(row, "media_white"), QVector3D(float(paper[0]), float(paper[1]), float(paper[2])), 0.05f);
    EXPECT_TRUE(row.value(QStringLiteral("adapted_by")).isNull());
    EXPECT_EQ(word(row, "table"), QStringLiteral("A2B1"));
}

TEST_F(InfoTest, saysWhatTheTagOfTheEncodingMeans)
{
    struct Case
    {
        QByteArray values;
        QString encoding;
        QString meaning;
    };
    for (const auto& [values, encoding, meaning] :
         {Case{QByteArray("\11\20\0\1", 4), QStringLiteral("BT.2020 primaries, PQ, full range"),
               QStringLiteral("brighter light (HDR) is not counted")},
          Case{QByteArray("\14\22\0\1", 4), QStringLiteral("Display P3 primaries, HLG, full range"),
               QStringLiteral("brighter light (HDR) is not counted")},
          Case{QByteArray("\1\15\1\0", 4),
               QStringLiteral("BT.709 primaries, sRGB curve, matrix 1, narrow range"),
               QStringLiteral("the tag does not change it")},
          Case{QByteArray("\115\116\0\1", 4), QStringLiteral("77 primaries, transfer 78, full range"),
               QStringLiteral("the tag does not change it")}}) {
        // a tag of twelve bytes takes the place of the copyright
        QByteArray bytes = contents(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc"));
        const auto entry = bytes.indexOf("cprt", 128);
        ASSERT_GT(entry, 0);
        bytes.replace(entry, 4, "cicp");
        quint32 offset = 0;
        for (int i = 0; i < 4; ++i)
            offset = offset << 8 | static_cast<uchar>(bytes[entry + 4 + i]);
        bytes.replace(offset, 12, QByteArray("cicp\0\0\0\0", 8) + values);
        write(path(QStringLiteral("coded.icc")), bytes);
        const QJsonObject row = info({path(QStringLiteral("coded.icc"))});
        EXPECT_EQ(word(row, "cicp"), encoding);
        EXPECT_TRUE(word(row, "notes").contains(meaning)) << qPrintable(word(row, "notes"));
    }
    EXPECT_TRUE(info({sRGB}).value(QStringLiteral("cicp")).isNull());
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
