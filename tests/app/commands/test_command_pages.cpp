// SPDX-License-Identifier: Apache-2.0
#include "app/support/Program.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

using namespace kvtest;

namespace {

/// Every command of the program has a page in docs/commands/ and a man page, and both agree with --help.
class CommandPagesTest : public testing::Test
{
protected:
    static QString help(const QStringList& words)
    {
        return QString::fromUtf8(
            kvgamut(words + QStringList{QStringLiteral("--help")}, withoutDisplay()).output);
    }

    /// The commands that --help lists.
    static QStringList commands()
    {
        const QString list =
            help({}).section(QStringLiteral("Subcommands:\n"), 1).section(QStringLiteral("\n\n"), 0, 0);
        static const QRegularExpression first(QStringLiteral("^  ([a-z]+) "),
                                              QRegularExpression::MultilineOption);
        QStringList names;
        for (auto matches = first.globalMatch(list); matches.hasNext();)
            names.append(matches.next().captured(1));
        return names;
    }

    static QString page(const QString& command)
    {
        return QString::fromUtf8(contents(QStringLiteral(KVGAMUT_PAGES "/%1.md").arg(command)));
    }

    /// The approximate plain text of a man page: without escapes and font changes.
    static QString manPage(const QString& name)
    {
        static const QRegularExpression markup(QStringLiteral("\\\\f[A-Z]|\\\\,|\\\\/"));
        return QString::fromUtf8(contents(QStringLiteral(KVGAMUT_MAN_PAGES "/%1.1").arg(name)))
            .remove(markup)
            .replace(QStringLiteral("\\-"), QStringLiteral("-"));
    }
};

TEST_F(CommandPagesTest, thereAreCommands)
{
    for (const char* name : {"info", "volume", "compare", "inside", "render", "view"})
        EXPECT_TRUE(commands().contains(QLatin1String(name))) << name;
}

TEST_F(CommandPagesTest, everyCommandHasAPageWithItsHelp)
{
    for (const QString& command : commands()) {
        const QString block =
            page(command).section(QStringLiteral("\n```help\n"), 1).section(QStringLiteral("\n```\n"), 0, 0);
        EXPECT_EQ(block + QLatin1Char('\n'), help({command}))
            << "docs/commands/" << command.toStdString()
            << ".md: tools/refresh_command_pages.sh puts the present help into the pages";
    }
}

TEST_F(CommandPagesTest, everyPageIsOfACommand)
{
    QStringList pages = QDir(QStringLiteral(KVGAMUT_PAGES)).entryList({QStringLiteral("*.md")});
    pages.replaceInStrings(QStringLiteral(".md"), QString());
    QStringList names = commands();
    names.sort();
    EXPECT_EQ(pages, names);
}

TEST_F(CommandPagesTest, everyCommandHasAManPageWithItsOptionsAndSummary)
{
    static const QRegularExpression option(QStringLiteral("--[a-z][a-z-]+"));
    for (const QString& command : commands()) {
        const QString name = QStringLiteral("kvgamut-") + command;
        const QString man = manPage(name), text = help({command});
        EXPECT_TRUE(man.startsWith(QStringLiteral(".\\\" Made by kvgamut")));
        EXPECT_TRUE(man.contains(QStringLiteral(".TH ") + name.toUpper())) << name.toStdString();
        EXPECT_TRUE(man.contains(text.section(QLatin1Char('\n'), 0, 0))) << name.toStdString();
        for (auto matches = option.globalMatch(text); matches.hasNext();) {
            const QString word = matches.next().captured();
            EXPECT_TRUE(man.contains(word)) << name.toStdString() << " " << word.toStdString();
        }
    }
}

TEST_F(CommandPagesTest, theManPageOfTheProgramNamesItsCommandsAndExitCodes)
{
    const QString man = manPage(QStringLiteral("kvgamut"));
    for (const QString& command : commands())
        EXPECT_TRUE(man.contains(QLatin1Char('\n') + command + QLatin1Char('\n'))) << command.toStdString();
    EXPECT_TRUE(
        man.contains(QStringLiteral("Exit codes: 0 done, 1 some input could not be used, 2 wrong usage")));
}

} // namespace
