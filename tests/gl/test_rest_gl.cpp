// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/ShownViewer.h"
#include "support/WindowManager.h"

#include <gtest/gtest.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QProcess>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>

#include <functional>

using kvtest::spinFor;
using kvtest::spinUntil;

// A viewer runs nothing while it cannot be seen, and goes on by itself when it can be seen again.

namespace {

const QSize size(200, 150);

bool hasTimer(KVGLWidget& widget)
{
    return !QAbstractEventDispatcher::instance()->registeredTimers(&widget).isEmpty();
}

/// A viewer two levels below a window of the host, on a display with a window manager.
class Rest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(manager.start());
        host.resize(300, 250);
        middle.setGeometry(10, 10, 250, 200);
        viewer->setGeometry(10, 10, size.width(), size.height());
        viewer->show();
        middle.show();
        host.show();
        ASSERT_TRUE(settles());
    }

    void TearDown() override { delete viewer; }

    KVGLWidget& widget() { return *viewer->findChild<KVGLWidget*>(); }
    bool settles()
    {
        return spinUntil([this] { return viewer->isSettled() && !viewer->picture().isNull(); });
    }
    bool isBackground(const QColor& color)
    {
        return viewer->isSettled() && viewer->picture().pixelColor(1, 1) == color;
    }

    /// Waits until the window manager has done its work and nothing runs any more.
    bool comesToRest()
    {
        return spinUntil([this] {
            QSignalSpy swaps(&widget(), &QOpenGLWindow::frameSwapped);
            spinFor(100);
            return swaps.isEmpty() && !hasTimer(widget());
        });
    }

    /// Changes what is shown while the viewer cannot be seen: nothing happens.
    void expectRest()
    {
        QSignalSpy swaps(&widget(), &QOpenGLWindow::frameSwapped);
        const int drawn = widget().drawnFrames();
        viewer->setBackground(Qt::darkCyan);
        viewer->setCamera(QVector3D(210, -250, -330), 30, QVector3D(50, 0, 0));
        spinFor(300);
        EXPECT_EQ(swaps.count(), 0);
        EXPECT_EQ(widget().drawnFrames(), drawn);
        EXPECT_FALSE(hasTimer(widget()));
        EXPECT_EQ(moves.count(), 0);
        EXPECT_FALSE(viewer->isSettled());
    }

    void expectToGoOn()
    {
        EXPECT_TRUE(spinUntil([this] { return isBackground(QColor(Qt::darkCyan).toRgb()); }));
        EXPECT_EQ(moves.count(), 1);
        viewer->setBackground(Qt::darkRed);
        EXPECT_TRUE(spinUntil([this] { return isBackground(QColor(Qt::darkRed).toRgb()); }));
    }

    kvtest::WindowManager manager;
    QWindow host;
    QWindow middle{&host};
    KVGamut3DViewer* viewer = new KVGamut3DViewer(&middle);
    QSignalSpy moves{viewer, &KVGamut3DViewer::moveFinished};
};

struct Way
{
    const char* name;
    std::function<void(QWindow& host, QWindow& middle, KVGamut3DViewer&)> away;
    std::function<void(QWindow& host, QWindow& middle, KVGamut3DViewer&)> back;
};

void showDesktop(const char* number)
{
    QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("set_desktop"), QLatin1String(number)});
}

class RestByTheHost : public Rest, public testing::WithParamInterface<Way>
{
};

} // namespace

TEST_P(RestByTheHost, runsNothingUntilTheViewerIsSeenAgain)
{
    GetParam().away(host, middle, *viewer);
    ASSERT_TRUE(comesToRest());
    expectRest();
    GetParam().back(host, middle, *viewer);
    expectToGoOn();
}

INSTANTIATE_TEST_SUITE_P(
    , RestByTheHost,
    testing::Values(Way{"viewerHidden", [](QWindow&, QWindow&, KVGamut3DViewer& v) { v.hide(); },
                        [](QWindow&, QWindow&, KVGamut3DViewer& v) { v.show(); }},
                    Way{"parentHidden", [](QWindow&, QWindow& middle, KVGamut3DViewer&) { middle.hide(); },
                        [](QWindow&, QWindow& middle, KVGamut3DViewer&) { middle.show(); }},
                    Way{"topLevelHidden", [](QWindow& host, QWindow&, KVGamut3DViewer&) { host.hide(); },
                        [](QWindow& host, QWindow&, KVGamut3DViewer&) { host.show(); }},
                    Way{"topLevelClosed", [](QWindow& host, QWindow&, KVGamut3DViewer&) { host.close(); },
                        [](QWindow& host, QWindow& middle, KVGamut3DViewer& v) {
                            host.show();
                            middle.show(); // Qt hides the windows inside a window that is closed
                            v.show();
                        }},
                    Way{"topLevelMinimised",
                        [](QWindow& host, QWindow&, KVGamut3DViewer&) { host.showMinimized(); },
                        [](QWindow& host, QWindow&, KVGamut3DViewer&) { host.showNormal(); }},
                    Way{"otherDesktop", [](QWindow&, QWindow&, KVGamut3DViewer&) { showDesktop("1"); },
                        [](QWindow&, QWindow&, KVGamut3DViewer&) { showDesktop("0"); }}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(Rest, endsWhenTheViewerMovesIntoAVisibleWindow)
{
    QWindow other;
    other.resize(300, 250);
    other.show();
    host.hide();
    ASSERT_TRUE(comesToRest());
    expectRest();
    viewer->setParent(&other);
    expectToGoOn();
    delete viewer;
    viewer = nullptr;
}

TEST_F(Rest, endsWhenAWindowAboveMovesIntoAVisibleWindow)
{
    QWindow other;
    other.resize(300, 250);
    other.show();
    host.hide();
    ASSERT_TRUE(comesToRest());
    expectRest();
    middle.setParent(&other);
    expectToGoOn();
    middle.setParent(&host);
}

TEST_F(Rest, followsTheViewerIntoAHiddenWindow)
{
    auto other = std::make_unique<QWindow>();
    other->resize(300, 250);
    viewer->setParent(other.get());
    ASSERT_TRUE(comesToRest());
    expectRest();
    host.hide(); // the window that it has left
    host.show();
    ASSERT_TRUE(comesToRest());
    other->show();
    expectToGoOn();
    viewer->setParent(&middle);
    other.reset();
    viewer->setBackground(Qt::darkGreen);
    EXPECT_TRUE(spinUntil([this] { return isBackground(QColor(Qt::darkGreen).toRgb()); }));
}

TEST_F(Rest, endsWithTheViewerWhenItsWindowIsDestroyed)
{
    auto other = std::make_unique<QWindow>();
    QPointer<KVGamut3DViewer> child = new KVGamut3DViewer(other.get());
    child->resize(size);
    child->show();
    other->resize(300, 250);
    other->show();
    ASSERT_TRUE(spinUntil([&child] { return child->isSettled(); }));
    other->hide();
    spinFor(200);
    other.reset();
    EXPECT_TRUE(child.isNull());
    spinFor(50);
}

TEST_F(Rest, holdsForAContainerInAMinimisedMainWindow)
{
    QMainWindow main;
    auto* contained = new KVGamut3DViewer;
    main.setCentralWidget(QWidget::createWindowContainer(contained));
    main.resize(250, 200);
    main.show();
    ASSERT_TRUE(spinUntil([contained] { return contained->isSettled(); }));
    auto& gl = *contained->findChild<KVGLWidget*>();
    main.showMinimized();
    ASSERT_TRUE(spinUntil([&gl] { return !hasTimer(gl); }));
    QSignalSpy swaps(&gl, &QOpenGLWindow::frameSwapped);
    contained->setBackground(Qt::darkCyan);
    spinFor(300);
    EXPECT_EQ(swaps.count(), 0);
    main.showNormal();
    EXPECT_TRUE(spinUntil([contained] {
        return contained->isSettled() &&
               contained->picture().pixelColor(1, 1) == QColor(Qt::darkCyan).toRgb();
    }));
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv); // widgets need it
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
