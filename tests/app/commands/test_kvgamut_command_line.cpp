// SPDX-License-Identifier: Apache-2.0
#include "app/support/Program.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <gmock/gmock.h>

using namespace kvtest;

namespace {

class CommandLineTest : public ProgramTest
{
protected:
    /// Renders @p profiles to the small picture @p output.
    Answer render(const QStringList& profiles, const QString& output,
                  const QProcessEnvironment& env = environment())
    {
        return kvgamut(QStringList{QStringLiteral("render"), QStringLiteral("--size"),
                                   QStringLiteral("64x48"), QStringLiteral("-o"), output} +
                           profiles,
                       env);
    }

    QString output() const { return path(QStringLiteral("out.png")); }

    const QString sRGB = QStringLiteral("sRGB");
    const QString grey = QStringLiteral(KVGAMUT_GREY_PROFILE);
    const QString cmyk = QStringLiteral(KVGAMUT_CMYK_PROFILE);
};

// --- Help and version ---------------------------------------------------------------------------------

TEST_F(CommandLineTest, helpNamesTheCommandsAndTheExitCodes)
{
    const Answer answer = kvgamut({QStringLiteral("--help")});
    EXPECT_TRUE(succeeded(answer));
    for (const char* part : {"slice", "export", "render", "view", "--version", "0 done", "1 some input",
                             "2 wrong usage", "3 the output", "4 the picture differs"})
        EXPECT_TRUE(answer.output.contains(part)) << part;
}

TEST_F(CommandLineTest, helpOfRenderNamesItsOptionsAndTheBuiltInProfiles)
{
    const Answer answer = kvgamut({QStringLiteral("render"), QStringLiteral("--help")});
    EXPECT_TRUE(succeeded(answer));
    for (const char* part : {"--output",      "--size",          "--view",          "--camera",
                             "--look-at",     "--mode",          "--alpha",         "--color",
                             "--ambient",     "--background",    "--intent",        "--bpc",
                             "--grid",        "--orthogonal",    "--angle",         "--no-grid",
                             "--no-axes",     "--plane",         "--clip",          "--section",
                             "--section-at",  "--primaries",     "--no-projection", "--no-surface",
                             "--markers",     "--points",        "--line",          "--light",
                             "--light-color", "--no-background", "--reference",     "--reference-threshold",
                             "sRGB",          "AdobeRGB",        "DisplayP3",       "Rec2020",
                             "ProPhoto"})
        EXPECT_TRUE(answer.output.contains(part)) << part;
}

TEST_F(CommandLineTest, helpNeedsNoDisplay)
{
    EXPECT_TRUE(succeeded(kvgamut({QStringLiteral("view"), QStringLiteral("--help")}, withoutDisplay())));
}

TEST_F(CommandLineTest, reportsHelpThatCannotBeWritten)
{
    for (const char* arguments : {"--help", "--version", "volume --help"}) {
        const Answer answer = shell(QStringLiteral("exec \"$KVGAMUT\" $1 > /dev/full"),
                                    {QLatin1String(arguments)}, withoutDisplay());
        EXPECT_EQ(answer.exitCode, BadOutput) << arguments;
        EXPECT_EQ(answer.errors, "kvgamut: 'standard output': cannot be written: No space left on device\n");
    }
}

TEST_F(CommandLineTest, versionIsOneLine)
{
    const Answer answer = kvgamut({QStringLiteral("--version")});
    EXPECT_TRUE(succeeded(answer));
    EXPECT_THAT(answer.output.toStdString(), testing::MatchesRegex("kvgamut [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

// --- Success ------------------------------------------------------------------------------------------

TEST_F(CommandLineTest, rendersWithEmptyStandardError)
{
    const Answer answer = render({sRGB}, output());
    EXPECT_TRUE(succeeded(answer));
    EXPECT_TRUE(answer.output.isEmpty());
    EXPECT_EQ(files(), QStringList{QStringLiteral("out.png")});
}

TEST_F(CommandLineTest, printsOpenGLDiagnosticsWhenVerbose)
{
    const Answer answer = render({sRGB, QStringLiteral("--verbose")}, output());
    EXPECT_EQ(answer.exitCode, Done);
    EXPECT_TRUE(answer.errors.contains("OpenGL")) << answer.errors.toStdString();
}

TEST_F(CommandLineTest, writesThePictureToStandardOutputForADash)
{
    ASSERT_TRUE(succeeded(render({sRGB}, output())));
    const Answer answer = render({sRGB}, QStringLiteral("-"));
    EXPECT_TRUE(succeeded(answer));
    EXPECT_EQ(answer.output, contents(output()));
}

TEST_F(CommandLineTest, replacesAnExistingPicture)
{
    write(output(), "an old picture");
    EXPECT_TRUE(succeeded(render({sRGB}, output())));
    EXPECT_TRUE(contents(output()).startsWith("\x89PNG"));
    EXPECT_EQ(files().size(), 1);
}

TEST_F(CommandLineTest, acceptsFileNamesWithSpacesAndLettersOfAnyScript)
{
    const QString profile = path(QStringLiteral("Профиль принтера 印刷 é.icc"));
    const QString picture = path(QStringLiteral("картина 図 ü.png"));
    ASSERT_TRUE(QFile::copy(cmyk, profile));
    EXPECT_TRUE(succeeded(render({profile}, picture)));
    EXPECT_FALSE(QImage(picture).isNull());
}

TEST_F(CommandLineTest, acceptsSuchFileNamesWithoutALocale)
{
    QProcessEnvironment bare = environment();
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"})
        bare.remove(QLatin1String(name));
    bare.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    const QString profile = path(QStringLiteral("印刷 é.icc"));
    ASSERT_TRUE(QFile::copy(cmyk, profile));
    EXPECT_TRUE(succeeded(render({profile}, output(), bare)));
    EXPECT_TRUE(
        failedWith(render({path(QStringLiteral("無.icc"))}, output(), bare), BadInput,
                   QStringLiteral("kvgamut: '%1': no such file").arg(path(QStringLiteral("無.icc")))));
}

TEST_F(CommandLineTest, acceptsTheSameProfileTwice)
{
    EXPECT_TRUE(succeeded(render({sRGB, sRGB, cmyk, cmyk}, output())));
}

TEST_F(CommandLineTest, readsAFileWithABuiltInNameByItsPath)
{
    const QString file = path(QStringLiteral("sRGB"));
    ASSERT_TRUE(QFile::copy(cmyk, file));
    ASSERT_TRUE(succeeded(render({cmyk}, output())));
    const QImage asCmyk(output());
    ASSERT_TRUE(succeeded(render({file}, output())));
    EXPECT_EQ(QImage(output()), asCmyk);
}

// --- Bad input ----------------------------------------------------------------------------------------

TEST_F(CommandLineTest, reportsAMissingFile)
{
    const QString missing = path(QStringLiteral("missing.icc"));
    EXPECT_TRUE(failedWith(render({missing}, output()), BadInput,
                           QStringLiteral("kvgamut: '%1': no such file").arg(missing)));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CommandLineTest, reportsWhyAFileIsNotAProfile)
{
    const QString garbage = path(QStringLiteral("garbage.icc"));
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("short"), QByteArray(5000, 'x'), contents(cmyk).left(1000)}) {
        write(garbage, bytes);
        const Answer answer = render({garbage}, output());
        EXPECT_EQ(answer.exitCode, BadInput);
        EXPECT_THAT(answer.errors.toStdString(),
                    testing::MatchesRegex("kvgamut: '[^'\n]*garbage\\.icc': [^\n]+\n"));
        EXPECT_FALSE(QFile::exists(output()));
    }
}

TEST_F(CommandLineTest, namesAFolderGivenAsAProfile)
{
    const Answer answer = render({path(QString())}, output());
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors.count('\n'), 1);
    EXPECT_TRUE(answer.errors.contains(": not a regular file"));
}

TEST_F(CommandLineTest, reportsWhyAGreyProfileHasNoGamut)
{
    const Answer answer = render({grey}, output());
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors.count('\n'), 1);
    EXPECT_TRUE(answer.errors.startsWith("kvgamut: '" + grey.toUtf8() + "': "));
    EXPECT_TRUE(answer.errors.contains("channel")) << answer.errors.toStdString();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CommandLineTest, drawsTheRestWhenOneInputIsBad)
{
    ASSERT_TRUE(succeeded(render({sRGB}, output())));
    const QImage alone(output());
    const QString missing = path(QStringLiteral("missing.icc"));
    for (const QStringList& inputs : {QStringList{missing, sRGB}, QStringList{sRGB, missing}}) {
        ASSERT_TRUE(QFile::remove(output()));
        EXPECT_TRUE(failedWith(render(inputs, output()), BadInput,
                               QStringLiteral("kvgamut: '%1': no such file").arg(missing)));
        // also opaque, although it is the second input
        EXPECT_EQ(QImage(output()), alone);
    }
}

TEST_F(CommandLineTest, showsTheFirstUsableGamutOpaque)
{
    ASSERT_TRUE(succeeded(render({sRGB}, output())));
    const QImage alone(output());
    const Answer answer = render({grey, sRGB}, output()); // can be opened, but has no gamut
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(QImage(output()), alone);
}

TEST_F(CommandLineTest, namesEveryBadInput)
{
    const Answer answer = render({QStringLiteral("nothing1"), grey, QStringLiteral("nothing2")}, output());
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_EQ(answer.errors.count('\n'), 3);
    EXPECT_TRUE(answer.errors.contains("'nothing1'"));
    EXPECT_TRUE(answer.errors.contains("'nothing2'"));
    EXPECT_TRUE(answer.errors.contains(grey.toUtf8()));
}

// --- Wrong usage --------------------------------------------------------------------------------------

struct Misuse
{
    const char* name;
    const char* arguments; ///< follow "render"; "@" stands for the output
    const char* problem;   ///< part of the message
};

void PrintTo(const Misuse& misuse, std::ostream* out)
{
    *out << "render " << misuse.arguments;
}

class MisuseTest : public CommandLineTest, public testing::WithParamInterface<Misuse>
{
};

TEST_P(MisuseTest, isReportedInOneLineWithoutOutput)
{
    QStringList arguments =
        QString::fromUtf8(GetParam().arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    arguments.replaceInStrings(QStringLiteral("@"), output());
    const Answer answer = kvgamut(QStringList{QStringLiteral("render")} + arguments);
    EXPECT_EQ(answer.exitCode, WrongUsage);
    EXPECT_TRUE(answer.errors.startsWith("kvgamut: "));
    EXPECT_EQ(answer.errors.count('\n'), 1) << answer.errors.toStdString();
    EXPECT_TRUE(answer.errors.contains(GetParam().problem)) << answer.errors.toStdString();
    EXPECT_TRUE(answer.output.isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Of, MisuseTest,
    testing::Values(Misuse{"noProfile", "-o @", "PROFILE"}, Misuse{"noOutput", "sRGB", "--output"},
                    Misuse{"unknownOption", "sRGB -o @ --frobnicate", "--frobnicate"},
                    Misuse{"optionWithoutValue", "sRGB -o @ --size", "--size"},
                    Misuse{"optionTwice", "sRGB -o @ --size 64x64 --size 32x32", "--size"},
                    Misuse{"sizeWithoutHeight", "sRGB -o @ --size 640", "--size"},
                    Misuse{"sizeTooSmall", "sRGB -o @ --size 15x100", "16 to 8192"},
                    Misuse{"sizeTooLarge", "sRGB -o @ --size 100x8193", "16 to 8192"},
                    Misuse{"negativeSize", "sRGB -o @ --size -10x100", "--size"},
                    Misuse{"sizeWithTail", "sRGB -o @ --size 100x100x", "--size"},
                    Misuse{"unknownView", "sRGB -o @ --view inside", "--view"},
                    Misuse{"unknownFrame", "sRGB -o @ --frame some", "--frame"},
                    Misuse{"cameraOfTwo", "sRGB -o @ --camera 1,2", "--camera"},
                    Misuse{"cameraOfFour", "sRGB -o @ --camera 1,2,3,4", "--camera"},
                    Misuse{"cameraNotFinite", "sRGB -o @ --camera 1,nan,3", "--camera"},
                    Misuse{"cameraOfWords", "sRGB -o @ --camera a,b,c", "--camera"},
                    Misuse{"cameraInTheInterestPoint", "sRGB -o @ --camera 50,0,0", "same point"},
                    Misuse{"cameraInTheChosenInterestPoint", "sRGB -o @ --camera 5,6,7 --look-at 5,6,7",
                           "same point"},
                    Misuse{"cameraAndView", "sRGB -o @ --camera 1,2,3 --view top", "--camera"},
                    Misuse{"lookAtAlone", "sRGB -o @ --look-at 1,2,3", "--camera"},
                    Misuse{"unknownMode", "sRGB -o @ --mode 4", "--mode"},
                    Misuse{"alphaAboveOne", "sRGB -o @ --alpha 1.01", "--alpha"},
                    Misuse{"alphaBelowZero", "sRGB -o @ --alpha 1,-0.1", "--alpha"},
                    Misuse{"alphaEmpty", "sRGB -o @ --alpha 1,,1", "--alpha"},
                    Misuse{"alphaNotANumber", "sRGB -o @ --alpha nan", "--alpha"},
                    Misuse{"ambientAboveOne", "sRGB -o @ --ambient 2", "--ambient"},
                    Misuse{"angleOfNothing", "sRGB -o @ --angle 0", "--angle"},
                    Misuse{"angleTooWide", "sRGB -o @ --angle 180", "--angle"},
                    Misuse{"unknownColour", "sRGB -o @ --color red,blurple", "blurple"},
                    Misuse{"unknownBackground", "sRGB -o @ --background 17", "--background"},
                    Misuse{"modeEmpty", "sRGB -o @ --mode smooth,", "--mode"},
                    Misuse{"lightOfTwo", "sRGB -o @ --light 1,2", "--light"},
                    Misuse{"unknownLightColour", "sRGB -o @ --light-color blurple", "--light-color"},
                    Misuse{"backgroundAndNone", "sRGB -o @ --background red --no-background", "--background"},
                    Misuse{"thresholdWithoutReference", "sRGB -o @ --reference-threshold 1", "--reference"},
                    Misuse{"negativeThreshold", "sRGB -o @ --reference x --reference-threshold -1",
                           "--reference-threshold"},
                    Misuse{"outputOverTheReference", "sRGB -o @ --reference @", "reference"},
                    Misuse{"unknownIntent", "sRGB -o @ --intent wild", "--intent"},
                    Misuse{"clipOfWords", "sRGB -o @ --clip high", "--clip"},
                    Misuse{"clipBelowBlack", "sRGB -o @ --clip -1", "0 to 100"},
                    Misuse{"clipAboveWhite", "sRGB -o @ --clip 101", "0 to 100"},
                    Misuse{"unknownSection", "sRGB -o @ --section floor", "--section"},
                    Misuse{"sectionAboveWhite", "sRGB -o @ --section-at 101", "0 to 100"},
                    Misuse{"markerTypeWithoutMarkers", "sRGB -o @ --marker-type cube", "--markers"},
                    Misuse{"unknownMarkerType", "sRGB -o @ --markers x --marker-type blob", "--marker-type"},
                    Misuse{"markerSizeOfNothing", "sRGB -o @ --markers x --marker-size 0", "--marker-size"},
                    Misuse{"pointSizeWithoutPoints", "sRGB -o @ --point-size 3", "--points"},
                    Misuse{"lineWidthWithoutLine", "sRGB -o @ --line-width 3", "--line"},
                    Misuse{"gridTooCoarse", "sRGB -o @ --grid 2", "--grid"},
                    Misuse{"gridTooFine", "sRGB -o @ --grid 130", "--grid"}),
    [](const auto& misuse) { return std::string(misuse.param.name); });

TEST_F(CommandLineTest, requiresACommand)
{
    for (const QStringList& arguments : {QStringList{}, QStringList{QStringLiteral("frobnicate")}}) {
        const Answer answer = kvgamut(arguments);
        EXPECT_EQ(answer.exitCode, WrongUsage);
        EXPECT_EQ(answer.errors.count('\n'), 1);
        EXPECT_TRUE(answer.errors.contains("--help"));
    }
}

// --- Bad output ---------------------------------------------------------------------------------------

TEST_F(CommandLineTest, reportsAnOutputInAMissingFolder)
{
    const QString nowhere = path(QStringLiteral("no folder/out.png"));
    EXPECT_TRUE(failedWith(
        render({sRGB}, nowhere), BadOutput,
        QStringLiteral("kvgamut: '%1': cannot be written: No such file or directory").arg(nowhere)));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CommandLineTest, namesAnOutputThatIsAFolder)
{
    const Answer answer = render({sRGB}, path(QString()));
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_EQ(answer.errors.count('\n'), 1);
    EXPECT_TRUE(answer.errors.contains("cannot be written"));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CommandLineTest, reportsAFullDevice)
{
    EXPECT_TRUE(
        failedWith(render({sRGB}, QStringLiteral("/dev/full")), BadOutput,
                   QStringLiteral("kvgamut: '/dev/full': cannot be written: No space left on device")));
    EXPECT_FALSE(QFileInfo(QStringLiteral("/dev/full")).isFile()); // still the device, not our picture
}

TEST_F(CommandLineTest, leavesNoPartialPictureOnAFullDevice)
{
    // the limit of 4 KiB for files would also break the caches of the graphics driver
    const QString script =
        QStringLiteral("trap '' XFSZ; ulimit -f 4; exec \"$KVGAMUT\" render sRGB --size 400x300 -o \"$1\"");
    QProcessEnvironment env = environment();
    env.insert(QStringLiteral("MESA_SHADER_CACHE_DISABLE"), QStringLiteral("true"));

    const Answer fresh = shell(script, {output()}, env);
    EXPECT_EQ(fresh.exitCode, BadOutput) << fresh.errors.toStdString();
    EXPECT_TRUE(fresh.errors.contains("cannot be written: File too large")) << fresh.errors.toStdString();
    EXPECT_TRUE(files().isEmpty());

    write(output(), "an old picture");
    EXPECT_EQ(shell(script, {output()}, env).exitCode, BadOutput);
    EXPECT_EQ(contents(output()), "an old picture");
    EXPECT_EQ(files().size(), 1);
}

TEST_F(CommandLineTest, endsQuietlyWhenTheReaderOfAPipeHasEnded)
{
    const Answer answer =
        shell(QStringLiteral("set -o pipefail; \"$KVGAMUT\" render sRGB --size 64x48 -o - | true"));
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_EQ(answer.errors, "");
}

TEST_F(CommandLineTest, anOutputErrorTakesPrecedenceOverAnInputError)
{
    const Answer answer = render({QStringLiteral("missing.icc"), sRGB}, path(QStringLiteral("no/out.png")));
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_EQ(answer.errors.count('\n'), 2);
}

} // namespace
