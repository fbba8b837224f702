// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/ShownViewer.h"

#include <gtest/gtest.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QOpenGLContext>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QTabWidget>

using kvtest::spinFor;
using kvtest::spinUntil;

// The viewer on the screen of a Wayland compositor (weston with --debug), as its screenshots show it.

namespace {

const QSize size(320, 240);
const QColor ground(12, 160, 90); // occurs nowhere else on the screen

/// What the compositor shows; null if it gives no screenshot.
QImage screenshot()
{
    const QTemporaryDir folder;
    QProcess tool;
    tool.setWorkingDirectory(folder.path());
    tool.start(QStringLiteral("weston-screenshooter"), {});
    if (!spinUntil([&tool] { return tool.state() == QProcess::NotRunning; }) || tool.exitCode() != 0)
        return {};
    const QStringList files = QDir(folder.path()).entryList({QStringLiteral("*.png")});
    return files.isEmpty() ? QImage()
                           : QImage(folder.filePath(files.first())).convertToFormat(QImage::Format_RGB32);
}

/// Whether @p part is somewhere in @p whole, with exactly these pixels.
bool contains(const QImage& whole, const QImage& part)
{
    for (int y = 0; y + part.height() <= whole.height(); ++y) {
        for (int x = 0; x + part.width() <= whole.width(); ++x) {
            if (whole.pixel(x, y) == part.pixel(0, 0) && whole.copy(QRect(QPoint(x, y), part.size())) == part)
                return true;
        }
    }
    return false;
}

bool isOnScreen(const QColor& color)
{
    const QImage screen = screenshot();
    for (int y = 0; y < screen.height(); ++y) {
        for (int x = 0; x < screen.width(); ++x) {
            if (screen.pixelColor(x, y) == color)
                return true;
        }
    }
    return false;
}

/// Loads a gamut and shows it with markers in front of the colour that the tests look for.
void fill(KVGamut3DViewer& viewer)
{
    viewer.load(QStringLiteral("g"),
                {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}},
                nullptr);
    viewer.changeGamutAlpha(QStringLiteral("g"), 0.5f, 0);
    viewer.setCamera(QVector3D(210, -250, -330), 0, QVector3D(50, 0, 0));
    viewer.setBackground(ground);
}

bool settles(KVGamut3DViewer& viewer, const QSize& expected)
{
    return spinUntil([&] { return viewer.isSettled() && viewer.picture().size() == expected; }, 20000);
}

bool screenShows(KVGamut3DViewer& viewer)
{
    return spinUntil([&] { return viewer.isSettled() && contains(screenshot(), viewer.picture()); }, 20000);
}

bool isAtRest(KVGamut3DViewer& viewer)
{
    return spinUntil(
        [&] {
            auto& gl = *viewer.findChild<KVGLWidget*>();
            QSignalSpy swaps(&gl, &QOpenGLWindow::frameSwapped);
            spinFor(100);
            return swaps.isEmpty() && QAbstractEventDispatcher::instance()->registeredTimers(&gl).isEmpty();
        },
        20000);
}

struct TopLevel
{
    TopLevel()
    {
        fill(viewer);
        viewer.resize(size);
        viewer.show();
    }
    KVGamut3DViewer viewer;
};

/// A viewer in the widgets of a host.
struct Embedded
{
    Embedded()
    {
        fill(viewer);
        container->setFixedSize(size);
        tabs.addTab(container, QStringLiteral("gamut"));
        tabs.addTab(new QWidget, QStringLiteral("other"));
        main.setCentralWidget(&tabs);
        main.show();
    }
    ~Embedded() { main.takeCentralWidget(); }
    QMainWindow main;
    QTabWidget tabs;
    KVGamut3DViewer& viewer = *new KVGamut3DViewer; // the container owns it
    QWidget* container = QWidget::createWindowContainer(&viewer);
};

} // namespace

TEST(WaylandScreen, showsNoViewerAtFirst)
{
    EXPECT_TRUE(QGuiApplication::platformName().startsWith(QStringLiteral("wayland")));
    EXPECT_FALSE(screenshot().isNull());
    EXPECT_FALSE(isOnScreen(ground));
}

TEST(WaylandTopLevel, showsThePictureOfTheViewer)
{
    TopLevel host;
    ASSERT_TRUE(settles(host.viewer, size));
    EXPECT_TRUE(screenShows(host.viewer));
}

TEST(WaylandTopLevel, showsChanges)
{
    TopLevel host;
    ASSERT_TRUE(settles(host.viewer, size));
    host.viewer.removeGamut(QStringLiteral("g"));
    host.viewer.setDisplayGrid(false);
    EXPECT_TRUE(screenShows(host.viewer));
    QSignalSpy moves(&host.viewer, &KVGamut3DViewer::moveFinished);
    host.viewer.resetCamera(KVGamut3DViewer::Top, 100);
    EXPECT_TRUE(spinUntil([&moves] { return moves.count() == 1; }, 20000));
    EXPECT_TRUE(screenShows(host.viewer));
}

TEST(WaylandTopLevel, followsAResize)
{
    TopLevel host;
    ASSERT_TRUE(settles(host.viewer, size));
    host.viewer.resize(400, 200);
    EXPECT_TRUE(settles(host.viewer, QSize(400, 200)));
    EXPECT_TRUE(screenShows(host.viewer));
}

TEST(WaylandTopLevel, comesBackAfterHiding)
{
    TopLevel host;
    ASSERT_TRUE(settles(host.viewer, size));
    ASSERT_TRUE(screenShows(host.viewer));
    host.viewer.hide();
    EXPECT_TRUE(isAtRest(host.viewer));
    EXPECT_TRUE(spinUntil([] { return !isOnScreen(ground); }, 20000));
    host.viewer.setDisplayGrid(false);
    host.viewer.show();
    EXPECT_TRUE(screenShows(host.viewer));
}

TEST(WaylandEmbedded, showsThePictureOfTheViewer)
{
    Embedded host;
    ASSERT_TRUE(settles(host.viewer, size));
    EXPECT_TRUE(screenShows(host.viewer));
}

TEST(WaylandEmbedded, followsAResize)
{
    Embedded host;
    ASSERT_TRUE(settles(host.viewer, size));
    host.container->setFixedSize(400, 200);
    EXPECT_TRUE(settles(host.viewer, QSize(400, 200)));
    EXPECT_TRUE(screenShows(host.viewer));
}

TEST(WaylandEmbedded, comesBackFromAnotherTab)
{
    Embedded host;
    ASSERT_TRUE(settles(host.viewer, size));
    ASSERT_TRUE(screenShows(host.viewer));
    host.tabs.setCurrentIndex(1);
    EXPECT_TRUE(isAtRest(host.viewer));
    EXPECT_TRUE(spinUntil([] { return !isOnScreen(ground); }, 20000));
    host.viewer.setDisplayGrid(false);
    host.tabs.setCurrentIndex(0);
    EXPECT_TRUE(screenShows(host.viewer));
}

TEST(WaylandEmbedded, comesBackWithTheHiddenMainWindow)
{
    Embedded host;
    ASSERT_TRUE(settles(host.viewer, size));
    host.main.hide();
    EXPECT_TRUE(isAtRest(host.viewer));
    host.viewer.setDisplayGrid(false);
    host.main.show();
    EXPECT_TRUE(screenShows(host.viewer));
}

TEST(WaylandEmbedded, drawsNothingInAMinimisedMainWindow)
{
    Embedded host;
    ASSERT_TRUE(settles(host.viewer, size));
    host.main.showMinimized();
    EXPECT_TRUE(spinUntil([] { return !isOnScreen(ground); }, 20000));
    QSignalSpy swaps(host.viewer.findChild<KVGLWidget*>(), &QOpenGLWindow::frameSwapped);
    host.viewer.setCamera(QVector3D(200, 100, 300), 600, QVector3D(50, 0, 0));
    spinFor(1000);
    EXPECT_LE(swaps.count(), 1); // Qt notices when the compositor does not ask for the next frame
}

TEST(WaylandEmbedded, swapsNothingWhileIdle)
{
    Embedded host;
    ASSERT_TRUE(settles(host.viewer, size));
    spinFor(500);
    QSignalSpy swaps(host.viewer.findChild<KVGLWidget*>(), &QOpenGLWindow::frameSwapped);
    spinFor(300);
    EXPECT_EQ(swaps.count(), 0);
    host.viewer.setDisplayGrid(false);
    EXPECT_TRUE(screenShows(host.viewer));
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv); // widgets need it
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
