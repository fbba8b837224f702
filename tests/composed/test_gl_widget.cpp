// SPDX-License-Identifier: Apache-2.0
// The viewer as a widget that Qt composes with others.

#include "ComposedCase.h"

#include <KVGamutGLWidget.h>

#include <gtest/gtest.h>

#include <QtGui/QWindow>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QVBoxLayout>

#include <memory>

using namespace kvtest;

namespace {

bool settle(const KVGamutGLWidget& widget)
{
    return spinUntil([&] { return widget.viewer()->isSettled(); });
}

/// A widget in a window of its own.
struct Shown
{
    explicit Shown(const QSize& size = {200, 150})
    {
        fill(*widget.viewer());
        widget.resize(size);
        widget.show();
        isShown = QTest::qWaitForWindowExposed(&widget, 60000) && settle(widget);
    }
    KVGamutGLWidget widget;
    bool isShown = false;
};

QRgb onScreen(const QWidget& widget, const QPoint& at)
{
    const QPoint p = widget.mapToGlobal(at);
    return widget.screen()->grabWindow(0, p.x(), p.y(), 1, 1).toImage().pixel(0, 0);
}

} // namespace

TEST(GLWidget, showsThePictureOfTheWindow)
{
    const QImage expected = windowPicture();
    const Shown shown;
    ASSERT_TRUE(shown.isShown);
    EXPECT_LE(difference(shown.widget.viewer()->picture(), expected), maxDifference);
    EXPECT_LE(difference(const_cast<KVGamutGLWidget&>(shown.widget).grab().toImage(), expected),
              maxDifference);
    EXPECT_TRUE(spinUntil([&] {
        return onScreen(shown.widget, {100, 75}) == expected.pixel(100, 75);
    })) << "on the screen";
}

TEST(GLWidget, isGrabbedUpToDateWithinItsWindow)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* widget = new KVGamutGLWidget;
    layout->addWidget(widget);
    window.resize(200, 150);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, 60000));
    ASSERT_TRUE(settle(*widget));
    for (const Qt::GlobalColor color : {Qt::red, Qt::green, Qt::blue}) { // without a turn of the event loop
        widget->viewer()->setBackground(color);
        EXPECT_EQ(window.grab().toImage().pixelColor(3, 3), QColor(color));
    }
}

TEST(GLWidget, liesBelowItsChildWidgets)
{
    Shown shown;
    ASSERT_TRUE(shown.isShown);
    QLabel label(&shown.widget);
    label.setStyleSheet(QStringLiteral("background: #ff8000"));
    label.setGeometry(10, 10, 50, 30);
    label.show();
    const QImage picture = shown.widget.grab().toImage();
    EXPECT_EQ(picture.pixelColor(30, 20), QColor(0xff, 0x80, 0));
    EXPECT_TRUE(spinUntil([&] { return QColor(onScreen(shown.widget, {30, 20})) == QColor(0xff, 0x80, 0); }));
    QImage without = picture, expected = windowPicture();
    for (QImage* image : {&without, &expected})
        for (int y = 10; y < 40; ++y)
            for (int x = 10; x < 60; ++x)
                image->setPixel(x, y, 0xff000000);
    EXPECT_LE(difference(without, expected), maxDifference);
}

TEST(GLWidget, drawsNothingWhileNothingChanges)
{
    const Shown shown;
    ASSERT_TRUE(shown.isShown);
    spinFor(300);
    QSignalSpy composed(&shown.widget, &QOpenGLWidget::frameSwapped);
    spinFor(500);
    EXPECT_EQ(composed.count(), 0);
    shown.widget.viewer()->setBackground(Qt::red);
    EXPECT_TRUE(spinUntil([&] { return composed.count() > 0; }));
}

TEST(GLWidget, followsItsSize)
{
    Shown shown;
    ASSERT_TRUE(shown.isShown);
    shown.widget.resize(260, 120);
    ASSERT_TRUE(spinUntil(
        [&] { return shown.widget.viewer()->picture().size() == QSize(260, 120) && settle(shown.widget); }));
    EXPECT_LE(difference(shown.widget.grab().toImage(), windowPicture({260, 120})), maxDifference);
}

TEST(GLWidget, takesPartInDocksAndKeepsItsSceneInAnotherWindow)
{
    QMainWindow window;
    window.setCentralWidget(new QLineEdit);
    auto* widget = new KVGamutGLWidget;
    auto* dock = new QDockWidget(QStringLiteral("Gamut"));
    dock->setWidget(widget);
    window.addDockWidget(Qt::RightDockWidgetArea, dock);
    fill(*widget->viewer());
    window.resize(400, 200);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, 60000));
    ASSERT_TRUE(settle(*widget));
    const QImage docked = widget->viewer()->picture(QSize(200, 150));
    for (const bool floats : {true, false}) { // Qt makes a new context for each window
        dock->setFloating(floats);
        ASSERT_TRUE(spinUntil([&] { return !widget->viewer()->picture(QSize(200, 150)).isNull(); }));
        ASSERT_TRUE(settle(*widget));
        EXPECT_LE(difference(widget->viewer()->picture(QSize(200, 150)), docked), maxDifference) << floats;
        EXPECT_TRUE(widget->viewer()->exists(g));
    }
    dock->hide();
    spinFor(50);
    dock->show();
    ASSERT_TRUE(settle(*widget));
    EXPECT_LE(difference(widget->viewer()->picture(QSize(200, 150)), docked), maxDifference);
}

TEST(GLWidget, turnsTheCameraByDragsKeysAndTheWheel)
{
    Shown shown;
    ASSERT_TRUE(shown.isShown);
    KVGamut3DViewer& viewer = *shown.widget.viewer();
    QSignalSpy changed(shown.widget.view(), &KVGamutView::cameraChanged);
    const auto moves = [&](const char* by) {
        EXPECT_TRUE(spinUntil([&] { return !changed.isEmpty(); })) << by;
        changed.clear();
    };
    QTest::mousePress(&shown.widget, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    QTest::mouseMove(&shown.widget, QPoint(80, 60));
    QTest::mouseRelease(&shown.widget, Qt::LeftButton, Qt::NoModifier, QPoint(80, 60));
    moves("a drag");
    EXPECT_TRUE(shown.widget.hasFocus()) << "a click gives the focus";
    QSignalSpy finished(&viewer, &KVGamut3DViewer::moveFinished);
    QTest::keyClick(&shown.widget, Qt::Key_Left);
    EXPECT_TRUE(spinUntil([&] { return finished.count() == 1; }));
    moves("a key");
    QWheelEvent wheel({50, 50}, shown.widget.mapToGlobal(QPointF(50, 50)), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&shown.widget, &wheel);
    moves("the wheel");
}

TEST(GLWidget, leavesTabAndShortcutsToTheWindow)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* widget = new KVGamutGLWidget;
    auto* edit = new QLineEdit;
    layout->addWidget(widget);
    layout->addWidget(edit);
    window.resize(200, 200);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, 60000));
    widget->setFocus();
    ASSERT_TRUE(spinUntil([&] { return widget->hasFocus(); }));
    QTest::keyClick(widget, Qt::Key_Tab);
    EXPECT_TRUE(edit->hasFocus());
    QTest::keyClick(edit, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(widget->hasFocus());
}

TEST(GLWidget, reportsClicks)
{
    Shown shown;
    ASSERT_TRUE(shown.isShown);
    QSignalSpy clicked(shown.widget.view(), &KVGamutView::clicked);
    QTest::mouseClick(&shown.widget, Qt::LeftButton, Qt::NoModifier, QPoint(100, 75));
    ASSERT_TRUE(spinUntil([&] { return !clicked.isEmpty(); }));
    EXPECT_EQ(clicked[0][0].value<KVHit>().id, g);
}

TEST(GLWidget, ignoresInputWhileItIsDisabled)
{
    Shown shown;
    ASSERT_TRUE(shown.isShown);
    shown.widget.setEnabled(false);
    const QVector3D camera = shown.widget.viewer()->camera();
    QWheelEvent wheel({50, 50}, shown.widget.mapToGlobal(QPointF(50, 50)), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&shown.widget, &wheel);
    EXPECT_EQ(shown.widget.viewer()->camera(), camera);
}

TEST(GLWidget, mayBeTwiceInAWindow)
{
    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* left = new KVGamutGLWidget;
    auto* right = new KVGamutGLWidget;
    layout->addWidget(left);
    layout->addWidget(right);
    fill(*left->viewer());
    right->viewer()->setBackground(Qt::red);
    window.resize(400, 150);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, 60000));
    ASSERT_TRUE(settle(*left) && settle(*right));
    const QImage both = window.grab().toImage();
    EXPECT_LE(difference(both.copy(0, 0, 200, 150), windowPicture()), maxDifference);
    EXPECT_EQ(both.pixelColor(205, 5), QColor(Qt::red));
    delete left;
    spinFor(50);
    EXPECT_EQ(window.grab().toImage().pixelColor(205, 5), QColor(Qt::red));
}

TEST(GLWidget, followsThePixelRatio) // run once more with QT_SCALE_FACTOR=2 and 1.5
{
    const Shown shown(QSize(100, 76));
    ASSERT_TRUE(shown.isShown);
    const qreal ratio = shown.widget.devicePixelRatioF();
    const QImage picture = shown.widget.viewer()->picture();
    EXPECT_EQ(picture.size(), QSize(100, 76) * ratio);
    EXPECT_EQ(picture.devicePixelRatio(), ratio);
    EXPECT_LE(difference(picture, shown.widget.viewer()->picture(picture.size())), maxDifference);
    EXPECT_LE(difference(const_cast<KVGamutGLWidget&>(shown.widget).grab().toImage(), picture),
              maxDifference);
}
