// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/ShownViewer.h"

#include <gmock/gmock.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QTabWidget>

using kvtest::spinFor;
using kvtest::spinUntil;

// A viewer embedded in widgets by QWidget::createWindowContainer().

namespace {

const QString g = QStringLiteral("g");

/// A main window with a viewer in a dock and a second dock.
class DockedViewer : public testing::Test
{
protected:
    void SetUp() override
    {
        viewer = new KVGamut3DViewer; // the container owns it
        viewer->addMarkerSet(QStringLiteral("set"), KVGamut3DViewer::Sphere,
                             {{Qt::red, QVector3D(20, -60, 0)}, {Qt::blue, QVector3D(80, 60, 0)}}, 40, 0.5f);
        viewer->setCamera(QVector3D(210, -250, -330), 0, QVector3D(50, 0, 0));
        container = QWidget::createWindowContainer(viewer);
        container->setFixedSize(200, 150);
        dock.setWidget(container);
        dock.setWindowTitle(QStringLiteral("gamuts"));
        other.setWidget(new QWidget);
        other.setWindowTitle(QStringLiteral("other"));
        host.addDockWidget(Qt::LeftDockWidgetArea, &dock);
        host.addDockWidget(Qt::RightDockWidgetArea, &other);
        host.resize(600, 400);
        host.show();
        ASSERT_TRUE(spinUntil([this] { return isDrawn(); }));
        expected = viewer->picture();
        ASSERT_EQ(expected.size(), QSize(200, 150));
        EXPECT_EQ(expected, alone());
    }

    void TearDown() override { delete container; }

    bool isDrawn() const
    {
        return viewer->isSettled() && viewer->size() == QSize(200, 150) && !viewer->picture().isNull();
    }

    /// The picture of a viewer of the same size that is not embedded.
    QImage alone() const
    {
        kvtest::ShownViewer shown(200, 150);
        shown.viewer.addMarkerSet(QStringLiteral("set"), KVGamut3DViewer::Sphere,
                                  {{Qt::red, QVector3D(20, -60, 0)}, {Qt::blue, QVector3D(80, 60, 0)}}, 40,
                                  0.5f);
        shown.viewer.setCamera(QVector3D(210, -250, -330), 0, QVector3D(50, 0, 0));
        return shown.settledPicture();
    }

    /// The viewer shows its picture again and displays changes.
    void expectAlive()
    {
        EXPECT_TRUE(spinUntil([this] { return isDrawn() && viewer->picture() == expected; }));
        viewer->setBackground(Qt::darkCyan);
        EXPECT_TRUE(spinUntil([this] { return isDrawn() && viewer->picture() != expected; }));
        viewer->setBackground(Qt::gray);
        EXPECT_TRUE(spinUntil([this] { return isDrawn() && viewer->picture() == expected; }));
    }

    KVGLWidget& widget() const { return *viewer->findChild<KVGLWidget*>(); }

    int framesIn(int ms)
    {
        int frames = 0;
        const auto connection =
            QObject::connect(&widget(), &QOpenGLWindow::frameSwapped, viewer, [&frames] { ++frames; });
        spinFor(ms);
        QObject::disconnect(connection);
        return frames;
    }

    QMainWindow host;
    QDockWidget dock, other;
    QWidget* container = nullptr;
    KVGamut3DViewer* viewer = nullptr;
    QImage expected;
};

} // namespace

TEST_F(DockedViewer, keepsItsPictureFloatingAndDocked)
{
    dock.setFloating(true);
    dock.move(700, 300);
    expectAlive();
    dock.setFloating(false);
    expectAlive();
    host.addDockWidget(Qt::BottomDockWidgetArea, &dock);
    expectAlive();
}

TEST_F(DockedViewer, drawsNoFramesBehindAnotherTab)
{
    // Qt moves docks behind other tabs out of view without hiding them. Hosts forward visibilityChanged.
    QObject::connect(&dock, &QDockWidget::visibilityChanged, viewer, &QWindow::setVisible);
    host.tabifyDockWidget(&dock, &other);
    other.raise();
    ASSERT_TRUE(spinUntil([this] { return !viewer->isVisible(); }));
    ASSERT_TRUE(spinUntil([this] { return framesIn(100) == 0; })); // frames that were already scheduled
    EXPECT_EQ(framesIn(200), 0);
    viewer->removeMarkerSet(QStringLiteral("set")); // changes made meanwhile must be visible afterwards
    dock.raise();
    EXPECT_TRUE(spinUntil([this] { return isDrawn() && viewer->picture() != expected; }));
    viewer->addMarkerSet(QStringLiteral("set"), KVGamut3DViewer::Sphere,
                         {{Qt::red, QVector3D(20, -60, 0)}, {Qt::blue, QVector3D(80, 60, 0)}}, 40, 0.5f);
    expectAlive();
}

TEST_F(DockedViewer, keepsItsPictureInAnotherWindow)
{
    QMainWindow second;
    second.resize(300, 250);
    second.show();
    second.setCentralWidget(container);
    expectAlive();
    dock.setWidget(second.takeCentralWidget());
    container->show();
    expectAlive();
}

TEST_F(DockedViewer, keepsItsPictureAfterClosingItsDock)
{
    for (int i = 0; i < 3; ++i) {
        dock.close();
        spinFor(30);
        dock.show();
        spinFor(30);
    }
    expectAlive();
}

TEST_F(DockedViewer, loadsWhileItsDockFloatsAndDocks)
{
    int reports = 0;
    for (int i = 0; i < 6; ++i) {
        viewer->load(
            g, {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}},
            [&reports](QString, bool ok) { reports += ok; });
        viewer->setCamera(QVector3D(-200, 250, 300), 50, QVector3D(50, 0, 0));
        dock.setFloating(i % 2 == 0);
        spinFor(20);
    }
    ASSERT_TRUE(spinUntil([&reports] { return reports > 0; }));
    spinFor(100);
    viewer->removeGamut(g);
    viewer->setCamera(QVector3D(210, -250, -330), 0, QVector3D(50, 0, 0));
    expectAlive();
}

TEST_F(DockedViewer, reportsClicksAtTheirPositionWhenFloating)
{
    dock.setFloating(true);
    ASSERT_TRUE(spinUntil([this] { return isDrawn(); }));
    QList<QPoint> clicks;
    QObject::connect(viewer, &KVGamut3DViewer::click, viewer,
                     [&clicks](QPoint p, QVector3D, QVector3D) { clicks.append(p); });
    QTest::mouseClick(&widget(), Qt::LeftButton, Qt::NoModifier, QPoint(40, 30));
    EXPECT_THAT(clicks, testing::ElementsAre(QPoint(40, 30)));
}

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv); // widgets need it
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
