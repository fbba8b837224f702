// SPDX-License-Identifier: Apache-2.0
// What users of other programs of the command line expect.
#include "app/support/Program.h"

#include <QtCore/QFile>

#include <gmock/gmock.h>

using namespace kvtest;
using testing::HasSubstr;

namespace {

class HabitsTest : public ProgramTest
{
protected:
    static QProcessEnvironment withColumns(int columns)
    {
        QProcessEnvironment env = withoutDisplay();
        env.insert(QStringLiteral("COLUMNS"), QString::number(columns));
        return env;
    }

    static qsizetype longestLine(const QByteArray& text)
    {
        qsizetype longest = 0;
        for (const QString& line : QString::fromUtf8(text).split(QLatin1Char('\n')))
            longest = std::max(longest, line.size());
        return longest;
    }

    static std::string errorOf(const char* line)
    {
        const Answer answer = kvgamut(words(line), withoutDisplay());
        EXPECT_EQ(answer.exitCode, WrongUsage) << line;
        EXPECT_TRUE(answer.output.isEmpty()) << line;
        EXPECT_EQ(answer.errors.count('\n'), 1) << line;
        return answer.errors.toStdString();
    }

    static QByteArray outputOf(const char* line)
    {
        const Answer answer = kvgamut(words(line), withoutDisplay());
        EXPECT_TRUE(succeeded(answer)) << line;
        return answer.output;
    }
};

// --- Help and version --------------------------------------------------------------------------------

TEST_F(HabitsTest, helpIsACommand)
{
    EXPECT_EQ(outputOf("help"), outputOf("--help"));
    EXPECT_EQ(outputOf("help help"), outputOf("--help"));
    for (const char* command : {"info", "volume", "view"})
        EXPECT_EQ(kvgamut({QStringLiteral("help"), QLatin1String(command)}, withoutDisplay()).output,
                  kvgamut({QLatin1String(command), QStringLiteral("--help")}, withoutDisplay()).output)
            << command;
}

TEST_F(HabitsTest, helpOfAnUnknownCommandNamesANearOne)
{
    EXPECT_THAT(errorOf("help volum"), HasSubstr("there is no command 'volum'; did you mean volume?"));
}

TEST_F(HabitsTest, versionHasAShortOption)
{
    EXPECT_EQ(outputOf("-V"), outputOf("--version"));
}

TEST_F(HabitsTest, helpFitsTheWidthOfTheTerminal)
{
    for (const int columns : {50, 80, 120})
        for (const char* line : {"--help", "help render", "volume --help"}) {
            const Answer answer = kvgamut(words(line), withColumns(columns));
            EXPECT_LE(longestLine(answer.output), columns) << line;
            EXPECT_GT(longestLine(answer.output), columns - 20) << line;
        }
}

TEST_F(HabitsTest, helpHas80ColumnsWithoutATerminal)
{
    QProcessEnvironment env = withoutDisplay();
    env.remove(QStringLiteral("COLUMNS"));
    EXPECT_EQ(kvgamut(words("help render"), env).output,
              kvgamut(words("help render"), withColumns(80)).output);
}

TEST_F(HabitsTest, helpAsksTheTerminalForItsWidth)
{
    const Answer answer = shell(
        QStringLiteral("unset COLUMNS; script -q -c 'stty cols 60; \"$KVGAMUT\" help render' /dev/null"), {},
        withoutDisplay());
    EXPECT_EQ(answer.exitCode, Done);
    EXPECT_EQ(QByteArray(answer.output).replace('\r', ""),
              kvgamut(words("help render"), withColumns(60)).output);
}

TEST_F(HabitsTest, helpOfAnImpossibleWidthIsReadable)
{
    for (const char* columns : {"0", "-5", "7", "100000", "wide"}) {
        QProcessEnvironment env = withoutDisplay();
        env.insert(QStringLiteral("COLUMNS"), QLatin1String(columns));
        const Answer answer = kvgamut(words("help volume"), env);
        EXPECT_TRUE(succeeded(answer)) << columns;
        EXPECT_TRUE(answer.output.contains("--intent INTENT")) << columns;
    }
}

// --- Did you mean ------------------------------------------------------------------------------------

TEST_F(HabitsTest, anUnknownCommandNamesANearOne)
{
    EXPECT_EQ(errorOf("rendr sRGB"),
              "kvgamut: there is no command 'rendr'; did you mean render? (see kvgamut --help)\n");
    EXPECT_EQ(errorOf("frobnicate"), "kvgamut: there is no command 'frobnicate' (see kvgamut --help)\n");
}

TEST_F(HabitsTest, anInputWithoutACommandSaysThatOneIsMissing)
{
    EXPECT_EQ(errorOf("srgb"), "kvgamut: a command comes first: kvgamut info srgb (see kvgamut --help)\n");
}

TEST_F(HabitsTest, anUnknownOptionNamesANearOne)
{
    EXPECT_EQ(
        errorOf("volume sRGB --intnet relative"),
        "kvgamut: kvgamut volume has no option --intnet; did you mean --intent? (see kvgamut --help)\n");
    EXPECT_THAT(errorOf("volume sRGB --Gird=5"), HasSubstr("no option --Gird; did you mean --grid?"));
    EXPECT_EQ(errorOf("volume sRGB --frobnicate"),
              "kvgamut: kvgamut volume has no option --frobnicate (see kvgamut --help)\n");
    EXPECT_THAT(errorOf("--versoin"), HasSubstr("kvgamut has no option --versoin; did you mean --version?"));
}

TEST_F(HabitsTest, anUnknownWordOfAnOptionNamesTheKnownAndTheNearOnes)
{
    EXPECT_THAT(errorOf("volume sRGB --intent relativ"),
                HasSubstr("--intent: 'relativ' is not one of absolute, perceptual, relative, saturation; "
                          "did you mean relative?"));
    EXPECT_THAT(errorOf("render sRGB -o x.png --mode smooht"), HasSubstr("did you mean smooth?"));
    const std::string far = errorOf("volume sRGB --intent wild");
    EXPECT_THAT(far, HasSubstr("'wild' is not one of absolute"));
    EXPECT_THAT(far, testing::Not(HasSubstr("did you mean")));
}

TEST_F(HabitsTest, aMissingFileWithANameNearABuiltInOneNamesThat)
{
    for (const char* command : {"volume", "info", "inside", "export"}) {
        QStringList line{QLatin1String(command), QStringLiteral("P3")};
        if (line.first() == QLatin1String("inside"))
            line += words("50 0 0");
        if (line.first() == QLatin1String("export"))
            line += words("-o - --format ply");
        const Answer answer = kvgamut(line, withoutDisplay());
        EXPECT_EQ(answer.exitCode, BadInput) << command;
        EXPECT_EQ(answer.errors, "kvgamut: 'P3': no such file; did you mean DisplayP3?\n") << command;
    }
    EXPECT_EQ(kvgamut(words("volume printer.icc"), withoutDisplay()).errors,
              "kvgamut: 'printer.icc': no such file\n");
}

TEST_F(HabitsTest, aMissingSpaceOfColoursNamesTheBuiltInOne)
{
    const QString points = path(QStringLiteral("rgb.csv"));
    write(points, "R,G,B\n255,0,0\n");
    const Answer answer =
        kvgamut(words("inside sRGB --points-space adobe --points") << points, withoutDisplay());
    EXPECT_EQ(answer.exitCode, BadInput);
    EXPECT_TRUE(answer.errors.contains("'adobe': no such file; did you mean AdobeRGB?"));
}

// --- Any case ----------------------------------------------------------------------------------------

TEST_F(HabitsTest, wordsAndFormatsAreAcceptedInAnyCase)
{
    const std::pair<const char*, const char*> lines[] = {
        {"inside sRGB@Relative 50 0 0 --format JSON", "inside sRGB@relative 50 0 0 --format json"},
        {"inside srgb 50 0 0 --intent RELATIVE --format Csv",
         "inside srgb 50 0 0 --intent relative --format csv"},
        {"export sRGB --grid 5 -o - --format PLY", "export sRGB --grid 5 -o - --format ply"},
        {"slice sRGB --grid 5 --lightness 50 --format Svg --fill Colors",
         "slice sRGB --grid 5 --lightness 50 --format svg --fill colors"}};
    for (const auto& [written, usual] : lines) {
        const QByteArray expected = outputOf(usual);
        EXPECT_FALSE(expected.isEmpty());
        EXPECT_EQ(outputOf(written).replace("@Relative", "@relative"), expected) << written;
    }
}

TEST_F(HabitsTest, suffixesOfOutputsAreAcceptedInAnyCase)
{
    for (const char* name : {"cut.SVG", "cut.Json", "cut.CSV"})
        EXPECT_TRUE(succeeded(kvgamut(
            words("slice sRGB --grid 5 --lightness 50 -o") << path(QLatin1String(name)), withoutDisplay())))
            << name;
    EXPECT_TRUE(contents(path(QStringLiteral("cut.SVG"))).contains("<svg"));
    EXPECT_TRUE(succeeded(
        kvgamut(words("export sRGB --grid 5 -o") << path(QStringLiteral("x.PLY")), withoutDisplay())));
    EXPECT_TRUE(contents(path(QStringLiteral("x.PLY"))).startsWith("ply"));
}

TEST_F(HabitsTest, aFileHasPrecedenceOverABuiltInNameInAnotherCase)
{
    ASSERT_TRUE(QFile::copy(QStringLiteral(KVGAMUT_CMYK_PROFILE), path(QStringLiteral("srgb"))));
    const QString script = QStringLiteral("cd \"$1\" && \"$KVGAMUT\" info $2 --grid 5 --format json");
    const auto info = [&](const char* name) {
        return shell(script, {path(QString()), QLatin1String(name)}, withoutDisplay()).output;
    };
    EXPECT_TRUE(info("srgb").contains("CMYK"));
    EXPECT_FALSE(info("sRGB").contains("CMYK"));
    EXPECT_FALSE(info("SRGB").contains("CMYK"));
}

// --- How much is said --------------------------------------------------------------------------------

TEST_F(HabitsTest, everyCommandCanBeQuietOrVerbose)
{
    for (const char* command :
         {"info", "volume", "compare", "inside", "check", "slice", "export", "render", "view"}) {
        const QByteArray help =
            kvgamut({QLatin1String(command), QStringLiteral("--help")}, withoutDisplay()).output;
        EXPECT_TRUE(help.contains("  --quiet ")) << command;
        EXPECT_TRUE(help.contains("  --verbose ")) << command;
    }
    EXPECT_THAT(errorOf("volume sRGB --quiet --verbose"), HasSubstr("--quiet"));
}

TEST_F(HabitsTest, verboseSaysWhatIsReadAndComputedAndWhatTimeItTook)
{
    const QString output = path(QStringLiteral("out.csv"));
    const Answer answer =
        kvgamut(words("volume sRGB --grid 5 --verbose --format csv -o") << output, withoutDisplay());
    EXPECT_EQ(answer.exitCode, Done);
    EXPECT_TRUE(answer.output.isEmpty());
    EXPECT_THAT(answer.errors.toStdString(),
                testing::MatchesRegex(
                    "kvgamut: 'sRGB': read as profile, [0-9.]+ s\n"
                    "kvgamut: 'sRGB': device mesh, absolute intent, grid 5, [0-9]+ faces, [0-9.]+ s\n"
                    "kvgamut: '[^\n]*out.csv': written\n"
                    "kvgamut: done in [0-9.]+ s\n"));
}

TEST_F(HabitsTest, verboseChangesNoResult)
{
    EXPECT_EQ(kvgamut(words("inside sRGB 50 0 0 --verbose --format csv"), withoutDisplay()).output,
              outputOf("inside sRGB 50 0 0 --format csv"));
}

TEST_F(HabitsTest, quietLeavesOutNotesButNoErrors)
{
    const QString points = path(QStringLiteral("points.csv"));
    write(points, "50,0,0\n60,10,10\n");
    const auto inside = [&](const QStringList& more) {
        return kvgamut(words("inside sRGB --format csv --points") << points << more, withoutDisplay());
    };
    const Answer usual = inside({}), quiet = inside({QStringLiteral("--quiet")});
    EXPECT_TRUE(usual.errors.contains("points.csv")); // a table without a heading is taken as Lab
    EXPECT_TRUE(succeeded(quiet));
    EXPECT_EQ(quiet.output, usual.output);
    EXPECT_TRUE(failedWith(kvgamut(words("export missing.icc -o - --format ply --quiet"), withoutDisplay()),
                           BadInput, QStringLiteral("kvgamut: 'missing.icc': no such file")));
}

// --- Pipes -------------------------------------------------------------------------------------------

TEST_F(HabitsTest, aReaderThatGoesAwayIsNoError)
{
    for (const char* arguments : {"volume --help", "--generate bash", "export sRGB -o - --format obj",
                                  "slice sRGB --rings", "compare sRGB AdobeRGB --format json"}) {
        // the reader has ended before the program starts
        const Answer answer =
            shell(QStringLiteral("mkfifo \"$2\"; exec 3<>\"$2\" 4>\"$2\"; exec 3<&-; \"$KVGAMUT\" $1 >&4"),
                  {QLatin1String(arguments), path(QString::number(qHash(QByteArray(arguments))))},
                  withoutDisplay());
        EXPECT_EQ(answer.errors, "") << arguments;
        EXPECT_EQ(answer.exitCode, BadOutput) << arguments;
    }
}

TEST_F(HabitsTest, headPrintsTheFirstLineOfTheHelp)
{
    const Answer answer =
        shell(QStringLiteral("\"$KVGAMUT\" render --help | head -n 1"), {}, withoutDisplay());
    EXPECT_TRUE(succeeded(answer));
    EXPECT_EQ(answer.output.count('\n'), 1);
}

TEST_F(HabitsTest, everyInputThatIsOneFileCanBeStandardInput)
{
    const QString points = path(QStringLiteral("points.csv")), profile = QStringLiteral(KVGAMUT_CMYK_PROFILE);
    write(points, "L,a,b\n50,0,0\n60,10,10\n");
    for (const auto& [arguments, file] :
         {std::pair{"volume %1 --grid 5", profile}, std::pair{"inside sRGB --format csv --points %1", points},
          std::pair{"check sRGB --format csv --colors %1", points},
          std::pair{"slice sRGB --grid 5 --lightness 50 --format svg --points %1", points}}) {
        const QString script = QStringLiteral("\"$KVGAMUT\" ") + QLatin1String(arguments);
        const auto run = [&](const QString& input) {
            return shell(script.arg(input) + QStringLiteral(" < \"$1\""), {file}, withoutDisplay());
        };
        const Answer piped = run(QStringLiteral("-"));
        EXPECT_TRUE(succeeded(piped)) << arguments;
        if (file == points)
            EXPECT_EQ(piped.output, run(points).output) << arguments;
        else
            EXPECT_EQ(piped.exitCode, run(file).exitCode) << arguments;
    }
}

TEST_F(HabitsTest, standardInputIsReadOnce)
{
    for (const char* line : {"volume - -", "compare - sRGB -", "inside - --points -"})
        EXPECT_THAT(errorOf(line), HasSubstr("standard input (-) can be read only once")) << line;
}

TEST_F(HabitsTest, nothingIsColouredOnATerminal)
{
    const Answer answer =
        shell(QStringLiteral("script -q -e -c '\"$KVGAMUT\" volume missing.icc sRGB' /dev/null"), {},
              withoutDisplay());
    EXPECT_FALSE(answer.output.contains("\x1b[")) << answer.output.toStdString();
    EXPECT_TRUE(answer.output.contains("no such file"));
}

} // namespace
