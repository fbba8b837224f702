// SPDX-License-Identifier: Apache-2.0
#include "app/support/ViewTest.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

// The window is shown in the language of the system; the command line is always English.

using namespace kvtest;

namespace {

/// Environment variables and their values.
using Variables = QList<std::pair<const char*, QString>>;

/// The test environment, with only @p variables to set the language.
QProcessEnvironment environmentWith(const Variables& variables)
{
    QProcessEnvironment env = environment();
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LC_NUMERIC", "LANG", "LANGUAGE"})
        env.remove(QLatin1String(name));
    for (const auto& [name, value] : variables)
        env.insert(QLatin1String(name), value);
    return env;
}

/// A folder of compiled locales that replaces those of the system, so that it does not matter which are
/// installed there.
class Locales
{
public:
    void compile(const QString& language)
    {
        const QString folder = path() + QLatin1Char('/') + language + QStringLiteral(".UTF-8");
        const Answer made = shell(QStringLiteral("localedef -i \"$1\" -f UTF-8 \"$2\""), {language, folder},
                                  environmentWith({{"LC_ALL", QStringLiteral("C.UTF-8")}}));
        EXPECT_EQ(made.exitCode, 0) << made.errors.toStdString();
    }
    QString path() const { return QDir(m_folder.path()).absolutePath(); }

private:
    QTemporaryDir m_folder;
};

const QString englishLocale = QStringLiteral("en_US.UTF-8");
const QString germanLocale = QStringLiteral("de_DE.UTF-8");

class WindowLanguage : public ViewTest
{
protected:
    /// A picture of the window without gamuts, with @p variables set, after it no longer changes.
    QImage windowWith(const Variables& variables)
    {
        QProcessEnvironment env = environmentWith(variables);
        env.insert(QStringLiteral("LOCPATH"), m_locales.path());
        m_process.setProcessEnvironment(env);
        m_process.start(QStringLiteral(KVGAMUT_BINARY),
                        {QStringLiteral("view"), QStringLiteral("--size"), QStringLiteral("1000x700")});
        QImage last;
        int unchanged = 0;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                const QRect place = placeOnScreen(QStringLiteral("^kvgamut$"));
                const QImage now = place.isEmpty() ? QImage() : screenshot().copy(place);
                unchanged = !now.isNull() && now == last && hasWelcome(now) ? unchanged + 1 : 0;
                last = now;
                return unchanged >= 5;
            },
            maxWaitMs));
        EXPECT_EQ(m_process.readAllStandardError(), "");
        TearDown();
        return last;
    }

    /// The menu bar of that window. It contains no numbers, whose format depends on other variables.
    QImage menuBarWith(const Variables& variables)
    {
        constexpr int menuBarHeight = 20;
        const QImage window = windowWith(variables);
        return window.copy(0, 0, window.width(), menuBarHeight);
    }

    /// Whether the text in the middle of the window is drawn.
    static bool hasWelcome(const QImage& window)
    {
        int dark = 0;
        for (int y = window.height() / 3; y < window.height() * 2 / 3; ++y)
            for (int x = window.width() / 3; x < window.width() * 2 / 3; ++x)
                dark += window.pixelColor(x, y).lightness() < 100 ? 1 : 0;
        return dark > 200;
    }

    void expectLanguageOfTheSystem()
    {
        const QImage english = menuBarWith({{"LANG", englishLocale}});
        const QImage german = menuBarWith({{"LANG", germanLocale}});
        EXPECT_NE(german, english);
        EXPECT_EQ(menuBarWith({}), english);
        EXPECT_EQ(menuBarWith({{"LANG", QStringLiteral("cy_GB.UTF-8")}}), english); // not translated
        // in the order of precedence of the variables
        EXPECT_EQ(menuBarWith({{"LANG", englishLocale}, {"LC_ALL", germanLocale}}), german);
        EXPECT_EQ(menuBarWith({{"LANG", englishLocale}, {"LANGUAGE", QStringLiteral("cy:de:en")}}), german);
        EXPECT_EQ(menuBarWith({{"LANG", germanLocale}, {"LANGUAGE", QStringLiteral("en:de")}}), english);
        EXPECT_EQ(menuBarWith({{"LC_ALL", QStringLiteral("C")}, {"LANGUAGE", QStringLiteral("de")}}),
                  english);
    }

    Locales m_locales;
};

TEST_F(WindowLanguage, followsTheSystemWithItsLocalesInstalled)
{
    m_locales.compile(QStringLiteral("en_US"));
    m_locales.compile(QStringLiteral("de_DE"));
    expectLanguageOfTheSystem();
}

TEST_F(WindowLanguage, followsTheSystemWithoutItsLocales)
{
    expectLanguageOfTheSystem();
}

TEST_F(WindowLanguage, isIndependentOfTheFormOfNumbers)
{
    m_locales.compile(QStringLiteral("en_US"));
    m_locales.compile(QStringLiteral("de_DE"));
    const QImage germanNumbers = windowWith({{"LANG", englishLocale}, {"LC_NUMERIC", germanLocale}});
    EXPECT_NE(germanNumbers, windowWith({{"LANG", englishLocale}}));
    EXPECT_EQ(germanNumbers, windowWith({{"LANG", germanLocale}, {"LANGUAGE", QStringLiteral("en:de")}}));
}

TEST_F(WindowLanguage, leavesStandardErrorInEnglish)
{
    const Answer answer = kvgamut({QStringLiteral("view"), QStringLiteral("missing.icc")},
                                  environmentWith({{"LANG", germanLocale}}));
    EXPECT_TRUE(failedWith(answer, 1, QStringLiteral("kvgamut: 'missing.icc': no such file")));
}

class CommandLanguage : public ProgramTest
{
protected:
    void SetUp() override
    {
        m_locales.compile(QStringLiteral("de_DE"));
        m_german.insert(QStringLiteral("LOCPATH"), m_locales.path());
        const Answer point = shell(QStringLiteral("locale decimal_point; cat \"$1\""),
                                   {path(QStringLiteral("missing"))}, m_german);
        ASSERT_EQ(point.output, ",\n");
        ASSERT_TRUE(point.errors.contains("nicht gefunden")) << point.errors.toStdString();
    }

    /// Expects the same output and exit code with English and with German variables.
    void expectSame(const QStringList& arguments)
    {
        const Answer english = kvgamut(arguments, m_english);
        const Answer inGerman = kvgamut(arguments, m_german);
        EXPECT_EQ(inGerman.exitCode, english.exitCode) << arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(inGerman.output, english.output);
        EXPECT_EQ(inGerman.errors, english.errors);
        EXPECT_FALSE(english.output.isEmpty() && english.errors.isEmpty());
    }

    Locales m_locales;
    const QProcessEnvironment m_english = environmentWith({{"LC_ALL", QStringLiteral("C.UTF-8")}});
    QProcessEnvironment m_german = environmentWith({{"LC_ALL", germanLocale}});
};

TEST_F(CommandLanguage, isEnglishInEveryLocale)
{
    write(path(QStringLiteral("p.csv")), "L,a,b\n50,1.5,2.5\n");
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

TEST_F(CommandLanguage, isEnglishInReasonsOfTheOperatingSystem)
{
    const QString loop = path(QStringLiteral("loop.csv"));
    ASSERT_TRUE(QFile::link(loop, loop));
    const QStringList arguments{QStringLiteral("inside"), QStringLiteral("sRGB"), QStringLiteral("--points"),
                                loop};
    expectSame(arguments);
    EXPECT_TRUE(kvgamut(arguments, m_german).errors.contains("Too many levels of symbolic links"));
}

} // namespace
