// SPDX-License-Identifier: Apache-2.0
// The tour of the documentation, as somebody follows it. Its keys are read from the page, in their order, so
// that the page and the window cannot differ. The pictures of the page are the baselines.

#include "DialogAnswer.h"
#include "WindowCase.h"
#include "WindowPicture.h"

#include "desktop/panels/CommandSearch.h"
#include "desktop/panels/CoverageTable.h"
#include "desktop/panels/GamutInformation.h"
#include "desktop/panels/KeyList.h"
#include "desktop/panels/PictureDialog.h"
#include "desktop/panels/SlicePanel.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QClipboard>
#include <QtGui/QColorSpace>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>
#include <QtWidgets/QTableView>

namespace {

using kvtest::cmyk;

/// The keys that the tour names, in their order.
QStringList keysOfTheTour()
{
    QFile page(QStringLiteral(KVGAMUT_TOUR));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(page.readAll());
    text.remove(
        QRegularExpression(QStringLiteral("```.*?```"), QRegularExpression::DotMatchesEverythingOption));
    static const QRegularExpression key(QStringLiteral(
        "`((?:(?:Ctrl|Shift|Alt)\\+)*(?:[A-Z0-9/]|F[0-9]+|Enter|Esc|Page Up|Page Down|Shift))`"));
    QStringList keys;
    auto matches = key.globalMatch(text);
    while (matches.hasNext())
        keys.append(matches.next().captured(1));
    return keys;
}

class Tour : public kvtest::WindowCase
{
protected:
    void SetUp() override
    {
        kvtest::WindowCase::SetUp();
        window.resize(1150, 720);
        window.resetPanels();
        keys = keysOfTheTour();
    }

    /// The next key of the page must be @p name.
    void expectNext(const char* name)
    {
        ASSERT_FALSE(keys.isEmpty()) << name;
        EXPECT_EQ(keys.takeFirst(), QLatin1String(name));
    }
    void press(const char* name)
    {
        expectNext(name);
        QString portable = QLatin1String(name);
        portable.replace(QLatin1String("Page Up"), QLatin1String("PgUp"));
        portable.replace(QLatin1String("Page Down"), QLatin1String("PgDown"));
        portable.replace(QLatin1String("Enter"), QLatin1String("Return"));
        const QKeySequence key(portable, QKeySequence::PortableText);
        ASSERT_TRUE(kvtest::spinUntil([] { return QApplication::activeWindow() != nullptr; }));
        QWidget* target = QApplication::activeWindow()->focusWidget();
        QTest::keyClick(target ? target : &window, key[0].key(), key[0].keyboardModifiers());
    }
    /// The dialog that @p key opens, which is closed again.
    template <typename Dialog>
    void pressForDialog(const char* key)
    {
        press(key);
        Dialog* dialog = nullptr;
        ASSERT_TRUE(kvtest::spinUntil([&] {
            dialog = window.findChild<Dialog*>();
            return dialog && dialog->isActiveWindow();
        })) << key;
        dialog->reject();
        ASSERT_TRUE(
            kvtest::spinUntil([&] { return !window.findChild<Dialog*>() && window.isActiveWindow(); }));
    }
    void expectPicture(const char* name)
    {
        EXPECT_TRUE(settle());
        EXPECT_TRUE(kvtest::layoutIsFinal());
        kvtest::expectBaseline(QLatin1String(name), kvtest::pictureOf(window), kvtest::sameWindow);
    }
    QString cell(int row, int column)
    {
        return control<QTableView>("comparison").model()->index(row, column).data().toString();
    }
    QString finding() { return control<QLabel>("finding").text(); }

    void oneGamut();
    void compare();
    void cut();
    void inspect();
    void printer();
    void photo();
    void showAndSave();

    QStringList keys;
};

void Tour::oneGamut()
{
    press("Shift+F1");
    QDialog* tour = nullptr;
    ASSERT_TRUE(kvtest::spinUntil([&] {
        tour = window.findChild<QDialog*>(QStringLiteral("tourDialog"));
        return tour && tour->isActiveWindow();
    }));
    tour->reject();
    ASSERT_TRUE(kvtest::spinUntil([this] { return window.isActiveWindow(); }));
    open({QStringLiteral("sRGB")});
    control<QWidget>("view").setFocus();
    press("T");
    ASSERT_TRUE(settle());
    EXPECT_GT(window.viewer().camera().x(), 300.0f) << "from above";
    press("1");
    ASSERT_TRUE(settle());
    EXPECT_LT(window.viewer().camera().z(), -300.0f) << "b* points away";
    press("R");
    ASSERT_TRUE(settle());
    const QVector3D start = window.viewer().camera();
    EXPECT_LT(start.z(), -100.0f); // obliquely from the front, the right and above
    EXPECT_GT(start.x(), 60.0f);
    press("F");
    ASSERT_TRUE(settle());
    EXPECT_NE(window.viewer().camera(), start);
    expectPicture("one");
    pressForDialog<KeyList>("H");
    pressForDialog<CommandSearch>("/");
}

void Tour::compare()
{
    press("Ctrl+3");
    ASSERT_TRUE(settle());
    ASSERT_EQ(window.gamuts().rowCount(), 2);
    EXPECT_LT(entry(1).look.opacity, 1.0f);
    EXPECT_EQ(entry(0).look.opacity, 1.0f);
    press("F");
    ASSERT_TRUE(settle());
    EXPECT_EQ(cell(1, ComparisonModel::CoversActive), QStringLiteral("100.00 %"));
    EXPECT_TRUE(cell(1, ComparisonModel::CoveredByActive).startsWith(QStringLiteral("67.")));
    expectPicture("compared");
    press("N");
    ASSERT_TRUE(settle());
    EXPECT_EQ(window.gamuts().activeRow(), 1);
    EXPECT_TRUE(cell(0, ComparisonModel::CoversActive).startsWith(QStringLiteral("67.")));
    auto& table = control<QTableView>("comparison");
    table.selectRow(0);
    table.setFocus();
    press("Ctrl+C");
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(QStringLiteral("sRGB\t")));
    pressForDialog<CoverageTable>("Ctrl+Shift+M");
    control<QWidget>("view").setFocus();
    press("Shift+V");
    EXPECT_FALSE(window.gamuts().isSeen(0));
    window.gamuts().setSolo(false);
}

void Tour::cut()
{
    control<QSlider>("clipSlider").setValue(60); // moved
    press("C");
    EXPECT_EQ(window.view().clipping(), 60.0f);
    expectPicture("cut");
    press("C");
    EXPECT_EQ(window.view().clipping(), std::nullopt);
    press("Shift+C");
    EXPECT_EQ(window.view().section().plane, 60.0f);
    auto& section = control<SlicePanel>("slice");
    press("Shift+H");
    EXPECT_EQ(section.kind(), SectionKind::Hue);
    press("Shift+R");
    EXPECT_EQ(section.kind(), SectionKind::Rings);
    press("Shift+G");
    EXPECT_EQ(section.kind(), SectionKind::Lightness);
    EXPECT_TRUE(kvtest::chooseFile([this] { press("Ctrl+Shift+E"); }, path(QStringLiteral("section.svg"))));
    EXPECT_TRUE(QFile::exists(path(QStringLiteral("section.svg"))));
    EXPECT_TRUE(kvtest::chooseFile([this] { press("Ctrl+Shift+S"); }, path(QStringLiteral("page.html"))));
    ASSERT_TRUE(settle());
    EXPECT_TRUE(QFile::exists(path(QStringLiteral("page.html"))));
    action("showSection").trigger();
}

void Tour::inspect()
{
    QTest::mouseClick(&innerWindow(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(innerWindow().width() / 2, innerWindow().height() / 2));
    EXPECT_TRUE(finding().startsWith(QStringLiteral("Surface of "))) << finding().toStdString();
    EXPECT_TRUE(finding().contains(QStringLiteral("C* "))) << finding().toStdString();
    control<QWidget>("view").setFocus();
    press("K");
    EXPECT_TRUE(finding().startsWith(QStringLiteral("Colour at the cursor")));
    press("Page Up");
    EXPECT_TRUE(finding().contains(QStringLiteral("L* 51.0"))) << finding().toStdString();
    press("Page Down");
    EXPECT_TRUE(finding().contains(QStringLiteral("L* 50.0"))) << finding().toStdString();
    expectNext("Shift");
    QTest::keyClick(&control<QWidget>("view"), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(finding().contains(QStringLiteral("a* 10.0"))) << finding().toStdString();
    press("Enter");
    EXPECT_TRUE(finding().startsWith(QStringLiteral("Surface of ")));
    press("Esc");
    EXPECT_FALSE(action("cursor").isChecked());
}

void Tour::printer()
{
    drop(window, cmyk);
    ASSERT_TRUE(kvtest::spinUntil([this] { return window.gamuts().rowCount() == 3; }));
    ASSERT_TRUE(settle());
    EXPECT_EQ(window.gamuts().activeRow(), 2);
    const float paper = entry(2).gamut.report().white.L;
    EXPECT_LT(paper, 95.0f);
    press("F6");
    ASSERT_TRUE(settle());
    EXPECT_NEAR(entry(2).gamut.report().white.L, 100.0f, 0.1f);
    EXPECT_EQ(cell(2, ComparisonModel::Intent), QStringLiteral("Relative colorimetric"));
    pressForDialog<GamutInformation>("Alt+Enter");
    press("Ctrl+Z");
    ASSERT_TRUE(settle());
    EXPECT_NEAR(entry(2).gamut.report().white.L, paper, 0.01f);
}

void Tour::photo()
{
    window.gamuts().remove(0); // room for the picture of the page
    QImage photo(200, 120, QImage::Format_RGB32);
    for (int y = 0; y < photo.height(); ++y)
        for (int x = 0; x < photo.width(); ++x)
            photo.setPixelColor(x, y, QColor::fromHsvF(float(x) / 200.0f, 0.6f - float(y) / 220.0f, 0.85f));
    photo.setColorSpace(QColorSpace::SRgb);
    ASSERT_TRUE(photo.save(path(QStringLiteral("photo.png"))));
    drop(control<QWidget>("colors"), path(QStringLiteral("photo.png")));
    ASSERT_TRUE(kvtest::spinUntil([this] { return window.points().rowCount() == 1; }));
    action("frame").trigger();
    ASSERT_TRUE(settle());
    expectPicture("points");
    EXPECT_GT(window.points().share(0, Side::Outside).value_or(0.0), 0.05);
    EXPECT_GT(window.points().share(0, Side::Inside).value_or(0.0), 0.05);
}

void Tour::showAndSave()
{
    control<QWidget>("view").setFocus();
    press("F12");
    ASSERT_TRUE(kvtest::spinUntil([this] { return window.isFullScreen(); }));
    press("Esc");
    ASSERT_TRUE(kvtest::spinUntil([this] { return !window.isFullScreen(); }));
    EXPECT_TRUE(kvtest::chooseFile([this] { press("Ctrl+S"); }, path(QStringLiteral("monday.kvsession"))));
    ASSERT_TRUE(settle());
    EXPECT_TRUE(QFile::exists(path(QStringLiteral("monday.kvsession"))));
    EXPECT_TRUE(kvtest::answered<PictureDialog>([this] { press("Ctrl+E"); },
                                                [](PictureDialog& dialog) { dialog.reject(); }));
}

TEST_F(Tour, canBeFollowedKeyByKey)
{
    oneGamut();
    compare();
    cut();
    inspect();
    printer();
    photo();
    showAndSave();
    EXPECT_TRUE(keys.isEmpty()) << keys.join(QLatin1Char(' ')).toStdString();
}

} // namespace
