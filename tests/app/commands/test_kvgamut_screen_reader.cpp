// SPDX-License-Identifier: Apache-2.0
#include "app/support/RealInput.h"
#include "app/support/ScreenReader.h"
#include "app/support/ViewTest.h"
#include "support/WindowManager.h"

#include <gmock/gmock.h>

#include <QtCore/QLocale>

// The window as a screen reader sees it: read over the accessibility bus, from another process.

using namespace kvtest;
using testing::Contains;

namespace {

/// What people who cannot see a control have to know of it.
struct Spoken
{
    QString role;
    QString label;
    bool operator==(const Spoken&) const = default;
};

void PrintTo(const Spoken& spoken, std::ostream* out)
{
    *out << spoken.role.toStdString() << " '" << spoken.label.toStdString() << '\'';
}

QList<Spoken> spokenOf(const Accessible& control)
{
    QList<Spoken> all;
    const QStringList labels = control.labels();
    for (const QString& label : labels)
        all.append({control.role(), label});
    return all;
}

Spoken spoken(const char* role, const char* label)
{
    return {QString::fromUtf8(role), QString::fromUtf8(label)};
}

/// Roles of controls that people operate with keys.
bool isControl(const QString& role)
{
    static const QStringList roles{
        QStringLiteral("canvas"),        QStringLiteral("check box"),     QStringLiteral("combo box"),
        QStringLiteral("list"),          QStringLiteral("push button"),   QStringLiteral("radio button"),
        QStringLiteral("slider"),        QStringLiteral("spin button"),   QStringLiteral("table"),
        QStringLiteral("text"),          QStringLiteral("tree"),          QStringLiteral("tree table"),
        QStringLiteral("page tab list"), QStringLiteral("toggle button"), QStringLiteral("dial")};
    return roles.contains(role);
}

bool isPartOfATable(const Accessible& part)
{
    const QString role = part.role();
    return role.contains(QStringLiteral("cell")) || role.endsWith(QStringLiteral(" item"));
}

class ScreenReaderTest : public ViewTest
{
protected:
    static void SetUpTestSuite()
    {
        windowManager = std::make_unique<WindowManager>();
        ASSERT_TRUE(windowManager->start()) << "openbox is needed";
        reader = std::make_unique<ScreenReader>();
        ASSERT_EQ(reader->start(), QString());
    }
    static void TearDownTestSuite()
    {
        reader.reset();
        windowManager.reset();
    }

    void SetUp() override { ASSERT_TRUE(hand.isReady()); }

    void TearDown() override
    {
        program = {};
        ViewTest::TearDown();
        const std::string said = m_process.readAllStandardError().toStdString();
        EXPECT_TRUE(errors.empty() ? said.empty() : said.starts_with(errors)) << said;
        ASSERT_TRUE(reader->until([] { return !ScreenReader::program(QStringLiteral("kvgamut")); }));
        reader->takeFocused();
        reader->takeShown();
    }

    /// Opens @p inputs in the window and waits until the view describes two gamuts.
    void read(const QStringList& inputs)
    {
        ASSERT_NO_FATAL_FAILURE(start(inputs));
        ASSERT_TRUE(describesTwoGamuts()) << description().toStdString();
    }

    /// Opens the window. Unsaved changes are kept in the folder of the case.
    void start(const QStringList& inputs)
    {
        QProcessEnvironment env = environment();
        env.insert(QStringLiteral("XDG_STATE_HOME"), path(QStringLiteral("state")));
        m_process.setProcessEnvironment(reader->read(env));
        m_process.start(
            QStringLiteral(KVGAMUT_BINARY),
            QStringList{QStringLiteral("view"), QStringLiteral("--size"), QStringLiteral("1200x900")} +
                inputs);
        ASSERT_TRUE(m_process.waitForStarted());
        ASSERT_TRUE(reader->until([this] {
            program = ScreenReader::program(QStringLiteral("kvgamut"));
            return bool(program);
        }));
    }

    bool describesTwoGamuts()
    {
        return reader->until([this] { return description().count(QStringLiteral("ΔE³")) == 2; });
    }

    Accessible find(const char* role, const char* label) const
    {
        return program.find(QString::fromUtf8(role), QString::fromUtf8(label));
    }

    QString description() const { return find("canvas", "Gamuts in Lab space").description(); }

    /// Presses @p keys and returns the control that has the focus then.
    Accessible focusedAfter(const char* keys)
    {
        reader->takeFocused();
        hand.press(keys);
        Accessible focused;
        EXPECT_TRUE(reader->until([&] {
            const QList<Accessible> parts = reader->takeFocused();
            for (const Accessible& part : parts)
                if (!isPartOfATable(part) && part.isFocused())
                    focused = part;
            return bool(focused);
        })) << keys;
        return focused;
    }

    /// Gives the view the focus.
    void focusView()
    {
        const Accessible view = find("canvas", "Gamuts in Lab space");
        hand.click(placeOnScreen(QStringLiteral("^view$")).center());
        ASSERT_TRUE(reader->until([&view] { return view.isFocused(); }));
    }

    static QList<QString> rowOf(const Accessible& table, int row)
    {
        QList<QString> texts;
        for (int column = 0; column < table.columnCount(); ++column)
            texts.append(table.cell(row, column).name());
        return texts;
    }

    static int columnOf(const Accessible& table, const QString& title)
    {
        for (int column = 0; column < table.columnCount(); ++column)
            if (table.columnTitle(column) == title)
                return column;
        return -1;
    }

    Accessible program;
    std::string errors; ///< what the program is expected to print
    RealInput hand;
    static inline std::unique_ptr<WindowManager> windowManager;
    static inline std::unique_ptr<ScreenReader> reader;
    const QStringList twoGamuts{QStringLiteral("sRGB"), QStringLiteral("DisplayP3")};
};

TEST_F(ScreenReaderTest, followsTheFocusThroughAllControls)
{
    read(twoGamuts);
    focusView();
    const Accessible view = find("canvas", "Gamuts in Lab space");
    QList<Accessible> visited{view};
    QList<Spoken> heard;
    constexpr int maxControls = 100;
    while (visited.size() < maxControls) {
        const Accessible next = focusedAfter("Tab");
        ASSERT_TRUE(next);
        if (next == view)
            break;
        EXPECT_FALSE(visited.contains(next)) << testing::PrintToString(next);
        EXPECT_FALSE(visited.last().isFocused()) << testing::PrintToString(visited.last());
        EXPECT_TRUE(isControl(next.role())) << testing::PrintToString(next);
        EXPECT_FALSE(next.labels().isEmpty()) << testing::PrintToString(next);
        visited.append(next);
        heard += spokenOf(next);
    }
    EXPECT_LT(visited.size(), maxControls);
    for (const Spoken& control :
         {spoken("slider", "Lightness of the section"), spoken("spin button", "Lightness of the section"),
          spoken("check box", "Cut"), spoken("list", "Gamuts"), spoken("combo box", "Intent"),
          spoken("spin button", "Grid"), spoken("combo box", "Mode"), spoken("slider", "Opacity"),
          spoken("push button", "Choose…"), spoken("check box", "Surface"),
          spoken("text", "Search colours by name"), spoken("combo box", "Zone of the active gamut"),
          spoken("combo box", "Kind of section"), spoken("tree", "Colours"),
          spoken("tree", "Files of points"), spoken("spin button", "Edge"),
          spoken("push button", "Add points…"), spoken("table", "Comparison of the gamuts")})
        EXPECT_THAT(heard, Contains(control));

    EXPECT_EQ(focusedAfter("Shift+Tab"), visited.last());
}

/// Also those that only the pointer gives the focus.
TEST_F(ScreenReaderTest, hearsANameOfEachControl)
{
    read(twoGamuts);
    const QList<Accessible> controls = program.controls();
    int count = 0;
    for (const Accessible& control : controls) {
        if (!control.isFocusable() || isPartOfATable(control))
            continue;
        EXPECT_FALSE(control.labels().isEmpty()) << testing::PrintToString(control);
        EXPECT_TRUE(isControl(control.role()) || control.role() == QLatin1String("label"))
            << testing::PrintToString(control);
        ++count;
    }
    EXPECT_GT(count, 20);
}

TEST_F(ScreenReaderTest, hearsTheLightnessAndSetsIt)
{
    read(twoGamuts);
    const Accessible slider = find("slider", "Lightness of the section");
    const Accessible number = find("spin button", "Lightness of the section");
    ASSERT_EQ(slider.value(), (Accessible::Value{0, 50, 100}));
    EXPECT_EQ(number.value(), (Accessible::Value{0, 50, 100}));
    ASSERT_TRUE(slider.setValue(30));
    ASSERT_TRUE(reader->until([&] { return number.text() == QLatin1String("30.0"); }));
    EXPECT_EQ(slider.value(), (Accessible::Value{0, 30, 100}));
    EXPECT_EQ(number.value(), (Accessible::Value{0, 30, 100}));
}

TEST_F(ScreenReaderTest, hearsTheStateOfCheckBoxes)
{
    read(twoGamuts);
    for (const auto& [name, isChecked] :
         {std::pair("Cut", false), std::pair("Surface", true), std::pair("Primaries", false)}) {
        const Accessible box = find("check box", name);
        ASSERT_TRUE(box) << name;
        EXPECT_EQ(box.isChecked(), isChecked) << name;
        ASSERT_TRUE(box.act(QStringLiteral("Toggle"))) << name;
        ASSERT_TRUE(reader->until([&box = box, was = isChecked] { return box.isChecked() != was; })) << name;
    }
    // the default intent has no black-point compensation
    EXPECT_FALSE(find("check box", "Black point compensation").isEnabled());
}

TEST_F(ScreenReaderTest, hearsWhichGamutsAreVisible)
{
    read(twoGamuts);
    const Accessible list = find("list", "Gamuts");
    ASSERT_EQ(list.rowCount(), 2);
    EXPECT_EQ(list.cell(0, 0).name(), QStringLiteral("sRGB"));
    EXPECT_EQ(list.cell(1, 0).name(), QStringLiteral("DisplayP3"));
    EXPECT_TRUE(list.cell(0, 0).isChecked());
    EXPECT_TRUE(list.cell(1, 0).isChecked());

    focusView();
    hand.press("V"); // hides the active gamut
    ASSERT_TRUE(reader->until([&] { return !list.cell(0, 0).isChecked(); }));
    EXPECT_TRUE(list.cell(1, 0).isChecked());
}

TEST_F(ScreenReaderTest, hearsTheNumbersOfTheComparison)
{
    read(twoGamuts);
    const Accessible table = find("table", "Comparison of the gamuts");
    const int title = columnOf(table, QStringLiteral("Gamut"));
    const int volume = columnOf(table, QStringLiteral("Volume ΔE³"));
    const int covers = columnOf(table, QStringLiteral("Covers"));
    ASSERT_GE(title, 0);
    ASSERT_GE(volume, 0);
    ASSERT_GE(covers, 0);
    ASSERT_TRUE(reader->until([&] { return table.cell(1, covers).name().endsWith(QLatin1Char('%')); }));
    EXPECT_EQ(table.rowCount(), 2);
    EXPECT_EQ(table.cell(0, title).name(), QStringLiteral("sRGB"));
    EXPECT_EQ(table.cell(1, title).name(), QStringLiteral("DisplayP3"));
    const QLocale english(QStringLiteral("en"));
    EXPECT_NEAR(english.toDouble(table.cell(0, volume).name()), 833000.0, 1500.0); // see test_window_language
    EXPECT_GT(english.toDouble(table.cell(1, volume).name()), 1.2e6);
    EXPECT_EQ(table.cell(1, covers).name(), QStringLiteral("100.00 %")); // sRGB is inside
}

TEST_F(ScreenReaderTest, hearsTheRowsOfPointsAndColours)
{
    write(path(QStringLiteral("inks.csv")), "name,L,a,b\nbrick,40,30,20\nlaser,50,120,-120\n");
    write(
        path(QStringLiteral("a.kvsession")),
        R"({"kvgamutSession": 1, "gamuts": [{"input": "sRGB"}, {"input": "DisplayP3"}], "points": ["inks.csv"]})");
    read({QStringLiteral("--session"), path(QStringLiteral("a.kvsession"))});

    const Accessible files = find("tree", "Files of points");
    const QStringList numbers{QStringLiteral("inks.csv"), QStringLiteral("2"), QStringLiteral("50.0 %"),
                              QStringLiteral("0.0 %"), QStringLiteral("50.0 %")}; // one inside, one outside
    ASSERT_TRUE(reader->until([&] { return files.rowCount() == 1 && rowOf(files, 0) == numbers; }))
        << rowOf(files, 0).join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(columnOf(files, QStringLiteral("Count")), 1);
    EXPECT_EQ(columnOf(files, QStringLiteral("Inside")), 2);
    EXPECT_EQ(columnOf(files, QStringLiteral("Outside")), 4);

    const Accessible colors = find("tree", "Colours");
    const int zone = columnOf(colors, QStringLiteral("sRGB"));
    const int lightness = columnOf(colors, QStringLiteral("L*"));
    ASSERT_GE(zone, 0);
    ASSERT_GE(lightness, 0);
    ASSERT_TRUE(reader->until(
        [&] { return colors.rowCount() == 2 && colors.cell(1, zone).name() == QLatin1String("outside"); }));
    EXPECT_EQ(colors.cell(0, 0).name(), QStringLiteral("brick"));
    EXPECT_EQ(colors.cell(0, zone).name(), QStringLiteral("inside"));
    EXPECT_EQ(colors.cell(0, lightness).name(), QStringLiteral("40.0"));
    EXPECT_EQ(colors.cell(1, 0).name(), QStringLiteral("laser"));
}

TEST_F(ScreenReaderTest, hearsWhatTheViewAndTheSectionShow)
{
    read(twoGamuts);
    EXPECT_THAT(description().toStdString(),
                testing::MatchesRegex("sRGB: Absolute colorimetric, 83.,... ΔE³; "
                                      "DisplayP3: Absolute colorimetric, 1,2..,... ΔE³"));
    const Accessible section = find("image", "Section of the gamuts");
    ASSERT_TRUE(section);
    EXPECT_THAT(section.description().toStdString(),
                testing::MatchesRegex("Gamut slice at L\\* = 50 in CIELAB \\(D50\\); "
                                      "sRGB, Absolute colorimetric, area [0-9,]+; "
                                      "DisplayP3, Absolute colorimetric, area [0-9,]+"));

    ASSERT_TRUE(find("slider", "Lightness of the section").setValue(70));
    ASSERT_TRUE(reader->until([&] { return section.description().contains(QStringLiteral("L* = 70")); }));
    focusView();
    hand.press("V"); // hides the active gamut
    ASSERT_TRUE(reader->until([&] { return description().startsWith(QStringLiteral("DisplayP3")); }));
    ASSERT_TRUE(reader->until([&] { return !section.description().contains(QStringLiteral("sRGB")); }));
}

TEST_F(ScreenReaderTest, canRestoreTheChangesOfAWindowThatWasKilled)
{
    const QString kept = path(QStringLiteral("state/kvgamut/unsaved"));
    const auto keptFiles = [&kept] { return QDir(kept).entryList({QStringLiteral("*.kvsession")}); };
    read(twoGamuts);
    ASSERT_TRUE(find("check box", "Surface").isChecked());
    ASSERT_TRUE(find("check box", "Surface").act(QStringLiteral("Toggle")));
    ASSERT_TRUE(reader->until([&] { return keptFiles().size() == 1; }));
    m_process.kill();
    ASSERT_TRUE(m_process.waitForFinished());
    ASSERT_TRUE(reader->until([] { return !ScreenReader::program(QStringLiteral("kvgamut")); }));

    start({});
    ASSERT_TRUE(reader->until([this] { return bool(find("push button", "Restore")); }));
    const Accessible button = find("push button", "Restore");
    EXPECT_TRUE(button.description().startsWith(QStringLiteral("A window ended unexpectedly.")))
        << button.description().toStdString();
    ASSERT_TRUE(button.act(QStringLiteral("Press")));
    ASSERT_TRUE(describesTwoGamuts()) << description().toStdString();
    EXPECT_FALSE(find("check box", "Surface").isChecked());
    EXPECT_FALSE(find("push button", "Restore"));
}

TEST_F(ScreenReaderTest, isToldOfMessages)
{
    read(twoGamuts);
    focusView();
    reader->takeShown();
    hand.press("Ctrl+Shift+K"); // there is no camera to paste
    Accessible message;
    ASSERT_TRUE(reader->until([&] {
        const QList<Accessible> shown = reader->takeShown();
        for (const Accessible& part : shown)
            if (part.role() == QLatin1String("notification"))
                message = part;
        return bool(message);
    }));
    EXPECT_EQ(message.name(), QStringLiteral("Messages"));
    EXPECT_TRUE(message.description().startsWith(QStringLiteral("the clipboard holds no camera")))
        << message.description().toStdString();
    errors = "kvgamut: the clipboard holds no camera; an example: ";
}

} // namespace
