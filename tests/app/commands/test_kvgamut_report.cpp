// SPDX-License-Identifier: Apache-2.0
#include "app/support/Numbers.h"

#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/GamutSource.h"
#include "model/inputs/SavedGamut.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

using namespace kvtest;

namespace {

/// What the commands that print numbers have in common: names of inputs, --format, --output, --quiet,
/// exit codes.
class ReportTest : public NumbersTest
{
protected:
    QStringList command(const QString& name) const
    {
        static const QHash<QString, QString> rest{{QStringLiteral("compare"), QStringLiteral("sRGB")},
                                                  {QStringLiteral("inside"), QStringLiteral("50 0 0")}};
        return QStringList{name, sRGB} + words(rest.value(name));
    }

    const QStringList commands = words(QStringLiteral("info volume compare inside"));
};

TEST_F(ReportTest, needsNoDisplayAndKeepsStandardErrorEmpty)
{
    for (const QString& name : commands)
        EXPECT_TRUE(succeeded(run(command(name)))) << name.toStdString();
}

TEST_F(ReportTest, everyCommandPrintsAnArrayInJson)
{
    for (const QString& name : commands)
        EXPECT_EQ(json(command(name)).size(), 1) << name.toStdString();
}

TEST_F(ReportTest, theFormatsDiffer)
{
    for (const QString& name : commands) {
        const auto of = [&](const char* format) {
            return run(command(name) + QStringList{QStringLiteral("--format"), QLatin1String(format)}).output;
        };
        EXPECT_EQ(of("text").left(1), run(command(name)).output.left(1));
        const QByteArray header = name == QLatin1String("compare") ? "a,b," : "profile,";
        EXPECT_FALSE(of("text").startsWith(header));
        EXPECT_TRUE(of("csv").startsWith(header));
        EXPECT_TRUE(of("json").startsWith("["));
    }
}

TEST_F(ReportTest, everySettingChangesTheNumbers)
{
    for (const QString& name : commands) {
        QStringList relative = command(name) + words(QStringLiteral("--intent relative"));
        relative[1] = cmyk;
        const auto numbers = [](const QStringList& arguments) {
            QJsonObject row = json(arguments).value(0);
            row.remove(QStringLiteral("seconds"));
            return row;
        };
        for (const char* setting : {"--bpc", "--grid 9"})
            EXPECT_NE(numbers(relative), numbers(relative + words(QLatin1String(setting))))
                << name.toStdString() << " " << setting;
        QStringList absolute = relative;
        absolute.removeLast();
        absolute.removeLast();
        EXPECT_NE(numbers(relative), numbers(absolute)) << name.toStdString();
    }
}

TEST_F(ReportTest, printsNamesAsGiven)
{
    QDir().mkpath(path(QStringLiteral("one")));
    QDir().mkpath(path(QStringLiteral("two, \"второй\" 印刷")));
    const QStringList names{path(QStringLiteral("one/p.icc")),
                            path(QStringLiteral("two, \"второй\" 印刷/p.icc"))};
    for (const QString& name : names)
        ASSERT_TRUE(QFile::copy(cmyk, name));
    const auto rows = json(QStringList{QStringLiteral("volume")} + names);
    ASSERT_EQ(rows.size(), 2); // although their base names are the same
    EXPECT_EQ(word(rows[0], "profile"), names[0]);
    EXPECT_EQ(word(rows[1], "profile"), names[1]);
    EXPECT_EQ(rows[0].value(QStringLiteral("volume")), rows[1].value(QStringLiteral("volume")));

    const Answer csv =
        run({QStringLiteral("volume"), QStringLiteral("--format"), QStringLiteral("csv"), names[1]});
    const QString quoted = QLatin1Char('"') +
                           QString(names[1]).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
                           QLatin1Char('"');
    EXPECT_EQ(csv.output.split('\n').value(1).left(quoted.toUtf8().size()), quoted.toUtf8());
}

TEST_F(ReportTest, printsTheSameOnEveryRun)
{
    for (const QString& name : words(QStringLiteral("info inside")))
        for (const char* format : {"text", "csv", "json"}) {
            const QStringList arguments =
                command(name) + QStringList{QStringLiteral("--format"), QLatin1String(format)};
            EXPECT_EQ(run(arguments).output, run(arguments).output);
        }
    // to compare equal gamuts takes no time
    for (const QStringList& arguments :
         {command(QStringLiteral("volume")),
          QStringList{QStringLiteral("compare"), sRGB, QStringLiteral("AdobeRGB")}}) {
        QJsonObject first = json(arguments).value(0), second = json(arguments).value(0);
        EXPECT_GT(number(first, "seconds"), 0.0);
        first.remove(QStringLiteral("seconds"));
        second.remove(QStringLiteral("seconds"));
        EXPECT_EQ(first, second) << arguments.join(QLatin1Char(' ')).toStdString();
    }
}

TEST_F(ReportTest, aSavedGamutHasItsOwnSettings)
{
    const QString file = path(QStringLiteral("saved"));
    const auto gamut =
        GamutSource::open(cmyk).value().compute({KVVMRenderRelativeColorimetric, false, 17}).value();
    write(file, SavedGamut{gamut.serialize(), cmyk}.bytes());
    const auto rows =
        json({QStringLiteral("volume"), file, cmyk, QStringLiteral("--grid"), QStringLiteral("33")});
    ASSERT_EQ(rows.size(), 2);
    EXPECT_TRUE(flag(rows[0], "saved"));
    EXPECT_FALSE(flag(rows[1], "saved"));
    EXPECT_EQ(word(rows[0], "intent"), QStringLiteral("relative"));
    EXPECT_EQ(word(rows[1], "intent"), QStringLiteral("absolute"));
    EXPECT_EQ(number(rows[0], "grid"), 17);
    EXPECT_NEAR(number(rows[0], "volume"), gamut.report().volume, 0.06);

    write(file, contents(file).left(500));
    EXPECT_TRUE(failedWith(
        run({QStringLiteral("volume"), file}), BadInput,
        QStringLiteral("kvgamut: '%1': the saved gamut is damaged: Unexpected end of input data (more "
                       "bytes needed)")
            .arg(file)));
}

// --- Output -------------------------------------------------------------------------------------------

TEST_F(ReportTest, writesTheFileThatWasNamed)
{
    const QString file = path(QStringLiteral("имя 名.json"));
    for (const QString& name : words(QStringLiteral("info inside"))) { // their output contains no times
        for (const char* option : {"-o", "--output"}) {
            const Answer answer = run(command(name) + QStringList{QLatin1String(option), file});
            EXPECT_TRUE(succeeded(answer));
            EXPECT_TRUE(answer.output.isEmpty());
            EXPECT_EQ(contents(file), run(command(name)).output);
        }
        EXPECT_EQ(run(command(name) + words(QStringLiteral("-o -"))).output, run(command(name)).output);
    }
    EXPECT_EQ(files().size(), 1);
}

TEST_F(ReportTest, reportsAFileThatCannotBeWritten)
{
    const QString nowhere = path(QStringLiteral("no folder/out"));
    for (const QString& name : commands) {
        EXPECT_TRUE(failedWith(
            run(command(name) + QStringList{QStringLiteral("-o"), nowhere}), BadOutput,
            QStringLiteral("kvgamut: '%1': cannot be written: No such file or directory").arg(nowhere)));
        EXPECT_TRUE(
            failedWith(run(command(name) + words(QStringLiteral("-o /dev/full"))), BadOutput,
                       QStringLiteral("kvgamut: '/dev/full': cannot be written: No space left on device")));
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ReportTest, doesNotOverwriteItsInput)
{
    const QString file = path(QStringLiteral("mine.icc"));
    const QString link = path(QStringLiteral("link"));
    const QByteArray profile = BuiltInProfiles::profile(QStringLiteral("AdobeRGB"));
    write(file, profile);
    ASSERT_TRUE(QFile::link(file, link));
    for (const QString& output : {file, link}) {
        EXPECT_TRUE(failedWith(
            run({QStringLiteral("volume"), QStringLiteral("sRGB"), file, QStringLiteral("-o"), output}),
            WrongUsage,
            QStringLiteral("kvgamut: '%1': the output would overwrite this input; choose another name")
                .arg(file)));
        EXPECT_EQ(run({QStringLiteral("export"), file, QStringLiteral("--format"), QStringLiteral("ply"),
                       QStringLiteral("-o"), output})
                      .exitCode,
                  WrongUsage);
    }
    EXPECT_EQ(run({QStringLiteral("inside"), QStringLiteral("sRGB"), QStringLiteral("--points"), file,
                   QStringLiteral("-o"), file})
                  .exitCode,
              WrongUsage);
    EXPECT_EQ(contents(file), profile);
}

TEST_F(ReportTest, readsFilesWhoseNamesAreNotUtf8)
{
    const Answer answer = shell(
        QStringLiteral("cd \"$1\" && f=$'caf\\xe9' && cp \"$2\" \"$f\" && \"$KVGAMUT\" info \"$f\" "
                       "--format csv; \"$KVGAMUT\" volume sRGB -o \"$f.csv\"; r=$?; rm \"$f\"; ls; exit $r"),
        {path(QString()), QStringLiteral(KVGAMUT_CMYK_PROFILE)}, withoutDisplay());
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_TRUE(answer.output.contains("\ncaf\\xe9,profile,")) << answer.output.toStdString();
    EXPECT_EQ(answer.errors, "kvgamut: 'caf\\xe9.csv': cannot be written: the name is not UTF-8\n");
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ReportTest, printsNoControlCharactersOfArguments)
{
    const Answer answer = run({QStringLiteral("volume"), QStringLiteral("a\x1b]0;x\x07\u202e")});
    EXPECT_EQ(answer.errors, "kvgamut: 'a\\x1b]0;x\\x07\\u202e': no such file\n");
    EXPECT_FALSE(run({QStringLiteral("volume"), QStringLiteral("--\x1b")}).errors.contains('\x1b'));
}

TEST_F(ReportTest, readsAProfileFromStandardInput)
{
    const Answer answer = shell(QStringLiteral("cat \"$1\" | \"$KVGAMUT\" info - --format csv"),
                                {QStringLiteral(KVGAMUT_CMYK_PROFILE)}, withoutDisplay());
    EXPECT_TRUE(succeeded(answer));
    EXPECT_TRUE(answer.output.contains("\n-,profile,")) << answer.output.toStdString();
}

TEST_F(ReportTest, keepsTheOldFileWhenSpaceRunsOut)
{
    const QString file = path(QStringLiteral("old"));
    write(file, "old");
    const Answer answer =
        shell(QStringLiteral("trap '' XFSZ; ulimit -f 1; exec \"$KVGAMUT\" volume --grid 5 "
                             "sRGB sRGB sRGB sRGB sRGB sRGB sRGB sRGB --format json -o \"$1\""),
              {file}, withoutDisplay());
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_TRUE(answer.errors.contains("File too large")) << answer.errors.toStdString();
    EXPECT_EQ(contents(file), "old");
    EXPECT_EQ(files().size(), 1);
}

TEST_F(ReportTest, saysNothingWhenTheReaderOfAPipeHasEnded)
{
    // the reader of the pipe ends before the program writes
    const Answer answer = shell(QStringLiteral("exec 3> >(true); wait $!; exec \"$KVGAMUT\" volume sRGB >&3"),
                                {}, withoutDisplay());
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_EQ(answer.errors, "");
}

TEST_F(ReportTest, needsNoStandardInputAndReportsClosedOutput)
{
    const QByteArray expected = run(command(QStringLiteral("info"))).output;
    EXPECT_EQ(shell(QStringLiteral("exec \"$KVGAMUT\" info sRGB <&-"), {}, withoutDisplay()).output,
              expected);
    EXPECT_EQ(shell(QStringLiteral("exec \"$KVGAMUT\" info sRGB 2>&-"), {}, withoutDisplay()).output,
              expected);
    const Answer answer = shell(QStringLiteral("exec \"$KVGAMUT\" info sRGB >&-"), {}, withoutDisplay());
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_TRUE(answer.errors.contains("'standard output': cannot be written"))
        << answer.errors.toStdString();
}

TEST_F(ReportTest, anOutputErrorTakesPrecedenceOverAnInputError)
{
    const Answer answer = run(words(QStringLiteral("volume sRGB -o /dev/full")) + QStringList{missing});
    EXPECT_EQ(answer.exitCode, BadOutput);
    EXPECT_EQ(answer.errors.count('\n'), 2);
}

// --- The progress bar ---------------------------------------------------------------------------------

class ProgressTest : public ReportTest
{
protected:
    /// The standard error, on a terminal, of a run with @p arguments that takes more than a second.
    static QByteArray onATerminal(const QString& arguments)
    {
        const QString program = QStringLiteral("\\\"$KVGAMUT\\\" %1 2>&1 >/dev/null").arg(arguments);
        return shell(QStringLiteral("script -qec \"%1\" /dev/null").arg(program), {}, withoutDisplay())
            .output;
    }

    static QString slow()
    {
        QStringList inputs;
        for (int i = 0; i < 6; ++i)
            inputs.append(QStringLiteral(KVGAMUT_CMYK_PROFILE));
        return QStringLiteral("volume --grid 65 ") + inputs.join(QLatin1Char(' '));
    }
};

TEST_F(ProgressTest, isShownOnATerminalAndErased)
{
    const QByteArray seen = onATerminal(slow());
    EXPECT_TRUE(seen.startsWith("\r[")) << seen.toStdString();
    EXPECT_TRUE(seen.contains(" % gamuts"));
    EXPECT_TRUE(seen.endsWith("\r\x1b[K"));
    // the progress never decreases
    int last = 0;
    for (const QByteArray& line : seen.split('\r')) {
        if (!line.startsWith('['))
            continue;
        const int percent = line.mid(line.indexOf(']') + 1, 4).trimmed().toInt();
        EXPECT_GE(percent, last);
        last = percent;
    }
}

TEST_F(ProgressTest, isNotShownWhenQuietOrIntoAFile)
{
    EXPECT_EQ(onATerminal(slow() + QStringLiteral(" --quiet")), QByteArray());
    EXPECT_TRUE(succeeded(run(words(slow()))));
}

// --- Usage --------------------------------------------------------------------------------------------

TEST_F(ReportTest, refusesWrongUsageInOneLine)
{
    for (const QString& name : commands)
        for (const char* wrong : {"--format xml", "--format", "--intent wild", "--grid 2", "--grid 130",
                                  "--grid x", "--frobnicate", "-o", "--format csv --format json"}) {
            const Answer answer = run(command(name) + words(QLatin1String(wrong)));
            EXPECT_EQ(answer.exitCode, WrongUsage) << name.toStdString() << " " << wrong;
            EXPECT_TRUE(answer.errors.startsWith("kvgamut: "));
            EXPECT_EQ(answer.errors.count('\n'), 1) << answer.errors.toStdString();
            EXPECT_TRUE(answer.output.isEmpty());
        }
}

TEST_F(ReportTest, requiresAnInput)
{
    for (const QString& name : commands) {
        const Answer answer = run({name});
        EXPECT_EQ(answer.exitCode, WrongUsage);
        EXPECT_TRUE(answer.errors.contains("PROFILE")) << answer.errors.toStdString();
    }
}

TEST_F(ReportTest, helpNamesTheCommonOptions)
{
    for (const QString& name : commands) {
        const Answer answer = run({name, QStringLiteral("--help")});
        EXPECT_TRUE(succeeded(answer));
        for (const char* option : {"--intent", "--bpc", "--grid", "--format", "--output", "--quiet", "sRGB"})
            EXPECT_TRUE(answer.output.contains(option)) << name.toStdString() << " " << option;
    }
}

} // namespace
