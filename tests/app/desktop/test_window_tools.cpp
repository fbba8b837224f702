// SPDX-License-Identifier: Apache-2.0
// Finding commands, changing keys, presenting, information, coverage, kinds of sections, and messages.

#include "DialogAnswer.h"
#include "WindowCase.h"

#include "desktop/files/SettingsFile.h"
#include "desktop/panels/CommandSearch.h"
#include "desktop/panels/CoverageTable.h"
#include "desktop/panels/GamutInformation.h"
#include "desktop/panels/KeyList.h"
#include "desktop/panels/SlicePanel.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QClipboard>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QKeySequenceEdit>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>

#include <cmath>

namespace {

using kvtest::cmyk;

class Tools : public kvtest::WindowCase
{
protected:
    ~Tools() override { SettingsFile::write(QStringLiteral("keys.json"), {}); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&window, key, modifiers);
    }
    /// The dialog of this type that @p act opens, when it has the focus.
    template <typename Dialog>
    Dialog* opened(const std::function<void()>& act)
    {
        act();
        Dialog* dialog = nullptr;
        EXPECT_TRUE(kvtest::spinUntil([&] {
            dialog = window.findChild<Dialog*>();
            return dialog && dialog->isActiveWindow();
        }));
        return dialog;
    }
    template <typename Dialog>
    bool isGone()
    {
        return kvtest::spinUntil([this] { return window.findChild<Dialog*>() == nullptr; });
    }
};

// --- Finding commands -----------------------------------------------------------------------------------

TEST_F(Tools, findACommandByItsWordsSayItsKeyAndRunIt)
{
    open({QStringLiteral("sRGB")});
    auto* search =
        opened<CommandSearch>([this] { press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier); });
    auto& words = *search->findChild<QLineEdit*>(QStringLiteral("commandWords"));
    const auto& list = *search->findChild<QTreeWidget*>(QStringLiteral("commandList"));
    EXPECT_TRUE(words.hasFocus());
    EXPECT_GT(list.topLevelItemCount(), 70);
    QTest::keyClicks(&words, QStringLiteral("PLANE ab"));
    ASSERT_EQ(list.topLevelItemCount(), 1);
    EXPECT_EQ(list.topLevelItem(0)->text(0), QStringLiteral("ab plane"));
    EXPECT_EQ(list.topLevelItem(0)->text(1), QStringLiteral("View"));
    EXPECT_EQ(list.topLevelItem(0)->text(2), QStringLiteral("P"));
    const bool before = window.view().state().plane;
    QTest::keyClick(&words, Qt::Key_Return);
    EXPECT_NE(window.view().state().plane, before);
    EXPECT_TRUE(isGone<CommandSearch>());
}

TEST_F(Tools, findCommandsOfAMenuWithTheArrowKeys)
{
    open({QStringLiteral("sRGB")});
    auto* search = opened<CommandSearch>([this] { press(Qt::Key_Slash); });
    auto& words = *search->findChild<QLineEdit*>(QStringLiteral("commandWords"));
    const auto& list = *search->findChild<QTreeWidget*>(QStringLiteral("commandList"));
    QTest::keyClicks(&words, QStringLiteral("look from"));
    ASSERT_EQ(list.topLevelItemCount(), 6);
    QTest::keyClick(&words, Qt::Key_Down);
    EXPECT_EQ(list.currentItem(), list.topLevelItem(1));
    QTest::keyClick(&words, Qt::Key_Escape);
    EXPECT_TRUE(isGone<CommandSearch>());
}

TEST_F(Tools, doNotRunACommandThatIsNotPossible)
{
    auto* search = opened<CommandSearch>([this] { action("findCommand").trigger(); });
    auto& words = *search->findChild<QLineEdit*>(QStringLiteral("commandWords"));
    QTest::keyClicks(&words, QStringLiteral("save picture"));
    QTest::keyClick(&words, Qt::Key_Return);
    kvtest::spinFor(20);
    EXPECT_NE(window.findChild<CommandSearch*>(), nullptr) << "nothing is shown, so there is no picture";
}

// --- Keys -----------------------------------------------------------------------------------------------

class Keys : public Tools
{
protected:
    void choose(KeyList& list, const char* text)
    {
        auto& tree = *list.findChild<QTreeWidget*>(QStringLiteral("keys"));
        const auto items = tree.findItems(QLatin1String(text), Qt::MatchExactly | Qt::MatchRecursive, 0);
        ASSERT_EQ(items.size(), 1) << text;
        tree.setCurrentItem(items.first());
    }
    void type(KeyList& list, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(list.findChild<QKeySequenceEdit*>(QStringLiteral("newKey")), key, modifiers);
        click(list, "setKey");
    }
    static void click(KeyList& list, const char* button)
    {
        list.findChild<QPushButton*>(QLatin1String(button))->click();
    }
    static QString answer(KeyList& list)
    {
        return list.findChild<QLabel*>(QStringLiteral("keyAnswer"))->text();
    }
};

TEST_F(Keys, canBeChangedAndAreKept)
{
    open({QStringLiteral("sRGB")});
    auto* list = opened<KeyList>([this] { press(Qt::Key_H); });
    choose(*list, "ab plane");
    type(*list, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(answer(*list), QStringLiteral("\"ab plane\" has the key Ctrl+Y now."));
    const bool before = window.view().state().plane;
    list->reject();
    ASSERT_TRUE(isGone<KeyList>());
    ASSERT_TRUE(kvtest::spinUntil([this] { return window.isActiveWindow(); }));
    press(Qt::Key_P);
    EXPECT_EQ(window.view().state().plane, before) << "the former key";
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_NE(window.view().state().plane, before);
    const MainWindow next;
    EXPECT_EQ(next.findChild<QAction*>(QStringLiteral("plane"))->shortcut(),
              QKeySequence(Qt::CTRL | Qt::Key_Y));
}

TEST_F(Keys, ofOtherCommandsAndOfTheViewAreRefused)
{
    auto* list = opened<KeyList>([this] { press(Qt::Key_H); });
    choose(*list, "ab plane");
    type(*list, Qt::Key_X);
    EXPECT_EQ(answer(*list), QStringLiteral("X is the key of \"Axes\"."));
    type(*list, Qt::Key_Left);
    EXPECT_EQ(answer(*list), QStringLiteral("Left has a meaning in the view or in lists."));
    EXPECT_EQ(action("plane").shortcut(), QKeySequence(Qt::Key_P));
}

TEST_F(Keys, returnToTheirDefault)
{
    auto* list = opened<KeyList>([this] { press(Qt::Key_H); });
    choose(*list, "ab plane");
    click(*list, "noKey");
    EXPECT_TRUE(action("plane").shortcuts().isEmpty());
    click(*list, "defaultKey");
    EXPECT_EQ(action("plane").shortcut(), QKeySequence(Qt::Key_P));
    click(*list, "noKey");
    choose(*list, "Axes");
    type(*list, Qt::Key_P); // is free now
    EXPECT_EQ(action("axes").shortcut(), QKeySequence(Qt::Key_P));
    click(*list, "allDefaultKeys");
    EXPECT_EQ(action("plane").shortcut(), QKeySequence(Qt::Key_P));
    EXPECT_EQ(action("axes").shortcut(), QKeySequence(Qt::Key_X));
}

TEST_F(Keys, ofTheViewItselfCannotBeChanged)
{
    auto* list = opened<KeyList>([this] { press(Qt::Key_H); });
    choose(*list, "Turn");
    EXPECT_FALSE(list->findChild<QPushButton*>(QStringLiteral("setKey"))->isEnabled());
}

// --- The bar of tools -----------------------------------------------------------------------------------

TEST_F(Tools, areInASlimBarThatCanBeHidden)
{
    open({cmyk}); // a recent file is not a tool
    auto& bar = control<QToolBar>("tools");
    EXPECT_LT(bar.height(), 3 * bar.fontMetrics().height());
    EXPECT_GE(bar.actions().size(), 9);
    const QStringList words{
        QStringLiteral("Open"),        QStringLiteral("Frame"),   QStringLiteral("Legend"),
        QStringLiteral("Only active"), QStringLiteral("Cut"),     QStringLiteral("Section"),
        QStringLiteral("Cursor"),      QStringLiteral("Present"), QStringLiteral("Find…")};
    QStringList shown;
    for (const QAction* tool : bar.actions())
        if (!tool->isSeparator())
            shown.append(tool->iconText());
    EXPECT_EQ(shown, words);
    for (const QAction* tool : bar.actions())
        EXPECT_TRUE(tool->isSeparator() || !tool->toolTip().isEmpty()) << tool->text().toStdString();
    const bool axes = window.viewer().displayAxes();
    press(Qt::Key_T, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(window.viewer().displayAxes(), axes);
    press(Qt::Key_T, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_TRUE(bar.isVisible());
}

// --- Presenting -----------------------------------------------------------------------------------------

TEST_F(Tools, presentOnlyTheViewAndReturn)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    const QByteArray panels = window.saveState();
    const QSize size = window.size();
    action("annotate").trigger(); // hidden: the legend is shown all the same
    EXPECT_TRUE(window.view().annotations().legend.isEmpty());
    for (const Qt::Key end : {Qt::Key_F12, Qt::Key_Escape}) {
        press(Qt::Key_F12);
        ASSERT_TRUE(kvtest::spinUntil([this] {
            return window.isFullScreen() && control<QWidget>("view").size() == window.screen()->size();
        })) << control<QWidget>("view").width()
            << 'x' << control<QWidget>("view").height();
        EXPECT_EQ(window.view().annotations().legend.size(), 2);
        EXPECT_GT(window.view().annotations().textScale, 1.5f);
        const bool axes = window.viewer().displayAxes();
        press(Qt::Key_X); // keys work
        EXPECT_NE(window.viewer().displayAxes(), axes);
        press(Qt::Key_X);
        press(end);
        ASSERT_TRUE(kvtest::spinUntil([&] { return !window.isFullScreen() && window.size() == size; }));
        EXPECT_TRUE(window.view().annotations().legend.isEmpty());
        EXPECT_TRUE(kvtest::spinUntil([&] { return window.saveState() == panels; }));
        EXPECT_TRUE(window.statusBar()->isVisible());
        EXPECT_GT(window.menuBar()->height(), 5);
    }
}

// --- One gamut alone ------------------------------------------------------------------------------------

TEST_F(Tools, showOnlyTheActiveGamut)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    const QImage both = settledPicture();
    press(Qt::Key_V, Qt::ShiftModifier);
    EXPECT_TRUE(window.viewer().gamutVisible(entry(0).id));
    EXPECT_FALSE(window.viewer().gamutVisible(entry(1).id));
    EXPECT_EQ(window.view().annotations().legend.size(), 1);
    const QImage one = settledPicture();
    EXPECT_NE(one, both);
    press(Qt::Key_N);
    EXPECT_FALSE(window.viewer().gamutVisible(entry(0).id));
    EXPECT_TRUE(window.viewer().gamutVisible(entry(1).id));
    EXPECT_TRUE(entry(0).look.visible) << "its look stays as it is";
    press(Qt::Key_N);
    press(Qt::Key_V, Qt::ShiftModifier);
    EXPECT_EQ(settledPicture(), both);
}

// --- Information ----------------------------------------------------------------------------------------

TEST_F(Tools, informAboutTheProfileWithItsDescriptionFirst)
{
    open({cmyk});
    auto* information = opened<GamutInformation>([this] { press(Qt::Key_Return, Qt::AltModifier); });
    const auto rows = GamutInformation::rowsOf(entry(), {});
    information->findChild<QPushButton*>(QStringLiteral("copyInformation"))->click();
    const QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    ASSERT_GT(lines.size(), 8);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Description\t"))) << lines[0].toStdString();
    EXPECT_TRUE(lines[0].contains(QStringLiteral("Artifex CMYK"))) << lines[0].toStdString();
    EXPECT_EQ(lines[1], QStringLiteral("Name\tdefault_cmyk.icc"));
    EXPECT_EQ(lines[2], QStringLiteral("File\t") + cmyk);
    EXPECT_TRUE(lines.contains(QStringLiteral("Device colours\tCMYK, 4 channels")))
        << lines.join(u'|').toStdString();
    EXPECT_FALSE(rows.isEmpty());
}

TEST_F(Tools, showTheCoverageOfAllGamuts)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3"), QStringLiteral("AdobeRGB")});
    auto* table =
        opened<CoverageTable>([this] { press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier); });
    const auto& view = *table->findChild<QTableView*>(QStringLiteral("coverage"));
    EXPECT_EQ(view.model()->rowCount(), 3);
    EXPECT_TRUE(kvtest::spinUntil(
        [&view] { return view.model()->index(0, 1).data().toString() == QStringLiteral("100.00 %"); }));
}

// --- Kinds of sections ----------------------------------------------------------------------------------

TEST_F(Tools, drawTheSectionAtAHueAndAsRings)
{
    open({QStringLiteral("sRGB")});
    auto& section = control<SlicePanel>("slice");
    const QImage whole = settledPicture();
    const auto savedText = [&] {
        const QString file = path(QStringLiteral("section.svg"));
        EXPECT_TRUE(window.saveSection(file));
        QFile saved(file);
        EXPECT_TRUE(saved.open(QIODevice::ReadOnly));
        return QString::fromUtf8(saved.readAll());
    };
    press(Qt::Key_H, Qt::ShiftModifier);
    EXPECT_EQ(section.kind(), SectionKind::Hue);
    auto& hue = control<QDoubleSpinBox>("sectionHue");
    EXPECT_TRUE(hue.isVisible());
    hue.setValue(40.0);
    press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(hue.value(), 45.0);
    EXPECT_TRUE(savedText().contains(QStringLiteral("hue 45°")));
    EXPECT_EQ(settledPicture(), whole);
    action("showSection").trigger();
    EXPECT_EQ(window.view().section().hue, 45.0f);
    EXPECT_EQ(window.view().section().plane, std::nullopt);
    EXPECT_NE(settledPicture(), whole);
    hue.setValue(120.0);
    EXPECT_EQ(window.view().section().hue, 120.0f);

    const Session kept = window.session();
    press(Qt::Key_R, Qt::ShiftModifier);
    EXPECT_EQ(section.kind(), SectionKind::Rings);
    EXPECT_FALSE(hue.isVisible());
    EXPECT_TRUE(savedText().contains(QStringLiteral("Gamut rings")));
    press(Qt::Key_G, Qt::ShiftModifier);
    EXPECT_EQ(section.kind(), SectionKind::Lightness);
    EXPECT_EQ(window.view().section().hue, std::nullopt);
    EXPECT_EQ(window.view().section().plane, 50.0f);

    window.restore(kept);
    ASSERT_TRUE(settle());
    EXPECT_EQ(section.kind(), SectionKind::Hue);
    EXPECT_EQ(hue.value(), 120.0);
    EXPECT_EQ(window.view().section().hue, 120.0f);
    EXPECT_TRUE(action("showSection").isChecked());
}

TEST_F(Tools, keepTheScaleOfTheSectionIfItIsFixed)
{
    open({QStringLiteral("sRGB")});
    auto& section = control<SlicePanel>("slice");
    std::optional<QVector3D> under;
    QObject::connect(&section, &SlicePanel::hovered, &section, [&under](const auto& lab) { under = lab; });
    // the b* between two places of the panel, one above the other
    const auto scaleAt = [&](double lightness) {
        control<QDoubleSpinBox>("clipNumber").setValue(lightness);
        kvtest::spinFor(30); // until it is drawn
        float b[2] = {0.0f, 0.0f};
        for (int i = 0; i < 2; ++i) {
            const QPointF place(section.width() / 2.0, section.height() / 4.0 + 20.0 * i);
            QMouseEvent move(QEvent::MouseMove, place, section.mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                             Qt::NoModifier);
            QCoreApplication::sendEvent(&section, &move);
            b[i] = under ? under->z() : 0.0f;
        }
        return b[0] - b[1];
    };
    const float middle = scaleAt(50.0);
    EXPECT_GT(middle, 1.0f);
    EXPECT_LT(scaleAt(97.0), 0.9f * middle) << "fits the small section of light colours";
    section.setScaleFixed(true);
    EXPECT_FLOAT_EQ(scaleAt(97.0), scaleAt(50.0));
}

TEST_F(Tools, keepTheLightnessInTheSessionWithoutACut)
{
    open({QStringLiteral("sRGB")});
    auto& number = control<QDoubleSpinBox>("clipNumber");
    number.setValue(72.5);
    const Session kept = window.session();
    number.setValue(20.0);
    window.restore(kept);
    ASSERT_TRUE(settle());
    EXPECT_EQ(number.value(), 72.5);
    EXPECT_EQ(control<SlicePanel>("slice").lightness(), 72.5f);
}

// --- Files ----------------------------------------------------------------------------------------------

TEST_F(Tools, saveTheActiveGamutAsAMesh)
{
    open({QStringLiteral("sRGB")});
    const auto save = [this] { press(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier); };
    EXPECT_TRUE(kvtest::chooseFile(save, path(QStringLiteral("mesh"))));
    ASSERT_TRUE(settle());
    QFile file(path(QStringLiteral("mesh.ply")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.startsWith("ply\n"));
    EXPECT_TRUE(text.contains("element face " + QByteArray::number(entry().gamut.report().faceCount)));
    window.saveGamut(path(QStringLiteral("x.kvgamut")));
    ASSERT_TRUE(settle());
    open({path(QStringLiteral("x.kvgamut"))});
    ASSERT_EQ(window.gamuts().rowCount(), 2);
    EXPECT_EQ(entry(1).gamut.report().volume, entry(0).gamut.report().volume);
    window.saveGamut(path(QStringLiteral("x.doc")));
    ASSERT_TRUE(settle());
    EXPECT_TRUE(control<QLabel>("message").text().contains(QStringLiteral("gamuts are saved as .ply")));
}

TEST_F(Tools, offerNothingToSaveWhileNothingIsShown)
{
    for (const char* name : {"savePicture", "copyPicture", "saveSection", "savePage", "saveColors",
                             "saveGamut", "saveSession", "closeAll", "copyTable", "copyColors"})
        EXPECT_FALSE(action(name).isEnabled()) << name;
    open({QStringLiteral("sRGB")});
    for (const char* name : {"savePicture", "copyPicture", "saveSection", "savePage", "saveGamut",
                             "saveSession", "closeAll", "copyTable"})
        EXPECT_TRUE(action(name).isEnabled()) << name;
    action("copyPicture").trigger();
    EXPECT_TRUE(window.statusBar()->currentMessage().startsWith(QStringLiteral("Copied the picture: ")))
        << window.statusBar()->currentMessage().toStdString();
}

// --- Messages, lists and tables -------------------------------------------------------------------------

TEST_F(Tools, sayHowManyMessagesThereAreAndShowAll)
{
    QStringList missing;
    for (int i = 0; i < 16; ++i)
        missing.append(path(QStringLiteral("missing%1.icc").arg(i)));
    window.open(missing);
    auto& all = control<QToolButton>("allMessages");
    EXPECT_TRUE(kvtest::spinUntil([&all] { return all.text() == QStringLiteral("12 more…"); }))
        << all.text().toStdString();
    EXPECT_EQ(control<QLabel>("message").text().count(QLatin1Char('\n')), 3);
    all.click();
    const auto* list = window.findChild<QPlainTextEdit*>(QStringLiteral("messageList"));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->blockCount(), 16);
    EXPECT_TRUE(list->toPlainText().contains(QStringLiteral("missing0.icc")));
}

TEST_F(Tools, sayWhichGridWasUsed)
{
    open({QStringLiteral("sRGB")});
    auto& grid = control<QSpinBox>("grid");
    EXPECT_EQ(grid.text(), QStringLiteral("automatic (%1)").arg(entry().gamut.report().gridPoints));
    window.addGamut(cmyk, {KVVMRenderAbsoluteColorimetric, false, 129}, {});
    ASSERT_TRUE(settle());
    window.gamuts().setActiveRow(1);
    const int used = entry(1).gamut.report().gridPoints;
    ASSERT_NE(used, 129);
    EXPECT_EQ(grid.text(), QStringLiteral("129 (%1 used)").arg(used));
}

TEST_F(Tools, haveAnEllipsisInLongNames)
{
    const QString start(QStringLiteral("A very long name of a printing condition with all its words "));
    for (const char* end : {"one.icc", "two.icc"})
        QFile::copy(cmyk, path(start + start + QLatin1String(end)));
    open({path(start + start + QStringLiteral("one.icc")), path(start + start + QStringLiteral("two.icc"))});
    const auto& list = control<QListView>("gamutList");
    EXPECT_LE(list.visualRect(list.model()->index(0, 0)).width(), list.viewport()->width());
    EXPECT_EQ(list.textElideMode(), Qt::ElideMiddle) << "names often differ at the end";
    const auto& table = control<QTableView>("comparison");
    EXPECT_LT(table.columnWidth(0), table.viewport()->width() / 2);
    EXPECT_EQ(table.textElideMode(), Qt::ElideMiddle);
    const QString title = control<QDockWidget>("comparisonDock").windowTitle();
    EXPECT_LT(window.fontMetrics().horizontalAdvance(title), 450) << title.toStdString();
    EXPECT_TRUE(title.endsWith(QStringLiteral("one.icc"))) << title.toStdString();
}

TEST_F(Tools, keepTheKeyColourOfASelectedGamut)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    auto& list = control<QListView>("gamutList");
    list.setFocus();
    for (int row = 0; row < 2; ++row) {
        list.setCurrentIndex(list.model()->index(row, 0));
        const QImage shown = list.viewport()->grab().toImage();
        const QRect line = list.visualRect(list.model()->index(row, 0));
        int count = 0;
        for (int x = line.left(); x < line.right(); ++x)
            count += shown.pixelColor(x, line.center().y()).rgb() == window.gamuts().signColor(row).rgb();
        EXPECT_GT(count, 8) << row;
    }
}

/// Contrast of two colours by WCAG 2.
double contrast(const QColor& color, const QColor& ground)
{
    const auto luminance = [](const QColor& c) {
        const auto linear = [](double v) {
            return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
    };
    const double p = luminance(color), q = luminance(ground);
    return (std::max(p, q) + 0.05) / (std::min(p, q) + 0.05);
}

TEST_F(Tools, haveLighterKeyColoursInTablesOfADarkPalette)
{
    const QPalette before = QApplication::palette();
    const QPalette dark(QColor(0x35, 0x37, 0x3a), QColor(0x2b, 0x2d, 0x30));
    QApplication::setPalette(dark);
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    const QAbstractItemModel& table = *control<QTableView>("comparison").model();
    const QAbstractItemModel& list = *control<QListView>("gamutList").model();
    for (int row = 0; row < 2; ++row) {
        const auto inTable = table.index(row, 0).data(Qt::DecorationRole).value<QColor>();
        EXPECT_GT(contrast(inTable, dark.color(QPalette::Base)), 3.0) << row;
        EXPECT_EQ(inTable, list.index(row, 0).data(Qt::DecorationRole).value<QColor>());
    }
    QApplication::setPalette(before);
}

TEST_F(Tools, haveLighterKeyColoursOnADarkGround)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    for (const char* ground : {"backgroundDark", "backgroundLight"}) {
        action(ground).trigger();
        ASSERT_TRUE(settle());
        const QColor background = window.viewer().background();
        const KVAnnotations annotations = window.view().annotations();
        for (int row = 0; row < 2; ++row) {
            const QColor outline = window.view().look(entry(row).id).outlineColor;
            EXPECT_GT(contrast(outline, background), 3.0) << ground << row;
            EXPECT_EQ(annotations.legend[row].key, outline);
        }
    }
}

TEST_F(Tools, sortTheComparisonByAnyColumn)
{
    open({QStringLiteral("DisplayP3"), QStringLiteral("sRGB"), QStringLiteral("AdobeRGB")});
    auto& table = control<QTableView>("comparison");
    const auto names = [&table] {
        QStringList all;
        for (int row = 0; row < table.model()->rowCount(); ++row)
            all.append(table.model()->index(row, 0).data().toString());
        return all;
    };
    const auto clickTitle = [&table](int column) {
        const QHeaderView* header = table.horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(header->sectionViewportPosition(column) + 8, header->height() / 2));
    };
    const QStringList first{QStringLiteral("DisplayP3"), QStringLiteral("sRGB"), QStringLiteral("AdobeRGB")};
    EXPECT_EQ(names(), first);
    constexpr int volume = 3;
    clickTitle(volume);
    // 833,121, then 1,208,702 and 1,233,262 cubic dE
    EXPECT_EQ(names(),
              (QStringList{QStringLiteral("sRGB"), QStringLiteral("AdobeRGB"), QStringLiteral("DisplayP3")}));
    table.selectRow(0);
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(QStringLiteral("sRGB\t")));
    clickTitle(volume);
    EXPECT_EQ(names().first(), QStringLiteral("DisplayP3"));
    clickTitle(volume);
    EXPECT_EQ(names(), first);
    clickTitle(0);
    EXPECT_EQ(names(),
              (QStringList{QStringLiteral("AdobeRGB"), QStringLiteral("DisplayP3"), QStringLiteral("sRGB")}));
}

// --- Context menus --------------------------------------------------------------------------------------

TEST_F(Tools, areInTheContextMenuOfTheirPart)
{
    open({QStringLiteral("sRGB")});
    for (const char* part : {"gamutList", "slice", "comparison"}) {
        const auto& widget = control<QWidget>(part);
        EXPECT_EQ(widget.contextMenuPolicy(), Qt::ActionsContextMenu) << part;
        EXPECT_GE(widget.actions().size(), 4) << part;
        for (const QAction* action : widget.actions())
            EXPECT_NE(action, nullptr) << part;
    }
    EXPECT_TRUE(control<QWidget>("comparison").actions().contains(&action("copyTable")));
}

TEST_F(Tools, areInTheContextMenuOfTheView)
{
    open({QStringLiteral("sRGB")});
    auto& menu = control<QMenu>("viewContext");
    const QPoint middle(innerWindow().width() / 2, innerWindow().height() / 2);
    QTest::mouseClick(&innerWindow(), Qt::RightButton, Qt::NoModifier, middle);
    ASSERT_TRUE(kvtest::spinUntil([&menu] { return menu.isVisible(); }));
    EXPECT_TRUE(menu.actions().contains(&action("frame")));
    EXPECT_FALSE(menu.actions().contains(nullptr));
    EXPECT_FALSE(action("copyFinding").isEnabled()) << "the colour is not inspected";
    menu.close();
    // a drag with the right button moves the scene
    QTest::mousePress(&innerWindow(), Qt::RightButton, Qt::NoModifier, middle);
    QTest::mouseMove(&innerWindow(), middle + QPoint(60, 40));
    QTest::mouseRelease(&innerWindow(), Qt::RightButton, Qt::NoModifier, middle + QPoint(60, 40));
    kvtest::spinFor(20);
    EXPECT_FALSE(menu.isVisible());
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(20, 20), QPoint(20, 20));
    QCoreApplication::sendEvent(&control<QWidget>("view"), &key);
    EXPECT_TRUE(menu.isVisible());
    menu.close();
}

// --- Documentation --------------------------------------------------------------------------------------

TEST_F(Tools, haveTheirKeysInTheDocumentation)
{
    QFile page(QStringLiteral(KVGAMUT_SOURCES "/docs/commands/view.md"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll()).section(QStringLiteral("\n## Keys"), 1);
    static const QRegularExpression row(QStringLiteral("^\\| ([^|]+) \\|"),
                                        QRegularExpression::MultilineOption);
    QStringList named;
    auto rows = row.globalMatch(text);
    while (rows.hasNext())
        named += rows.next().captured(1).split(QStringLiteral(", "));
    const auto range = [&named](const char* start, const char* first, int last) {
        ASSERT_TRUE(named.contains(QLatin1String(start) + QLatin1String(first))) << first;
        for (int number = 1; number <= last; ++number)
            named.append(QLatin1String(start) + QString::number(number));
    };
    range("Ctrl+", "1...8", 8);
    range("Alt+", "1...9", 9);
    range("Ctrl+Alt+", "1...5", 5);
    named += {QStringLiteral("."), QStringLiteral(",")}; // ". ," is one cell
    for (const QAction* action : window.findChildren<QAction*>())
        for (const QKeySequence& key : action->shortcuts()) {
            QString name = key.toString(QKeySequence::PortableText);
            name.replace(QLatin1String("Return"), QLatin1String("Enter"));
            EXPECT_TRUE(named.contains(name)) << name.toStdString() << ": " << action->text().toStdString();
        }
}

// --- Help -----------------------------------------------------------------------------------------------

TEST_F(Tools, tellAboutTheProgram)
{
    action("about").trigger();
    const auto& text = control<QLabel>("aboutText");
    EXPECT_TRUE(text.text().contains(QLatin1String(qVersion())));
    EXPECT_TRUE(text.text().contains(QStringLiteral("Apache-2.0")));
    action("tour").trigger();
    EXPECT_TRUE(
        control<QTextBrowser>("tourText").toPlainText().contains(QStringLiteral("A tour in ten minutes")));
}

} // namespace
