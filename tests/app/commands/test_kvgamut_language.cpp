// SPDX-License-Identifier: Apache-2.0
#include "app/support/ViewTest.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

// The language of the system: the window follows it, the command line does not.

using namespace kvtest;

namespace {

/// Variables of the environment, and what they hold.
using Wish = QList<std::pair<const char*, QString>>;

QProcessEnvironment environmentOf(const Wish& wish)
{
    QProcessEnvironment env = environment();
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LC_NUMERIC", "LANG", "LANGUAGE"})
        env.remove(QLatin1String(name));
    for (const auto& [name, value] : wish)
        env.insert(QLatin1String(name), value);
    return env;
}

const Wish german{{"LANG", QStringLiteral("de_DE.UTF-8")}};

class WindowLanguage : public ViewTest
{
protected:
    /// The window that waits for files, as it is shown to whom @p wish is, once it rests.
    QImage welcomeFor(const Wish& wish)
    {
        m_process.setProcessEnvironment(environmentOf(wish));
        m_process.start(QStringLiteral(KVGAMUT_BINARY),
                        {QStringLiteral("view"), QStringLiteral("--size"), QStringLiteral("1000x700")});
        QImage last;
        int alike = 0;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                const QRect place = placeOnScreen(QStringLiteral("^kvgamut$"));
                const QImage now = place.isEmpty() ? QImage() : screenshot().copy(place);
                alike = !now.isNull() && now == last && hasWords(now) ? alike + 1 : 0;
                last = now;
                return alike >= 5;
            },
            longestWaitMs));
        EXPECT_EQ(m_process.readAllStandardError(), "");
        TearDown();
        return last;
    }

    /// Whether something is written in the middle, where the welcome stands.
    static bool hasWords(const QImage& window)
    {
        int dark = 0;
        for (int y = window.height() / 3; y < window.height() * 2 / 3; ++y)
            for (int x = window.width() / 3; x < window.width() * 2 / 3; ++x)
                dark += window.pixelColor(x, y).lightness() < 100 ? 1 : 0;
        return dark > 200;
    }
};

TEST_F(WindowLanguage, isThatOfTheSystem)
{
    const QImage english = welcomeFor({{"LANG", QStringLiteral("en_US.UTF-8")}});
    const QImage inGerman = welcomeFor(german);
    EXPECT_NE(inGerman, english);
    EXPECT_EQ(welcomeFor({}), english);
    EXPECT_EQ(welcomeFor({{"LANG", QStringLiteral("cy_GB.UTF-8")}}), english); // in which nothing is written
    // the variables in their order
    EXPECT_EQ(
        welcomeFor({{"LANG", QStringLiteral("en_US.UTF-8")}, {"LC_ALL", QStringLiteral("de_DE.UTF-8")}}),
        inGerman);
    EXPECT_EQ(welcomeFor({{"LANG", QStringLiteral("en_US.UTF-8")}, {"LANGUAGE", QStringLiteral("cy:de:en")}}),
              inGerman);
    EXPECT_EQ(welcomeFor({{"LANG", QStringLiteral("de_DE.UTF-8")}, {"LANGUAGE", QStringLiteral("en:de")}}),
              english);
    EXPECT_EQ(welcomeFor({{"LC_ALL", QStringLiteral("C")}, {"LANGUAGE", QStringLiteral("de")}}), english);
}

TEST_F(WindowLanguage, leavesStandardErrorInEnglish)
{
    const Answer answer =
        kvgamut({QStringLiteral("view"), QStringLiteral("missing.icc")}, environmentOf(german));
    EXPECT_TRUE(failedWith(answer, 1, QStringLiteral("kvgamut: there is no file 'missing.icc'")));
}

class CommandLanguage : public ProgramTest
{
protected:
    void SetUp() override
    {
        // a German locale of its own, whether or not the system has one
        const Answer made = shell(QStringLiteral("localedef -i de_DE -f UTF-8 \"$1\""),
                                  {path(QStringLiteral("de_DE.UTF-8"))}, m_english);
        ASSERT_EQ(made.exitCode, 0) << made.errors.toStdString();
        m_german.insert(QStringLiteral("LOCPATH"), QDir(path(QString())).absolutePath());
        const Answer point = shell(QStringLiteral("locale decimal_point; cat \"$1\""),
                                   {path(QStringLiteral("missing"))}, m_german);
        ASSERT_EQ(point.output, ",\n");
        ASSERT_TRUE(point.errors.contains("nicht gefunden")) << point.errors.toStdString();
    }

    /// Whether @p arguments get the same answer in both languages.
    void expectSame(const QStringList& arguments)
    {
        const Answer english = kvgamut(arguments, m_english);
        const Answer inGerman = kvgamut(arguments, m_german);
        EXPECT_EQ(inGerman.exitCode, english.exitCode) << arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(inGerman.output, english.output);
        EXPECT_EQ(inGerman.errors, english.errors);
        EXPECT_FALSE(english.output.isEmpty() && english.errors.isEmpty());
    }

    const QProcessEnvironment m_english = environmentOf({{"LC_ALL", QStringLiteral("C.UTF-8")}});
    QProcessEnvironment m_german = environmentOf({{"LC_ALL", QStringLiteral("de_DE.UTF-8")}});
};

TEST_F(CommandLanguage, isEnglishInEveryLocale)
{
    write(path(QStringLiteral("p.csv")), "50,1.5,2.5\n");
    const QString points = path(QStringLiteral("p.csv"));
    expectSame({QStringLiteral("--help")});
    expectSame({QStringLiteral("info"), QStringLiteral("sRGB")});
    expectSame({QStringLiteral("inside"), QStringLiteral("sRGB"), QStringLiteral("--points"), points,
                QStringLiteral("--tolerance"), QStringLiteral("1.5")});
    expectSame({QStringLiteral("slice"), QStringLiteral("sRGB"), QStringLiteral("--lightness"),
                QStringLiteral("50.5"), QStringLiteral("-o"), QStringLiteral("-")});
    expectSame({QStringLiteral("compare"), QStringLiteral("missing.icc"), QStringLiteral("sRGB")});
    expectSame(
        {QStringLiteral("volume"), QStringLiteral("sRGB"), QStringLiteral("--grid"), QStringLiteral("x")});
}

TEST_F(CommandLanguage, isEnglishWhereTheSystemGivesTheReason)
{
    const QString loop = path(QStringLiteral("loop.csv"));
    ASSERT_TRUE(QFile::link(loop, loop));
    const QStringList arguments{QStringLiteral("inside"), QStringLiteral("sRGB"), QStringLiteral("--points"),
                                loop};
    expectSame(arguments);
    EXPECT_TRUE(kvgamut(arguments, m_german).errors.contains("Too many levels of symbolic links"));
}

} // namespace
