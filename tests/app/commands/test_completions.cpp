// SPDX-License-Identifier: Apache-2.0
// The completions of the shells, asked of the shells themselves.
#include "app/support/Program.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <gmock/gmock.h>

using namespace kvtest;

namespace {

QString script(const char* name)
{
    return QStringLiteral(KVGAMUT_COMPLETIONS "/") + QLatin1String(name);
}

QStringList sorted(QStringList words)
{
    words.removeDuplicates();
    words.sort();
    return words;
}

class CompletionsTest : public ProgramTest
{
protected:
    /// With the program in the PATH.
    static QProcessEnvironment withProgram()
    {
        QProcessEnvironment env = withoutDisplay();
        env.insert(QStringLiteral("PATH"),
                   QFileInfo(binary()).path() + QLatin1Char(':') + env.value(QStringLiteral("PATH")));
        env.insert(QStringLiteral("TERM"), QStringLiteral("dumb"));
        return env;
    }

    static QStringList linesOf(const Answer& answer)
    {
        EXPECT_TRUE(answer.errors.isEmpty()) << answer.errors.toStdString();
        return sorted(QString::fromUtf8(answer.output).split(QLatin1Char('\n'), Qt::SkipEmptyParts));
    }

    /// What bash offers for the last of @p words.
    QStringList bash(const QStringList& line) const
    {
        return linesOf(
            shell(QStringLiteral("source \"$1\"; cd \"$2\"; shift 2; COMP_WORDS=(\"$@\"); "
                                 "COMP_CWORD=$(($# - 1)); _kvgamut; printf '%s\\n' \"${COMPREPLY[@]}\""),
                  QStringList{script("kvgamut"), path(QString())} + line, withProgram()));
    }

    QStringList bash(const char* line) const { return bash(QString::fromUtf8(line).split(QLatin1Char(' '))); }

    /// What fish offers at the end of @p line, without descriptions.
    static QStringList fish(const QString& line)
    {
        QStringList found =
            linesOf(shell(QStringLiteral(KV_FISH " --no-config -c 'source $argv[1]; complete -C "
                                                 "$argv[2]' \"$1\" \"$2\""),
                          {script("kvgamut.fish"), line}, withProgram()));
        for (QString& word : found)
            word = word.section(QLatin1Char('\t'), 0, 0);
        return sorted(found);
    }

    /// What the program prints when a line is typed, with tabs, in an interactive shell.
    static QByteArray typed(const QString& shellCommand, const QString& preparation)
    {
        return shell(QStringLiteral(
                         "printf '%s\\n%s\\n%s\\n' \"$2\" \"$3\" exit | script -q -c \"$1\" /dev/null"),
                     {shellCommand, preparation, QStringLiteral("kvgamut volu\tsRGB --grid 5 --for\tcs\t")},
                     withProgram())
            .output;
    }

    static QStringList commands()
    {
        return words("info volume compare inside check slice export render view");
    }

    /// The options that the help of @p command lists.
    static QStringList optionsOf(const QString& command)
    {
        const QByteArray help = kvgamut({command, QStringLiteral("--help")}, withoutDisplay()).output;
        static const QRegularExpression line(QStringLiteral("^  (-[^ \n]+)"),
                                             QRegularExpression::MultilineOption);
        QStringList names;
        for (auto matches = line.globalMatch(QString::fromUtf8(help)); matches.hasNext();)
            names += matches.next().captured(1).split(QLatin1Char(','));
        return sorted(names);
    }
};

TEST_F(CompletionsTest, bashOffersTheCommands)
{
    EXPECT_EQ(bash("kvgamut help "), sorted(commands()));
    EXPECT_EQ(bash("kvgamut vo"), QStringList{QStringLiteral("volume")});
    EXPECT_EQ(bash("kvgamut --ver"), QStringList{QStringLiteral("--version")});
    EXPECT_EQ(bash("kvgamut unknown "), QStringList());
}

TEST_F(CompletionsTest, bashOffersTheOptionsThatExist)
{
    for (const QString& command : commands())
        EXPECT_EQ(bash({QStringLiteral("kvgamut"), command, QStringLiteral("-")}), optionsOf(command))
            << command.toStdString();
}

TEST_F(CompletionsTest, bashOffersTheWordsOfAnOption)
{
    EXPECT_EQ(bash("kvgamut volume x.icc --intent "), words("absolute perceptual relative saturation"));
    EXPECT_EQ(bash("kvgamut volume --intent Re"), words("relative"));
    EXPECT_EQ(bash("kvgamut volume --intent = re"), words("relative")); // bash divides words at =
    EXPECT_EQ(bash("kvgamut volume --intent ="), words("absolute perceptual relative saturation"));
    EXPECT_EQ(bash("kvgamut render --view t"), words("top"));
    EXPECT_EQ(bash("kvgamut volume --grid "), QStringList());
}

TEST_F(CompletionsTest, bashOffersFilesAndBuiltInNames)
{
    write(path(QStringLiteral("Re* [1].icc")), "");
    EXPECT_EQ(bash("kvgamut volume Re"),
              (QStringList{QStringLiteral("Re* [1].icc"), QStringLiteral("Rec2020")}));
    EXPECT_EQ(bash("kvgamut volume -o Re*"), QStringList{QStringLiteral("Re* [1].icc")});
}

TEST_F(CompletionsTest, bashCompletesWhatIsTyped)
{
    const QByteArray output = typed(QStringLiteral("bash --norc --noprofile -i"),
                                    QStringLiteral("PS1=; source ") + script("kvgamut"));
    EXPECT_TRUE(output.contains("\nsRGB,8")) << output.toStdString();
}

TEST_F(CompletionsTest, zshCompletesWhatIsTyped)
{
    if (QByteArray(KV_ZSH).isEmpty())
        GTEST_SKIP() << "zsh is not installed";
    const QByteArray output =
        typed(QStringLiteral(KV_ZSH " -f -i"),
              QStringLiteral("PS1=; fpath=(%1 $fpath); autoload -Uz compinit; compinit -D -u")
                  .arg(QStringLiteral(KVGAMUT_COMPLETIONS)));
    EXPECT_TRUE(output.contains("\nsRGB,8")) << output.toStdString();
}

TEST_F(CompletionsTest, fishOffersCommandsOptionsAndWords)
{
    if (QByteArray(KV_FISH).isEmpty())
        GTEST_SKIP() << "fish is not installed";
    EXPECT_EQ(fish(QStringLiteral("kvgamut vo")), words("volume"));
    EXPECT_EQ(fish(QStringLiteral("kvgamut help ")), sorted(commands()));
    EXPECT_EQ(fish(QStringLiteral("kvgamut volume x --intent ")),
              words("absolute perceptual relative saturation"));
    EXPECT_TRUE(fish(QStringLiteral("kvgamut volume ")).contains(QStringLiteral("DisplayP3")));
    for (const QString& command : commands()) {
        const QStringList offered = fish(QStringLiteral("kvgamut %1 --").arg(command));
        for (const QString& option : optionsOf(command))
            EXPECT_TRUE(!option.startsWith(QLatin1String("--")) || offered.contains(option))
                << command.toStdString() << ' ' << option.toStdString();
    }
}

} // namespace
