// SPDX-License-Identifier: Apache-2.0
#include "WindowCase.h"

#include "app/support/Picture.h"
#include "desktop/panels/PhotoMask.h"
#include "desktop/panels/PictureDialog.h"
#include "model/points/Lab.h"

#include <QtGui/QClipboard>
#include <QtGui/QColorSpace>
#include <QtGui/QPainter>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

// The panels for points, section, comparison and clipping, and the dialog for the size of a picture.

namespace {

class Panels : public kvtest::WindowCase
{
protected:
    /// The displayed text of a cell in the first row of points.
    QString shownOfPoints(int column) { return window.points().index(0, column).data().toString(); }

    /// The message of the status bar after the pointer moved to @p place in the section. The event is sent
    /// directly, because an event through the X server would arrive at an unknown time.
    QString messageAt(QPoint place)
    {
        auto& section = control<QWidget>("slice");
        QMouseEvent event(QEvent::MouseMove, place, section.mapToGlobal(QPointF(place)), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&section, &event);
        return window.statusBar()->currentMessage();
    }

    /// The number after @p name in @p words: 40 for "a*" in "a* 40.0".
    static double numberAfter(const QString& name, const QString& words)
    {
        const QString rest = words.mid(words.indexOf(name) + name.size()).trimmed();
        bool ok = false;
        const double number = rest.section(QLatin1Char(' '), 0, 0).toDouble(&ok);
        EXPECT_TRUE(ok) << words.toStdString();
        return number;
    }
};

// --- Points ---------------------------------------------------------------------------------------------

TEST_F(Panels, useTheToleranceOfTheField)
{
    // two neutral colours: one in the middle of the gamut, one above its white
    open({QStringLiteral("sRGB"), write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n110,0,0\n")});
    EXPECT_EQ(shownOfPoints(PointLayer::EdgeShare), QStringLiteral("0.0 %"));
    EXPECT_EQ(shownOfPoints(PointLayer::OutsideShare), QStringLiteral("50.0 %"));
    const QImage before = settledPicture();
    auto& tolerance = control<QDoubleSpinBox>("tolerance");
    tolerance.setFocus();
    tolerance.selectAll();
    QTest::keyClicks(&tolerance, QStringLiteral("15"));
    QTest::keyClick(&tolerance, Qt::Key_Return);
    EXPECT_EQ(shownOfPoints(PointLayer::EdgeShare), QStringLiteral("50.0 %"));
    EXPECT_EQ(shownOfPoints(PointLayer::OutsideShare), QStringLiteral("0.0 %"));
    EXPECT_NE(settledPicture(), before); // the point above the white has the colour of the edge
}

TEST_F(Panels, removePointsFromTheKeyboard)
{
    const QString first = write(QStringLiteral("1.csv"), "L,a,b\n110,0,0\n");
    const QString second = write(QStringLiteral("2.csv"), "L,a,b\n60,0,0\n");
    open({first, second});
    ASSERT_FALSE(window.viewer().pointSet().isEmpty());
    auto& list = control<QTreeView>("pointFiles");
    list.setFocus();
    list.setCurrentIndex(list.model()->index(0, 0));
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(window.points().files(), QStringList{second});
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_TRUE(window.points().files().isEmpty());
    EXPECT_TRUE(window.viewer().pointSet().isEmpty());
}

TEST_F(Panels, showThePixelsOfADroppedPicture)
{
    open({QStringLiteral("sRGB")});
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(path(QStringLiteral("red.png"))));
    drop(*control<QTreeView>("pointFiles").parentWidget(), path(QStringLiteral("red.png")));
    ASSERT_TRUE(settle());
    EXPECT_EQ(window.gamuts().rowCount(), 1); // not as a gamut
    ASSERT_EQ(window.points().rowCount(), 1);
    ASSERT_EQ(window.points().set(0).points.size(), 1);
    EXPECT_LT((vectorOf(window.points().set(0).points[0].lab) - QVector3D(54.3f, 80.8f, 69.9f)).length(),
              1.0f); // D50
}

TEST_F(Panels, markWhatIsLostOfAPhoto)
{
    open({QStringLiteral("sRGB")});
    // A photo in Adobe RGB: its green is outside sRGB, its grey is not.
    QImage picture(60, 30, QImage::Format_RGB32);
    picture.fill(QColor(128, 128, 128));
    QPainter(&picture).fillRect(0, 0, 20, 30, QColor(0, 255, 0));
    picture.setColorSpace(QColorSpace(QColorSpace::AdobeRgb));
    ASSERT_TRUE(picture.save(path(QStringLiteral("photo.png"))));
    auto& list = control<QTreeView>("pointFiles");
    drop(*list.parentWidget(), path(QStringLiteral("photo.png")));
    ASSERT_TRUE(settle());
    list.setFocus();
    list.setCurrentIndex(list.model()->index(0, 0));
    QTest::keyClick(&list, Qt::Key_M, Qt::ControlModifier);
    auto* mask = window.findChild<PhotoMask*>();
    ASSERT_NE(mask, nullptr);
    ASSERT_TRUE(kvtest::spinUntil([&] { return mask->isComplete(); }));
    ASSERT_EQ(mask->picture().size(), QSize(60, 30));
    const QColor lost = mask->picture().pixelColor(10, 15), made = mask->picture().pixelColor(40, 15);
    EXPECT_GT(lost.saturation(), 100);
    EXPECT_EQ(made.saturation(), 0);
    const QString words = control<QLabel>("photoMaskWords").text();
    EXPECT_TRUE(words.contains(QStringLiteral("33.3 % of the pixels are outside"))) << words.toStdString();
    const QImage shown = mask->grab().toImage();
    EXPECT_LT(kvtest::difference(shown.pixelColor(shown.width() / 6, shown.height() / 2 - 20), lost), 6);
    mask->close();
    EXPECT_TRUE(kvtest::spinUntil([&] { return !window.findChild<PhotoMask*>(); }));
}

TEST_F(Panels, noMaskIsShownOfPointsThatAreNoPhoto)
{
    open({QStringLiteral("sRGB"), write(QStringLiteral("p.csv"), "L,a,b\n50,0,0\n")});
    auto& list = control<QTreeView>("pointFiles");
    list.setFocus();
    list.setCurrentIndex(list.model()->index(0, 0));
    QTest::keyClick(&list, Qt::Key_M, Qt::ControlModifier);
    EXPECT_EQ(window.findChild<PhotoMask*>(), nullptr);
}

// --- Section and clip -----------------------------------------------------------------------------------

TEST_F(Panels, showTheColourUnderThePointer)
{
    open({QStringLiteral("sRGB")});
    control<QDoubleSpinBox>("clipNumber").setValue(40.0);
    QCoreApplication::processEvents(); // redraws the section, with another scale
    const QSize size = control<QWidget>("slice").size();
    const QPoint place(size.width() / 2, size.height() / 3);
    QTest::mouseMove(&control<QWidget>("slice"), place); // so that the pointer can leave the panel
    ASSERT_TRUE(kvtest::spinUntil([this] { return !window.statusBar()->currentMessage().isEmpty(); }));
    const QString here = messageAt(place);
    const QString right = messageAt(place + QPoint(30, 0));
    const QString above = messageAt(place - QPoint(0, 30));
    EXPECT_DOUBLE_EQ(numberAfter(QStringLiteral("L*"), here), 40.0);
    const double across = numberAfter(QStringLiteral("a*"), right) - numberAfter(QStringLiteral("a*"), here);
    const double up = numberAfter(QStringLiteral("b*"), above) - numberAfter(QStringLiteral("b*"), here);
    EXPECT_GT(across, 5.0);
    EXPECT_NEAR(up, across, 0.2); // both axes have the same scale
    EXPECT_DOUBLE_EQ(numberAfter(QStringLiteral("b*"), right), numberAfter(QStringLiteral("b*"), here));

    QTest::mouseMove(&control<QWidget>("gamutList"), QPoint(10, 10));
    EXPECT_TRUE(kvtest::spinUntil([this] { return window.statusBar()->currentMessage().isEmpty(); }));
}

TEST_F(Panels, moveTheSectionButDoNotCutWhileTheSliderIsDragged)
{
    open({QStringLiteral("sRGB")});
    const QImage whole = settledPicture();
    auto& slider = control<QSlider>("clipSlider");
    const QPoint handle = slider.rect().center(); // at 50 of 100
    QTest::mousePress(&slider, Qt::LeftButton, Qt::NoModifier, handle);
    QTest::mouseMove(&slider, handle + QPoint(0, slider.height() / 8));
    QTest::mouseMove(&slider, handle + QPoint(0, slider.height() / 4));
    EXPECT_NEAR(control<QDoubleSpinBox>("clipNumber").value(), 25.0, 3.0);
    EXPECT_EQ(control<QDoubleSpinBox>("clipNumber").value(), slider.value());
    QTest::mouseRelease(&slider, Qt::LeftButton, Qt::NoModifier, handle + QPoint(0, slider.height() / 4));
    EXPECT_FALSE(control<QCheckBox>("clipCut").isChecked()); // as with the keys
    EXPECT_EQ(settledPicture(), whole);
    QTest::keyClick(&window, Qt::Key_C);
    EXPECT_TRUE(control<QCheckBox>("clipCut").isChecked());
    EXPECT_FLOAT_EQ(window.viewer().clipping(), static_cast<float>(slider.value()));
    EXPECT_NE(settledPicture(), whole);
}

// --- Comparison -----------------------------------------------------------------------------------------

TEST_F(Panels, copyTheWholeTableWhenNothingIsSelected)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    auto& table = control<QTableView>("comparison");
    table.setFocus();
    table.clearSelection();
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 3); // the titles, too
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("sRGB\t")));
    EXPECT_TRUE(lines[2].startsWith(QStringLiteral("DisplayP3\t")));
}

// --- The list of gamuts ---------------------------------------------------------------------------------

TEST_F(Panels, followTheMouseInTheGamutList)
{
    open({QStringLiteral("sRGB"), QStringLiteral("DisplayP3")});
    auto& list = control<QListView>("gamutList");
    const QRect second = list.visualRect(list.model()->index(1, 0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, second.center());
    EXPECT_EQ(window.gamuts().activeRow(), 1);
    EXPECT_TRUE(entry(1).look.visible);
    const QImage before = settledPicture();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(second.left() + 10, second.center().y())); // its check box
    EXPECT_FALSE(entry(1).look.visible);
    EXPECT_NE(settledPicture(), before);
}

// --- The view among the controls ------------------------------------------------------------------------

TEST_F(Panels, areReachedFromTheViewInBothDirections)
{
    open({QStringLiteral("sRGB")});
    auto& view = control<QWidget>("view");
    const auto leave = [&](Qt::Key key) {
        view.setFocus();
        QTest::keyClick(&view, key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        EXPECT_NE(QApplication::focusWidget(), &view);
        return QApplication::focusWidget();
    };
    QWidget* next = leave(Qt::Key_Tab);
    QWidget* previous = leave(Qt::Key_Backtab);
    EXPECT_NE(next, previous);
    QTest::keyClick(previous, Qt::Key_Tab); // back to the view
    EXPECT_EQ(QApplication::focusWidget(), &view);
}

// --- The size of a picture ------------------------------------------------------------------------------

class SizeDialog : public testing::Test
{
protected:
    void SetUp() override
    {
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog, 60000));
    }

    void type(const QString& keys) { QTest::keyClicks(QApplication::focusWidget(), keys); }

    PictureDialog dialog{{640, 480}};
};

TEST_F(SizeDialog, replacesTheProposedWidthByTyping)
{
    EXPECT_EQ(dialog.size(), QSize(640, 480));
    EXPECT_EQ(QApplication::focusWidget(), dialog.findChild<QSpinBox*>(QStringLiteral("pictureWidth")));
    type(QStringLiteral("500"));
    EXPECT_EQ(dialog.size(), QSize(500, 480));
}

TEST_F(SizeDialog, replacesTheHeightByTypingAfterTab)
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    type(QStringLiteral("500"));
    EXPECT_EQ(dialog.size(), QSize(640, 500));
}

TEST_F(SizeDialog, reachesItsFieldsByMnemonics)
{
    QTest::keyClick(&dialog, Qt::Key_H, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("pictureHeight"));
    QTest::keyClick(&dialog, Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("pictureWidth"));
}

TEST_F(SizeDialog, limitsTheSize)
{
    for (const char* name : {"pictureWidth", "pictureHeight"}) {
        auto* side = dialog.findChild<QSpinBox*>(QLatin1String(name));
        side->setValue(100000);
        EXPECT_EQ(side->value(), 8192);
        side->setValue(0);
        EXPECT_EQ(side->value(), 16);
    }
}

TEST_F(SizeDialog, isAcceptedByReturnAndRejectedByEscape)
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog, 60000));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

} // namespace
