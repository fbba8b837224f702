// SPDX-License-Identifier: Apache-2.0
// Real X input for a viewer between two line edits: what a host sees of it, and how Tab moves the focus.

#include "support/MessageCheck.h"
#include "support/Spin.h"
#include "support/WindowManager.h"

#include <KVGamut3DViewer.h>

#include <glwindow/KVGLWidget.h>

#include <gmock/gmock.h>

#include <QtCore/QMap>
#include <QtCore/QProcess>
#include <QtGui/QMouseEvent>
#include <QtGui/QStyleHints>
#include <QtGui/QWindow>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

#include <cmath>
#include <numbers>

namespace {

using kvtest::spinUntil;

/// Counts the events of a window by their type.
class EventCount : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        ++m_counts[event->type()];
        return false;
    }
    int of(QEvent::Type type) const { return m_counts.value(type); }
    void clear() { m_counts.clear(); }

private:
    QMap<QEvent::Type, int> m_counts;
};

class Focus : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(windowManager.start()) << "openbox is needed";
        container->setFocusPolicy(Qt::TabFocus);
        container->setFixedSize(320, 240);
        auto* layout = new QVBoxLayout(&host);
        for (QWidget* widget : std::initializer_list<QWidget*>{before, container, after})
            layout->addWidget(widget);
        host.move(100, 100);
        host.show();
        ASSERT_TRUE(spinUntil([this] { return widget().drawnFrames() > 0 && viewer->isSettled(); }));
        ASSERT_TRUE(spinUntil([this] { return QGuiApplication::focusWindow() == host.windowHandle(); }));
        before->setFocus();
        ASSERT_TRUE(spinUntil([this] { return QApplication::focusWidget() == before; }));
        kvtest::spinFor(200); // the window manager may give the focus once more
        viewer->setCamera(QVector3D(50, 0, -300), 0, QVector3D(50, 0, 0));
    }

    KVGLWidget& widget() const { return *viewer->findChild<KVGLWidget*>(); }
    float azimuth() const { return widget().cameraState().azimuth(); }

    /// Runs xdotool with the event loop running.
    void xdotool(const QString& words)
    {
        QProcess tool;
        tool.start(QStringLiteral("xdotool"), words.split(QLatin1Char(' ')));
        ASSERT_TRUE(spinUntil([&] { return tool.state() == QProcess::NotRunning; }));
        ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().constData();
    }

    void press(const char* key) { xdotool(QStringLiteral("key %1").arg(QLatin1String(key))); }

    /// Moves the pointer to a pixel of the viewer and waits until the viewer has received the move.
    void pointTo(const QPoint& p)
    {
        const QPoint global = viewer->mapToGlobal(p);
        const auto move = [this](const QPoint& to) {
            xdotool(QStringLiteral("mousemove %1 %2").arg(to.x()).arg(to.y()));
            EXPECT_TRUE(spinUntil([&] { return widget().lastMousePosition().toPoint() == to; }));
        };
        move(global + QPoint(2, 3)); // without it a pointer that is already there would cause no event
        move(global);
    }

    bool viewerHasFocus() const { return QGuiApplication::focusWindow() == viewer; }

    void tabIntoTheViewer()
    {
        press("Tab");
        ASSERT_TRUE(spinUntil([this] { return viewerHasFocus(); }));
    }

    void expectFocusOf(QLineEdit* edit)
    {
        EXPECT_TRUE(spinUntil([edit] { return QApplication::focusWidget() == edit; }, 60000))
            << "focus: " << QApplication::focusWidget() << ", window: " << QGuiApplication::focusWindow();
        press("x"); // the keys go there
        EXPECT_TRUE(spinUntil([edit] { return edit->text() == QLatin1String("x"); }, 60000));
    }

    kvtest::WindowManager windowManager;
    QWidget host;
    KVGamut3DViewer* const viewer = new KVGamut3DViewer;
    QWidget* const container = QWidget::createWindowContainer(viewer);
    QLineEdit* const before = new QLineEdit;
    QLineEdit* const after = new QLineEdit;
};

} // namespace

TEST_F(Focus, tabReachesTheViewerWhoseArrowsTurnTheCamera)
{
    tabIntoTheViewer();
    const float start = azimuth();
    QSignalSpy finished(viewer, &KVGamut3DViewer::moveFinished);
    press("Left");
    ASSERT_TRUE(spinUntil([&] { return finished.count() == 1; }));
    EXPECT_NEAR(azimuth() - start, std::numbers::pi / 20, 1e-5);
    EXPECT_TRUE(viewerHasFocus());
}

TEST_F(Focus, tabLeavesTheViewerForwards)
{
    tabIntoTheViewer();
    press("Tab");
    expectFocusOf(after);
}

TEST_F(Focus, shiftTabLeavesTheViewerBackwards)
{
    tabIntoTheViewer();
    press("shift+Tab");
    expectFocusOf(before);
    EXPECT_TRUE(spinUntil([this] { return !widget().panMode(); })) << "Shift was released elsewhere";
}

TEST_F(Focus, tabPassesThroughTheViewerAgain)
{
    for (int round = 0; round < 2; ++round) {
        tabIntoTheViewer();
        press("Tab");
        ASSERT_TRUE(spinUntil([this] { return QApplication::focusWidget() == after; }, 60000));
        press("Tab");
        ASSERT_TRUE(spinUntil([this] { return QApplication::focusWidget() == before; }, 60000));
    }
}

TEST_F(Focus, aClickGivesTheViewerTheFocusThatTabTakesAway)
{
    QSignalSpy clicks(viewer, &KVGamut3DViewer::click);
    pointTo(QPoint(50, 60));
    xdotool(QStringLiteral("click 1"));
    ASSERT_TRUE(spinUntil([&] { return clicks.count() == 1 && viewerHasFocus(); }));
    EXPECT_EQ(clicks[0][0].toPoint(), QPoint(50, 60));
    press("Tab");
    expectFocusOf(after);
}

TEST_F(Focus, anEventFilterOfTheHostSeesEachEventOnce)
{
    EventCount count;
    viewer->installEventFilter(&count);
    tabIntoTheViewer();
    count.clear();
    press("Left");
    ASSERT_TRUE(spinUntil([&] { return count.of(QEvent::KeyRelease) > 0; }));
    EXPECT_EQ(count.of(QEvent::KeyPress), 1);
    EXPECT_EQ(count.of(QEvent::KeyRelease), 1);

    QGuiApplication::styleHints()->setMouseDoubleClickInterval(20000);
    pointTo(QPoint(50, 60));
    QSignalSpy clicks(viewer, &KVGamut3DViewer::click);
    QSignalSpy doubleClicks(viewer, &KVGamut3DViewer::doubleClick);
    count.clear();
    xdotool(QStringLiteral("click --repeat 2 --delay 40 1"));
    ASSERT_TRUE(spinUntil([&] { return clicks.count() == 2; }));
    EXPECT_EQ(doubleClicks.count(), 1);
    EXPECT_EQ(count.of(QEvent::MouseButtonPress), 2);
    EXPECT_EQ(count.of(QEvent::MouseButtonRelease), 2);
    EXPECT_EQ(count.of(QEvent::MouseButtonDblClick), 1);

    const float distance = widget().cameraState().distance();
    xdotool(QStringLiteral("click 4"));
    ASSERT_TRUE(spinUntil([&] { return count.of(QEvent::Wheel) > 0; }));
    kvtest::spinFor(50);
    EXPECT_EQ(count.of(QEvent::Wheel), 1);
    EXPECT_NEAR(widget().cameraState().distance(), distance - 6, 1e-3);
}

TEST_F(Focus, aDragGoesOnOutsideTheWindow)
{
    EventCount count;
    viewer->installEventFilter(&count);
    pointTo(QPoint(160, 120));
    const float start = azimuth();
    QSignalSpy clicks(viewer, &KVGamut3DViewer::click);
    xdotool(QStringLiteral("mousedown 1"));
    pointTo(QPoint(360, 120));
    xdotool(QStringLiteral("mouseup 1"));
    ASSERT_TRUE(spinUntil([&] { return clicks.count() == 1; }));
    EXPECT_GT(count.of(QEvent::MouseMove), 0);
    // the window is two full turns wide
    EXPECT_NEAR(std::remainder(azimuth() - start - 200 / 320.0 * 4 * std::numbers::pi, 2 * std::numbers::pi),
                0, 1e-3);
}

TEST_F(Focus, aDragWithShiftPans)
{
    tabIntoTheViewer();
    xdotool(QStringLiteral("keydown shift"));
    ASSERT_TRUE(spinUntil([&] { return widget().panMode() && !widget().isMoving(); }));
    pointTo(QPoint(160, 120));
    const CameraState start = widget().cameraState();
    xdotool(QStringLiteral("mousedown 1"));
    pointTo(QPoint(180, 120));
    xdotool(QStringLiteral("mouseup 1"));
    xdotool(QStringLiteral("keyup shift"));
    ASSERT_TRUE(spinUntil([&] { return !widget().panMode(); }));
    const CameraState end = widget().cameraState();
    EXPECT_EQ(end.azimuth(), start.azimuth());
    EXPECT_NEAR((end.interestPoint() - start.interestPoint()).length(), 20, 1e-3);
}

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv); // widgets need it
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
