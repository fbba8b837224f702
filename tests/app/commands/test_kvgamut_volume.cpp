// SPDX-License-Identifier: Apache-2.0
#include "app/support/Boxes.h"
#include "app/support/Numbers.h"

#include <gmock/gmock.h>

#include <QtGui/QColorSpace>

using namespace kvtest;
using testing::HasSubstr;

namespace {

class VolumeTest : public NumbersTest
{
protected:
    QList<QJsonObject> volumes(const QString& arguments)
    {
        return json(words(QStringLiteral("volume ") + arguments));
    }
    QJsonObject volume(const QString& arguments)
    {
        const auto rows = volumes(arguments);
        EXPECT_EQ(rows.size(), 1);
        return rows.value(0);
    }
};

struct Known
{
    const char* name;
    const char* arguments;
    double volume;      ///< by integration of the Jacobian, Monte Carlo and extrapolated surfaces
    double uncertainty; ///< of the value in `volume`
    const char* method;
    int channels;
};

void PrintTo(const Known& known, std::ostream* out)
{
    *out << known.name;
}

class KnownVolumeTest : public VolumeTest, public testing::WithParamInterface<Known>
{
};

TEST_P(KnownVolumeTest, isWithinItsUncertainty)
{
    const QJsonObject row =
        volume(QLatin1String(GetParam().arguments) + QStringLiteral(" --intent relative"));
    const double uncertainty = number(row, "uncertainty");
    EXPECT_NEAR(number(row, "volume"), GetParam().volume, uncertainty + GetParam().uncertainty);
    EXPECT_GT(uncertainty, 0.0);
    EXPECT_LT(uncertainty, 0.001 * GetParam().volume); // small enough to be useful
    EXPECT_EQ(word(row, "method"), QLatin1String(GetParam().method));
    EXPECT_EQ(number(row, "channels"), GetParam().channels);
}

INSTANTIATE_TEST_SUITE_P(
    Of, KnownVolumeTest,
    testing::Values(
        Known{"sRGB", "/usr/share/color/icc/colord/sRGB.icc", 832781, 17, "device mesh", 3},
        Known{"AdobeRGB", "/usr/share/color/icc/colord/AdobeRGB1998.icc", 1208747, 24, "device mesh", 3},
        Known{"ProPhoto", "/usr/share/color/icc/colord/ProPhotoRGB.icc", 2880355, 58, "device mesh", 3},
        Known{"CieRgb", "/usr/share/color/icc/colord/CIE-RGB.icc", 1726111, 35, "device mesh", 3},
        Known{"Cmyk", KVGAMUT_CMYK_PROFILE, 411424, 103, "radial hull", 4}),
    [](const auto& known) { return std::string(known.param.name); });

TEST_F(VolumeTest, hasTheDocumentedKeys)
{
    EXPECT_EQ(keysOf(volume(sRGB)),
              words(QStringLiteral(
                  "adaptation adapted_by black bpc channels chart_different chart_error_median "
                  "chart_error_p95 chart_largest_gap chart_levels chart_missing_corners chart_patches "
                  "chart_uncovered cicp faces fold_share grid intent kind "
                  "mapped_black media_white method notes profile program saved seconds sha256 "
                  "surface_volume table table_fallback uncertainty volume white")));
}

TEST_F(VolumeTest, printsLinesInTheOrderOfTheInputs)
{
    QStringList inputs;
    for (int i = 0; i < 40; ++i) // more than are computed at a time on most machines
        inputs.append(i == 7 ? missing : i % 2 == 0 ? sRGB : QStringLiteral("Rec2020"));
    const Answer answer = run(words(QStringLiteral("volume --grid 9 --jobs 2 --format jsonl")) + inputs);
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors, missingLine.toUtf8() + '\n');
    inputs.removeAt(7);
    QStringList printed;
    for (const QByteArray& line : answer.output.trimmed().split('\n'))
        printed.append(word(QJsonDocument::fromJson(line).object(), "profile"));
    EXPECT_EQ(printed, inputs);
}

TEST_F(VolumeTest, equalsTheVolumeOfABox)
{
    const Box box{{20, -40, -30}, {80, 40, 50}};
    write(path(QStringLiteral("box.icc")), box.profile());
    const QJsonObject row = volume(path(QStringLiteral("box.icc")) + QStringLiteral(" --intent relative"));
    EXPECT_NEAR(number(row, "volume"), box.volume(), 60.0); // edges of 60 and 80, rounded to 16 bits
    EXPECT_EQ(number(row, "fold_share"), 0.0);
}

TEST_F(VolumeTest, statesTheVolumeThatTheSurfaceEncloses)
{
    const QJsonObject row = volume(sRGB);
    EXPECT_LT(number(row, "surface_volume"), number(row, "volume")); // a mesh inside a curved solid
    EXPECT_GT(number(row, "surface_volume"), 0.999 * number(row, "volume"));
    EXPECT_FALSE(run(words(QStringLiteral("volume sRGB"))).output.contains("surface"));
}

// Numbers for other programs; texts have no decimals.
TEST_F(VolumeTest, isTheSameNumberInEveryCommand)
{
    const QJsonObject row = volume(sRGB);
    const double expected = number(row, "volume");
    const auto first = [](const QString& arguments) { return json(words(arguments)).value(0); };
    const QJsonObject exported = first(QStringLiteral("export sRGB -o -"));
    EXPECT_EQ(number(exported, "volume"), expected);
    EXPECT_EQ(number(exported, "uncertainty"), number(row, "uncertainty"));
    EXPECT_EQ(number(exported, "surface_volume"), number(row, "surface_volume"));
    EXPECT_EQ(number(first(QStringLiteral("slice sRGB --rings")), "volume"), expected);
    EXPECT_EQ(number(first(QStringLiteral("compare sRGB ") + cmyk), "volume_a"), expected);
}

TEST_F(VolumeTest, usesTheAbsoluteIntentByDefault)
{
    const QJsonObject row = volume(cmyk);
    EXPECT_EQ(word(row, "intent"), QStringLiteral("absolute"));
    EXPECT_NEAR(number(row, "volume"), 296508, number(row, "uncertainty") + 74);
    EXPECT_LT(lab(row, "white").x(), 90.0f); // the paper white
}

TEST_F(VolumeTest, dependsOnTheIntent)
{
    QList<double> found;
    for (const char* intent : {"perceptual", "relative", "saturation", "absolute"}) {
        const QJsonObject row = volume(cmyk + QStringLiteral(" --intent ") + QLatin1String(intent));
        EXPECT_EQ(word(row, "intent"), QLatin1String(intent));
        found.append(number(row, "volume"));
    }
    std::sort(found.begin(), found.end());
    EXPECT_LT(found[0] + 1000, found[1]); // the absolute intent has the smallest gamut
    EXPECT_GT(found[3], 400000);
}

TEST_F(VolumeTest, dependsOnTheBlackPointWithTheRelativeIntent)
{
    const QJsonObject without = volume(cmyk + QStringLiteral(" --intent relative"));
    const QJsonObject with = volume(cmyk + QStringLiteral(" --intent relative --bpc"));
    EXPECT_FALSE(flag(without, "bpc"));
    EXPECT_TRUE(flag(with, "bpc"));
    EXPECT_LE(lab(with, "black").x(), 0.1f); // negative for inks below the black point
    EXPECT_GT(lab(without, "black").x(), 5.0f);
    EXPECT_GT(number(with, "volume"), number(without, "volume") + 1000);
}

TEST_F(VolumeTest, namesTheMappedBlack)
{
    const QJsonObject with = volume(cmyk + QStringLiteral(" --intent relative --bpc"));
    EXPECT_NEAR(lab(with, "mapped_black").x(), 16.5, 0.01); // as Little CMS detects it
    EXPECT_EQ(word(with, "notes"),
              QStringLiteral("Black point compensation maps L* 16.5, a* 0.0, b* 0.0 to L* 0; darker colours "
                             "are clipped."));
    EXPECT_EQ(lab(with, "black").x(), 0.0f);
    const QJsonObject without = volume(cmyk + QStringLiteral(" --intent relative"));
    EXPECT_TRUE(without.value(QStringLiteral("mapped_black")).isNull());
    EXPECT_TRUE(without.value(QStringLiteral("notes")).isNull());
}

TEST_F(VolumeTest, namesTheTableAndAFallback)
{
    EXPECT_EQ(word(volume(sRGB), "table"), QStringLiteral("matrix"));
    const QJsonObject own = volume(cmyk);
    EXPECT_EQ(word(own, "table"), QStringLiteral("A2B1"));
    EXPECT_FALSE(flag(own, "table_fallback"));
    const QString box = path(QStringLiteral("box.icc"));
    write(box, Box{{20, -40, -30}, {80, 40, 50}}.profile()); // has only A2B0
    const QJsonObject other = volume(box + QStringLiteral(" --intent saturation"));
    EXPECT_EQ(word(other, "table"), QStringLiteral("A2B0"));
    EXPECT_TRUE(flag(other, "table_fallback"));
    const Answer text = run(words(QStringLiteral("volume %1 --intent saturation").arg(box)));
    EXPECT_THAT(text.output.toStdString(),
                HasSubstr("box.icc: The profile has no table for the saturation intent; A2B0 is used.\n"));
}

TEST_F(VolumeTest, canUndoTheAdaptationOfADisplay)
{
    const QString display = QStringLiteral("/usr/share/color/icc/colord/sRGB.icc");
    const QJsonObject kept = volume(display);
    EXPECT_EQ(word(kept, "adaptation"), QStringLiteral("full"));
    EXPECT_EQ(word(kept, "adapted_by"), QStringLiteral("chad"));
    EXPECT_EQ(number(kept, "volume"),
              number(volume(display + QStringLiteral(" --adaptation full")), "volume"));
    const QJsonObject undone = volume(display + QStringLiteral(" --adaptation none"));
    EXPECT_EQ(word(undone, "adaptation"), QStringLiteral("none"));
    // the surface integral of the colorants with the tag's inverse gives 897,511
    EXPECT_NEAR(number(undone, "volume"), 897'511, number(undone, "uncertainty"));
    EXPECT_LT(lab(undone, "white").z(), -15.0f);
    EXPECT_THAT(word(undone, "notes").toStdString(), HasSubstr("relative to D50"));
    const QJsonObject d65 = volume(display + QStringLiteral(" --adaptation none-d65"));
    EXPECT_NEAR(lab(d65, "white").z(), 0.0f, 0.1f);
    EXPECT_THAT(word(d65, "notes").toStdString(), HasSubstr("relative to D65"));
    const QJsonObject relative = volume(display + QStringLiteral(" --adaptation none --intent relative"));
    EXPECT_EQ(word(relative, "adaptation"), QStringLiteral("full"));
    EXPECT_EQ(number(relative, "volume"), number(kept, "volume"));
}

TEST_F(VolumeTest, refusesAnUnknownAdaptation)
{
    EXPECT_EQ(run(words(QStringLiteral("volume sRGB --adaptation some"))).exitCode, WrongUsage);
}

TEST_F(VolumeTest, ignoresBlackPointCompensationWithTheAbsoluteIntent)
{
    const QJsonObject with = volume(cmyk + QStringLiteral(" --bpc"));
    EXPECT_FALSE(flag(with, "bpc"));
    EXPECT_EQ(number(with, "volume"), number(volume(cmyk), "volume"));
}

TEST_F(VolumeTest, aFinerGridHasMoreFacesAndLessUncertainty)
{
    const QJsonObject coarse = volume(QStringLiteral("sRGB --grid 9"));
    const QJsonObject fine = volume(QStringLiteral("sRGB --grid 65"));
    EXPECT_EQ(number(coarse, "grid"), 9);
    EXPECT_EQ(number(fine, "grid"), 65);
    // six faces of the cube, two triangles for each cell; long edges are split
    EXPECT_GE(number(coarse, "faces"), 6 * 8 * 8 * 2);
    EXPECT_LT(number(coarse, "faces"), 6 * 16 * 16 * 2);
    EXPECT_EQ(number(fine, "faces"), 6 * 64 * 64 * 2);
    EXPECT_LT(number(fine, "uncertainty"), number(coarse, "uncertainty"));
}

// The values of the display standard's mesh for exact primaries, by an independent program; those of a
// profile are rounded. They depend on the diagonals of the squares.
TEST_F(VolumeTest, ofTheElevenGridIsThatOfTheDisplayStandard)
{
    const QJsonObject falling = volume(QStringLiteral("sRGB --method 11-grid"));
    EXPECT_NEAR(number(falling, "volume"), 830835.0, 0.0001 * 830835.0);
    EXPECT_EQ(number(falling, "faces"), 6 * 10 * 10 * 2);
    EXPECT_EQ(number(falling, "grid"), 11);
    EXPECT_EQ(word(falling, "method"), QStringLiteral("11-grid"));
    EXPECT_NEAR(number(volume(QStringLiteral("sRGB --method 11-grid-rising")), "volume"), 831722.0,
                0.0001 * 831722.0);
    // the continuous solid, by an independent integration
    EXPECT_LT(std::abs(number(falling, "volume") - 833136.0), number(falling, "uncertainty"));
}

TEST_F(VolumeTest, ofTheElevenGridHasNoOtherGrid)
{
    const Answer answer = run(words(QStringLiteral("volume sRGB --method 11-grid --grid 33")));
    EXPECT_EQ(answer.exitCode, WrongUsage);
    EXPECT_TRUE(answer.errors.contains("--grid")) << answer.errors.toStdString();
}

TEST_F(VolumeTest, ofTheElevenGridNeedsThreeChannels)
{
    EXPECT_TRUE(failedWith(
        run(words(QStringLiteral("volume ") + cmyk + QStringLiteral(" --method 11-grid"))), BadInput,
        QStringLiteral("kvgamut: '%1': the 11-grid is defined for three channels; this profile has 4")
            .arg(cmyk)));
}

TEST_F(VolumeTest, usesTheIntentBehindTheNameOfAnInput)
{
    const auto rows = volumes(QStringLiteral("%1@relative %1 --intent perceptual").arg(cmyk));
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(word(rows[0], "profile"), cmyk + QStringLiteral("@relative"));
    EXPECT_EQ(word(rows[0], "intent"), QStringLiteral("relative"));
    EXPECT_EQ(word(rows[1], "intent"), QStringLiteral("perceptual"));
    EXPECT_NEAR(number(rows[0], "volume"), 411424.0, 0.001 * 411424.0);
}

TEST_F(VolumeTest, doesNotDependOnOtherInputsOrTheirOrder)
{
    const auto withoutSeconds = [](QList<QJsonObject> rows) {
        for (QJsonObject& row : rows)
            row.remove(QStringLiteral("seconds"));
        return rows;
    };
    const auto some = withoutSeconds(volumes(QStringLiteral("sRGB Rec2020 ") + cmyk));
    auto others = withoutSeconds(volumes(cmyk + QStringLiteral(" Rec2020 sRGB")));
    std::reverse(others.begin(), others.end());
    EXPECT_EQ(some, others);
    EXPECT_EQ(withoutSeconds(volumes(sRGB)).value(0), some.value(0));
}

TEST_F(VolumeTest, acceptsAPictureWithAnEmbeddedProfile)
{
    // a picture written by Qt
    const QString picture = path(QStringLiteral("my photo.png"));
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.setColorSpace(QColorSpace(QColorSpace::ProPhotoRgb));
    ASSERT_TRUE(image.save(picture));
    const auto rows = json({QStringLiteral("volume"), picture, QStringLiteral("ProPhoto")});
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(word(rows[0], "profile"), picture);
    EXPECT_NEAR(number(rows[0], "volume") / number(rows[1], "volume"), 1.0, 0.003);
}

TEST_F(VolumeTest, printsATableByDefault)
{
    const Answer answer = run(words(QStringLiteral("volume sRGB Rec2020")));
    EXPECT_TRUE(succeeded(answer));
    const QStringList lines = QString::fromUtf8(answer.output).split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 4); // the last is empty
    const QJsonObject row = volume(sRGB);
    for (const QString& title :
         words(QStringLiteral("profile volume ± faces method intent white black seconds")))
        EXPECT_TRUE(lines[0].contains(title)) << title.toStdString();
    EXPECT_EQ(lines[1].indexOf(QString::number(number(row, "volume"), 'f', 0)),
              lines[0].indexOf(QStringLiteral("volume")));
    EXPECT_TRUE(lines[1].startsWith(sRGB));
    EXPECT_TRUE(lines[1].contains(QStringLiteral("device mesh")));
    EXPECT_TRUE(lines[2].startsWith(QStringLiteral("Rec2020")));
}

TEST_F(VolumeTest, printsCsv)
{
    const Answer answer = run(words(QStringLiteral("volume sRGB --format csv")));
    EXPECT_TRUE(succeeded(answer));
    const QList<QByteArray> lines = answer.output.split('\n');
    ASSERT_EQ(lines.size(), 3); // the last is empty
    EXPECT_EQ(
        lines[0],
        "profile,volume,uncertainty,surface_volume,faces,method,intent,bpc,grid,channels,fold_share,white_L,"
        "white_a,white_b,black_L,black_a,black_b,saved,seconds,table,table_fallback,adaptation,"
        "adapted_by,media_white_L,media_white_a,media_white_b,mapped_black_L,mapped_black_a,"
        "mapped_black_b,cicp,notes,kind,chart_patches,chart_different,chart_levels,"
        "chart_missing_corners,chart_uncovered,chart_largest_gap,chart_error_median,chart_error_p95");
    const QList<QByteArray> keys = lines[0].split(','), fields = lines[1].split(',');
    ASSERT_EQ(keys.size(), fields.size());
    const QJsonObject row = volume(sRGB);
    EXPECT_EQ(fields[0], "sRGB");
    EXPECT_EQ(fields[1].toDouble(), number(row, "volume"));
    EXPECT_EQ(fields[keys.indexOf("faces")].toInt(), int(number(row, "faces")));
    EXPECT_EQ(fields[keys.indexOf("bpc")], "false");
    EXPECT_NEAR(fields[keys.indexOf("white_L")].toDouble(), 100.0, 0.01);
}

// --- Inputs that cannot be used -----------------------------------------------------------------------

TEST_F(VolumeTest, reportsABadInputAndProcessesTheOthers)
{
    const QList<QJsonObject> alone = volumes(sRGB);
    for (const QStringList& inputs : {QStringList{missing, sRGB}, QStringList{sRGB, missing}}) {
        const Answer answer = run(words(QStringLiteral("volume --format json")) + inputs);
        EXPECT_EQ(answer.exitCode, BadInput);
        EXPECT_EQ(answer.errors, missingLine.toUtf8() + '\n');
        const auto rows = rowsOf(answer.output);
        ASSERT_EQ(rows.size(), 1);
        EXPECT_EQ(rows[0].value(QStringLiteral("volume")), alone[0].value(QStringLiteral("volume")));
    }
}

TEST_F(VolumeTest, reportsWhyAnInputHasNoGamut)
{
    const Answer answer = run({QStringLiteral("volume"), grey});
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors,
              "kvgamut: '" + grey.toUtf8() + "': a gamut needs at least three channels; grey has one\n");
    EXPECT_TRUE(answer.output.isEmpty());
}

TEST_F(VolumeTest, printsAnEmptyArrayWhenNoInputCanBeUsed)
{
    const Answer answer = run(words(QStringLiteral("volume --format json")) + QStringList{missing, grey});
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors.count('\n'), 2);
    EXPECT_TRUE(rowsOf(answer.output).isEmpty());
}

} // namespace
