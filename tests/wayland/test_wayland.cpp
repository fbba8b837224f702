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

/// What the compositor shows. The test fails if there is no screenshot.
QImage screenshot()
{
    const QTemporaryDir folder;
    QProcess tool;
    tool.setWorkingDirectory(folder.path());
    tool.start(QStringLiteral("weston-screenshooter"), {});
    spinUntil([&tool] { return tool.state() == QProcess::NotRunning; });
    const QStringList files = QDir(folder.path()).entryList({QStringLiteral("*.png")});
    if (files.isEmpty()) {
        ADD_FAILURE() << "no screenshot: " << tool.readAllStandardError().constData();
        return {};
    }
    return QImage(folder.filePath(files.first())).convertToFormat(QImage::Format_RGB32);
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

template <typename Condition>
int countPixels(const QImage& image, Condition condition)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += condition(image.pixelColor(x, y));
    }
    return count;
}

bool isGround(const QColor& color)
{
    return color == ground;
}

bool isRed(const QColor& color)
{
    return color.red() > 200 && color.green() < 60 && color.blue() < 60;
}

bool groundIsOnScreen()
{
    return countPixels(screenshot(), isGround) > 0;
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
    EXPECT_FALSE(groundIsOnScreen());
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
    EXPECT_TRUE(spinUntil([] { return !groundIsOnScreen(); }, 20000));
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

// The window behind the picture is painted again, too. Compositors send no frame callbacks for windows that
// are covered by opaque ones, and Qt then takes the window and those inside it as not exposed.
TEST(WaylandEmbedded, showsChangesLongAfterAResize)
{
    Embedded host;
    ASSERT_TRUE(settles(host.viewer, size));
    host.container->setFixedSize(300, 200);
    EXPECT_TRUE(settles(host.viewer, QSize(300, 200)));
    spinFor(500);
    host.viewer.setDisplayGrid(false);
    EXPECT_TRUE(screenShows(host.viewer));
}

TEST(WaylandEmbedded, comesBackFromAnotherTab)
{
    Embedded host;
    ASSERT_TRUE(settles(host.viewer, size));
    ASSERT_TRUE(screenShows(host.viewer));
    host.tabs.setCurrentIndex(1);
    EXPECT_TRUE(isAtRest(host.viewer));
    EXPECT_TRUE(spinUntil([] { return !groundIsOnScreen(); }, 20000));
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
    EXPECT_TRUE(spinUntil([] { return !groundIsOnScreen(); }, 20000));
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

namespace {

/// A process that ends with this object.
class OwnedProcess : public QProcess
{
public:
    ~OwnedProcess() override
    {
        kill();
        waitForFinished();
    }
};

/// The program's window, with a gamut in front of the colour that the tests look for.
class Program
{
public:
    explicit Program(const QString& xDisplay = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_settings.path());
        environment.insert(QStringLiteral("XDG_STATE_HOME"), m_settings.path());
        if (!xDisplay.isEmpty())
            environment.insert(QStringLiteral("DISPLAY"), xDisplay);
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(KV_PROGRAM), {QStringLiteral("view"), QStringLiteral("--background"),
                                                     ground.name(), QStringLiteral("sRGB")});
    }

    /// Whether the background and the red of the gamut are on the screen.
    static bool isOnScreen()
    {
        const QImage screen = screenshot();
        return countPixels(screen, isGround) > 10000 && countPixels(screen, isRed) > 50;
    }

private:
    QTemporaryDir m_settings;
    OwnedProcess m_process;
};

/// An X server in memory, which ends with this object.
class XServer
{
public:
    XServer()
    {
        m_process.start(QStringLiteral("Xvfb"),
                        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                         QStringLiteral("0"), QStringLiteral("1280x1024x24")});
    }

    /// Its display, when it is ready to be used; otherwise empty.
    QString display()
    {
        m_number += m_process.readAllStandardOutput();
        return m_number.endsWith('\n') ? u':' + QString::fromLatin1(m_number.trimmed()) : QString();
    }

private:
    OwnedProcess m_process;
    QByteArray m_number;
};

class WaylandProgram : public testing::Test
{
    // the compositor fades out the window of the test before
    void SetUp() override
    {
        ASSERT_TRUE(spinUntil([] { return !groundIsOnScreen(); }, 20000));
    }
};

} // namespace

TEST_F(WaylandProgram, viewShowsItsGamut)
{
    const Program program;
    EXPECT_TRUE(spinUntil([] { return Program::isOnScreen(); }, 60000));
}

TEST_F(WaylandProgram, viewPrefersWaylandToX)
{
    XServer server;
    ASSERT_TRUE(spinUntil([&server] { return !server.display().isEmpty(); }, 60000));
    const Program program(server.display());
    EXPECT_TRUE(spinUntil([] { return Program::isOnScreen(); }, 60000));
}

TEST_F(WaylandProgram, renderNeedsNeitherWaylandNorX)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/nonexistent")); // no Xvfb
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("picture.png"));
    OwnedProcess program;
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QStringLiteral(KV_PROGRAM),
                  {QStringLiteral("render"), QStringLiteral("--background"), ground.name(),
                   QStringLiteral("sRGB"), QStringLiteral("-o"), file});
    ASSERT_TRUE(program.waitForFinished(-1));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    const QImage picture(file);
    EXPECT_GT(countPixels(picture, isGround), 10000);
    EXPECT_GT(countPixels(picture, isRed), 50);
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv); // widgets need it
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
