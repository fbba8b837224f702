// SPDX-License-Identifier: Apache-2.0
#include "DialogAnswer.h"
#include "WindowCase.h"

#include "desktop/files/RecentFiles.h"
#include "desktop/panels/KeyList.h"
#include "desktop/panels/PictureDialog.h"
#include "model/inputs/BuiltInProfiles.h"

#include <QtGui/QClipboard>
#include <QtGui/QColorSpace>
#include <QtGui/QPainter>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QToolButton>

// Triggers the actions of the menus with their keys, and tests the dialogs that they open.

namespace {

using kvtest::answered;
using kvtest::chooseFile;

using kvtest::cmyk;

class Actions : public kvtest::WindowCase
{
protected:
    /// Waits until the window is active, which takes a moment after a dialog was closed, and presses a key.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window, 60000));
        QTest::keyClick(&window, key, modifiers);
    }

    QStringList inputs()
    {
        QStringList names;
        for (const GamutEntry& one : window.gamuts().entries())
            names.append(one.input);
        return names;
    }

    void clickTheMiddleOfTheView()
    {
        QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(innerWindow().width() / 2, innerWindow().height() / 2));
    }

    /// Runs @p act, which opens a colour dialog, and chooses @p color there.
    void chooseColor(const QColor& color, const std::function<void()>& act)
    {
        EXPECT_TRUE(answered<QColorDialog>(act, [&](QColorDialog& dialog) {
            dialog.setCurrentColor(color);
            QTest::keyClick(&dialog, Qt::Key_Return);
        }));
    }
};

// --- Files ----------------------------------------------------------------------------------------------

TEST_F(Actions, openTheChosenFiles)
{
    EXPECT_TRUE(chooseFile([&] { control<QPushButton>("welcomeOpen").click(); }, cmyk));
    EXPECT_TRUE(chooseFile([&] { press(Qt::Key_O, Qt::ControlModifier); }, cmyk));
    EXPECT_EQ(inputs(), (QStringList{cmyk, cmyk}));
}

TEST_F(Actions, openAndWriteNothingWhenTheDialogIsCancelled)
{
    open({QStringLiteral("sRGB"), write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n")});
    const auto cancel = [](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    for (const char* name : {"open", "openPoints", "openSession", "saveSession", "saveSection", "savePage",
                             "saveGamut", "saveColors"})
        EXPECT_TRUE(answered<QFileDialog>([&] { action(name).trigger(); }, cancel)) << name;
    EXPECT_TRUE(
        answered<PictureDialog>([&] { action("savePicture").trigger(); },
                                [](PictureDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
    EXPECT_EQ(window.gamuts().rowCount() + window.points().rowCount(), 2);
    EXPECT_FALSE(control<QWidget>("messageBar").isVisible());
}

TEST_F(Actions, openBuiltInProfilesByNumber)
{
    const QStringList names = BuiltInProfiles::names();
    ASSERT_EQ(names.size(), 5);
    for (int i = 0; i < names.size(); ++i)
        press(static_cast<Qt::Key>(Qt::Key_1 + i), Qt::ControlModifier);
    EXPECT_EQ(inputs(), names);
}

TEST_F(Actions, openAReferenceBody)
{
    action("openOptimalColors").trigger();
    ASSERT_TRUE(settle());
    EXPECT_EQ(inputs(), QStringList{QStringLiteral("OptimalColors")});
    ASSERT_TRUE(window.gamuts().at(0).hasGamut());
    EXPECT_EQ(window.gamuts().at(0).gamut.method(), KVGamut::Method::GivenSurface);
}

TEST_F(Actions, openRecentFilesByNumber)
{
    RecentFiles::clear();
    const QString points = write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n");
    open({cmyk, points});
    action("closeAll").trigger();
    press(Qt::Key_2, Qt::AltModifier); // the older one
    ASSERT_TRUE(settle());
    EXPECT_EQ(inputs(), QStringList{cmyk});
    press(Qt::Key_2, Qt::AltModifier); // the order has changed
    ASSERT_TRUE(settle());
    EXPECT_EQ(window.points().files(), QStringList{points});
}

TEST_F(Actions, openPoints)
{
    const QString first = write(QStringLiteral("1.csv"), "L,a,b\n50,0,0\n");
    const QString second = write(QStringLiteral("2.csv"), "L,a,b\n60,0,0\n");
    EXPECT_TRUE(chooseFile([&] { press(Qt::Key_P, Qt::ControlModifier); }, first));
    EXPECT_TRUE(chooseFile([&] { control<QPushButton>("addPoints").click(); }, second));
    EXPECT_EQ(window.points().files(), (QStringList{first, second}));
}

TEST_F(Actions, saveAndRestoreASession)
{
    open({QStringLiteral("sRGB"), QStringLiteral("Rec2020")});
    action("plane").trigger();
    EXPECT_TRUE(chooseFile([&] { press(Qt::Key_S, Qt::ControlModifier); }, path(QStringLiteral("monday"))));
    const QString file = path(QStringLiteral("monday.kvsession"));
    ASSERT_TRUE(QFile::exists(file));
    press(Qt::Key_W, Qt::ControlModifier);
    action("plane").trigger();
    EXPECT_TRUE(chooseFile([&] { press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier); }, file));
    EXPECT_TRUE(settle()); // the session is read in the background
    EXPECT_EQ(inputs(), (QStringList{QStringLiteral("sRGB"), QStringLiteral("Rec2020")}));
    EXPECT_TRUE(window.viewer().abPlane());
}

TEST_F(Actions, saveThePictureInTheTypedSize)
{
    open({QStringLiteral("sRGB")});
    const auto typeSize = [](PictureDialog& dialog) {
        // the width is selected, so typing replaces it
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("321"));
        auto* height = dialog.findChild<QSpinBox*>(QStringLiteral("pictureHeight"));
        height->selectAll();
        QTest::keyClicks(height, QStringLiteral("123"));
        QTest::keyClick(height, Qt::Key_Return);
    };
    EXPECT_TRUE(chooseFile(
        [&] {
            EXPECT_TRUE(answered<PictureDialog>([&] { press(Qt::Key_E, Qt::ControlModifier); }, typeSize));
        },
        path(QStringLiteral("p"))));
    QImage saved(path(QStringLiteral("p.png")));
    EXPECT_EQ(saved.size(), QSize(321, 123));
    saved.setColorSpace({}); // comparisons include it
    EXPECT_EQ(saved.convertToFormat(QImage::Format_RGB32), window.viewer().picture({321, 123}));
}

TEST_F(Actions, saveThePictureOnATransparentGround)
{
    open({QStringLiteral("sRGB")});
    const QSize size(300, 200);
    const auto choose = [](PictureDialog& dialog) {
        auto* transparent = dialog.findChild<QCheckBox*>(QStringLiteral("pictureTransparent"));
        QTest::keyClick(transparent, Qt::Key_Space);
        dialog.findChild<QSpinBox*>(QStringLiteral("pictureWidth"))->setValue(300);
        dialog.findChild<QSpinBox*>(QStringLiteral("pictureHeight"))->setValue(200);
        QTest::keyClick(&dialog, Qt::Key_Return);
    };
    const QImage before = settledPicture();
    EXPECT_TRUE(chooseFile(
        [&] { EXPECT_TRUE(answered<PictureDialog>([&] { action("savePicture").trigger(); }, choose)); },
        path(QStringLiteral("t.png"))));
    QImage saved(path(QStringLiteral("t.png")));
    ASSERT_EQ(saved.size(), size);
    EXPECT_EQ(saved.pixelColor(2, 2).alpha(), 0);
    EXPECT_EQ(saved.pixelColor(150, 100).alpha(), 255) << "the gamut";
    QImage composed(size, QImage::Format_RGB32);
    composed.fill(window.viewer().background());
    QPainter(&composed).drawImage(0, 0, saved);
    const QImage opaque = window.viewer().picture(size);
    int worst = 0;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const QColor p = composed.pixelColor(x, y), q = opaque.pixelColor(x, y);
            worst = std::max({worst, std::abs(p.red() - q.red()), std::abs(p.green() - q.green()),
                              std::abs(p.blue() - q.blue())});
        }
    EXPECT_LE(worst, 2 * 2) << "two steps for the ground, two for the annotations";
    EXPECT_EQ(settledPicture(), before) << "the window does not change";
    ASSERT_TRUE(window.savePicture(path(QStringLiteral("t.jpg")), size, true));
    EXPECT_NEAR(QImage(path(QStringLiteral("t.jpg"))).pixelColor(2, 2).red(),
                window.viewer().background().red(), 3)
        << "JPEG has no transparency";
}

TEST_F(Actions, keepTheProportionsOfThePicture)
{
    PictureDialog dialog({1200, 800}, &window);
    auto* width = dialog.findChild<QSpinBox*>(QStringLiteral("pictureWidth"));
    auto* height = dialog.findChild<QSpinBox*>(QStringLiteral("pictureHeight"));
    width->setValue(600);
    EXPECT_EQ(dialog.size(), QSize(600, 800));
    dialog.findChild<QCheckBox*>(QStringLiteral("pictureProportions"))->setChecked(true);
    EXPECT_EQ(dialog.size(), QSize(600, 400));
    height->setValue(1000);
    EXPECT_EQ(dialog.size(), QSize(1500, 1000));
    height->setValue(8192);
    EXPECT_EQ(dialog.size(), QSize(8192, 5461)) << "the largest width";
}

TEST_F(Actions, suggestANameForThePicture)
{
    open({QStringLiteral("sRGB"), cmyk});
    const auto accept = [](PictureDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); };
    QString suggested;
    EXPECT_TRUE(answered<QFileDialog>(
        [&] { EXPECT_TRUE(answered<PictureDialog>([&] { action("savePicture").trigger(); }, accept)); },
        [&](QFileDialog& dialog) {
            suggested = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        }));
    EXPECT_EQ(suggested, QStringLiteral("sRGB, default_cmyk.png"));
}

TEST_F(Actions, saveTheSection)
{
    open({QStringLiteral("sRGB")});
    const auto save = [&] { press(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier); };
    EXPECT_TRUE(chooseFile(save, path(QStringLiteral("s"))));
    QFile file(path(QStringLiteral("s.svg")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("sRGB"));
}

TEST_F(Actions, closeEverythingAndClearTheFinding)
{
    open({QStringLiteral("sRGB"), write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n")});
    const QString nothing = control<QLabel>("finding").text();
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    clickTheMiddleOfTheView();
    ASSERT_NE(control<QLabel>("finding").text(), nothing);
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(window.gamuts().rowCount() + window.points().rowCount(), 0);
    EXPECT_TRUE(window.viewer().gamuts().isEmpty());
    EXPECT_TRUE(window.viewer().markerSet().isEmpty());
    EXPECT_EQ(control<QLabel>("finding").text(), nothing);
}

TEST_F(Actions, quitByClosingTheWindow)
{
    EXPECT_TRUE(window.isVisible());
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
}

// --- The clipboard --------------------------------------------------------------------------------------

TEST_F(Actions, copyThePicture)
{
    open({QStringLiteral("sRGB")});
    QGuiApplication::clipboard()->clear();
    press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32), settledPicture());
}

TEST_F(Actions, copyTheClickedColour)
{
    open({QStringLiteral("sRGB")});
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    press(Qt::Key_I, Qt::ControlModifier); // disabled before the first click
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
    action("fromTop").trigger();
    ASSERT_TRUE(settle());
    clickTheMiddleOfTheView();
    press(Qt::Key_I, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    ASSERT_GE(lines.size(), 3);
    EXPECT_TRUE(lines[0].contains(QStringLiteral("sRGB")));
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("L* 100.0   a* "))) << lines[1].toStdString();
}

// --- The active gamut -----------------------------------------------------------------------------------

TEST_F(Actions, removeTheActiveGamut)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    press(Qt::Key_N);
    press(Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_EQ(inputs(), QStringList{QStringLiteral("sRGB")});
    press(Qt::Key_Backspace, Qt::ControlModifier);
    press(Qt::Key_Backspace, Qt::ControlModifier); // no gamut is left
    EXPECT_TRUE(inputs().isEmpty());
}

TEST_F(Actions, chooseTheIntent)
{
    open({cmyk});
    const std::pair<Qt::Key, KVVMRenderType> keys[] = {{Qt::Key_F5, KVVMRenderPerceptual},
                                                       {Qt::Key_F6, KVVMRenderRelativeColorimetric},
                                                       {Qt::Key_F7, KVVMRenderSaturation},
                                                       {Qt::Key_F8, KVVMRenderAbsoluteColorimetric}};
    for (const auto& [key, intent] : keys) {
        press(key);
        ASSERT_TRUE(settle());
        EXPECT_EQ(entry().gamut.report().intent, intent);
    }
    press(Qt::Key_F9); // no effect with the absolute intent
    EXPECT_FALSE(entry().settings.blackPointCompensation);
    press(Qt::Key_F6);
    press(Qt::Key_F9);
    ASSERT_TRUE(settle());
    EXPECT_TRUE(entry().gamut.report().blackPointCompensation);
}

TEST_F(Actions, setAndResetTheGamutColour)
{
    open({QStringLiteral("sRGB")});
    const QImage before = settledPicture();
    chooseColor(Qt::red, [&] { press(Qt::Key_L, Qt::ControlModifier); });
    EXPECT_EQ(entry().look.color, QColor(Qt::red));
    EXPECT_NE(settledPicture(), before);
    press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(settledPicture(), before);
    chooseColor(Qt::blue, [&] { control<QToolButton>("color").click(); });
    EXPECT_EQ(entry().look.color, QColor(Qt::blue));
}

TEST_F(Actions, keepTheColourWhenTheDialogIsCancelled)
{
    open({QStringLiteral("sRGB")});
    EXPECT_TRUE(
        answered<QColorDialog>([&] { action("gamutColor").trigger(); },
                               [](QColorDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
    EXPECT_FALSE(entry().look.color.isValid());
}

// --- The view -------------------------------------------------------------------------------------------

TEST_F(Actions, setTheColourOfTheLight)
{
    open({QStringLiteral("sRGB")});
    const QImage before = settledPicture();
    chooseColor(Qt::red, [&] { press(Qt::Key_F2, Qt::ShiftModifier); });
    EXPECT_EQ(window.viewer().lightColor(), QColor(Qt::red));
    EXPECT_NE(settledPicture(), before);
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(settledPicture(), before);
}

TEST_F(Actions, raiseAndLowerTheSection)
{
    open({QStringLiteral("sRGB")});
    press(Qt::Key_C);
    const auto& number = control<QDoubleSpinBox>("clipNumber");
    press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(number.value(), 51.0);
    press(Qt::Key_Down, Qt::ControlModifier);
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(number.value(), 49.0);
    EXPECT_FLOAT_EQ(window.viewer().clipping(), 49.0f);
}

TEST_F(Actions, showAndHideThePanels)
{
    open({QStringLiteral("sRGB")});
    const char* const panels[] = {"gamutsDock", "sectionDock", "pointsDock", "comparisonDock", "findingDock"};
    int number = 0;
    for (const char* name : panels) {
        const auto key = static_cast<Qt::Key>(Qt::Key_1 + number++);
        const auto& panel = control<QDockWidget>(name);
        ASSERT_TRUE(panel.isVisible()) << name;
        press(key, Qt::ControlModifier | Qt::AltModifier);
        EXPECT_FALSE(panel.isVisible()) << name;
        press(key, Qt::ControlModifier | Qt::AltModifier);
        EXPECT_TRUE(panel.isVisible()) << name;
    }
    EXPECT_EQ(window.findChildren<QDockWidget*>().size(), number);
}

TEST_F(Actions, switchToFullScreen)
{
    const QSize before = window.size();
    press(Qt::Key_F11);
    EXPECT_TRUE(
        kvtest::spinUntil([&] { return window.isFullScreen() && window.size() == window.screen()->size(); }));
    EXPECT_TRUE(action("fullScreen").isChecked());
    press(Qt::Key_F11);
    EXPECT_TRUE(kvtest::spinUntil([&] { return !window.isFullScreen() && window.size() == before; }));
}

TEST_F(Actions, openTheKeyListByEachKey)
{
    for (const Qt::Key key : {Qt::Key_H, Qt::Key_Question, Qt::Key_F1}) {
        press(key);
        auto* list = window.findChild<KeyList*>();
        ASSERT_NE(list, nullptr) << key;
        list->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Close)->click();
        ASSERT_TRUE(kvtest::spinUntil([&] { return window.findChild<KeyList*>() == nullptr; }));
    }
}

// --- Escape ---------------------------------------------------------------------------------------------

TEST_F(Actions, cancelLoadsThenDismissMessagesWithEscape)
{
    open({cmyk, path(QStringLiteral("missing.icc"))});
    ASSERT_TRUE(control<QWidget>("messageBar").isVisible());
    const QImage before = settledPicture();
    window.gamuts().setSettings(0, {KVVMRenderPerceptual, false, 129});
    window.addGamut(QStringLiteral("sRGB"), {KVVMRenderPerceptual, false, 129}, {});
    ASSERT_TRUE(control<QToolButton>("cancel").isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(control<QToolButton>("cancel").isVisible());
    EXPECT_TRUE(control<QWidget>("messageBar").isVisible());
    ASSERT_TRUE(settle());
    EXPECT_EQ(inputs(), QStringList{cmyk}); // the gamut that was loading is removed, the computed one remains
    EXPECT_EQ(entry().settings, KVGamut::Settings());
    EXPECT_EQ(settledPicture(), before);
    press(Qt::Key_Escape);
    EXPECT_FALSE(control<QWidget>("messageBar").isVisible());
}

TEST_F(Actions, dismissMessagesWithTheButton)
{
    window.open({path(QStringLiteral("missing.icc"))});
    ASSERT_TRUE(kvtest::spinUntil([&] { return control<QWidget>("messageBar").isVisible(); }));
    control<QToolButton>("dismiss").click();
    EXPECT_FALSE(control<QWidget>("messageBar").isVisible());
}

} // namespace
