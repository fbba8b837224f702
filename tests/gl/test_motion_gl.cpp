// SPDX-License-Identifier: Apache-2.0
#include "support/ShownViewer.h"

#include <KVGamutView.h>

#include <glwindow/ContextScope.h>
#include <scene/Generators.h>

#include <gtest/gtest.h>

#include <QtCore/QThread>
#include <QtGui/QScreen>
#include <QtTest/QSignalSpy>

using kvtest::ShownViewer;
using kvtest::spinUntil;

namespace {

constexpr int longMs = 100000;

GeometryData square(const QColor& color)
{
    const auto corner = [&](float x, float y) { return ColoredPoint{color, QVector3D(y, -x, 0)}; };
    return kvTriangles({ColoredTriangle{corner(-80, -80), corner(80, -80), corner(80, 80)},
                        ColoredTriangle{corner(-80, -80), corner(80, 80), corner(-80, 80)}});
}

/// A viewer with a red square whose coarse triangles are green. Each frame takes at least @p frameMs.
struct Squares : ShownViewer
{
    explicit Squares(unsigned long frameMs)
    {
        viewer.setDisplayAxes(false);
        viewer.setDisplayGrid(false);
        viewer.setCamera(QVector3D(0, 0, -350), 0, QVector3D(0, 0, 0));
        widget().setOverlaySource([frameMs](const QMatrix4x4&, const QSize&) {
            QThread::msleep(frameMs);
            return Overlay();
        });
        {
            const ContextScope scope(&widget());
            const QSharedPointer<KV3DObject> object(new KV3DObject(QStringLiteral("Square")));
            object->initializeGL(widget().context());
            object->setGeometry(square(Qt::red));
            object->setAmbientStrength(1.0f);
            object->setCoarseVertices(square(Qt::green).vertices);
            root().addChild(object);
        }
        settle();
    }

    /// The colour in the middle of the window, as the screen shows it.
    QColor onScreen()
    {
        const QPoint middle = viewer.mapToGlobal(QPoint(viewer.width() / 2, viewer.height() / 2));
        return viewer.screen()->grabWindow(0, middle.x(), middle.y(), 1, 1).toImage().pixelColor(0, 0);
    }
    bool shows(const QColor& color)
    {
        return spinUntil([&] { return onScreen() == color; });
    }
    /// Begins a movement during which the square stays in the middle.
    void move() { viewer.setCamera(QVector3D(30, 0, -350), longMs, QVector3D(0, 0, 0)); }
    void stop() { viewer.setCamera(QVector3D(0, 0, -350), 0, QVector3D(0, 0, 0)); }
};

const QColor red(255, 0, 0), green(0, 255, 0);

} // namespace

TEST(MovingView, showsCoarseSurfacesWhenFramesAreSlowAndTheExactOnesAtRest)
{
    Squares view(60);
    view.widget().setCoarseWhileMoving(true);
    ASSERT_TRUE(view.settle());
    ASSERT_TRUE(view.shows(red));
    view.move();
    ASSERT_TRUE(view.shows(green));
    EXPECT_FALSE(view.viewer.isSettled());
    view.stop();
    ASSERT_TRUE(view.settle());
    EXPECT_TRUE(view.shows(red));
}

TEST(MovingView, isNotUpToDateBeforeTheExactSurfacesAreShown)
{
    Squares view(60);
    view.widget().setCoarseWhileMoving(true);
    KVGamutView host(&view.viewer);
    ASSERT_TRUE(view.settle());
    view.move();
    ASSERT_TRUE(view.shows(green));
    QColor whenSettled;
    QObject::connect(&host, &KVGamutView::settled, &host, [&] { whenSettled = view.onScreen(); });
    view.stop();
    ASSERT_TRUE(spinUntil([&] { return whenSettled.isValid(); }));
    EXPECT_EQ(whenSettled, red);
}

TEST(MovingView, picturesShowTheExactSurfaces)
{
    Squares view(60);
    view.widget().setCoarseWhileMoving(true);
    ASSERT_TRUE(view.settle());
    view.move();
    ASSERT_TRUE(view.shows(green));
    const QImage small = view.viewer.picture(), large = view.viewer.picture(QSize(400, 300));
    EXPECT_EQ(small.size(), view.viewer.size() * view.viewer.devicePixelRatio());
    EXPECT_EQ(small.pixelColor(small.rect().center()), red);
    EXPECT_EQ(large.pixelColor(large.rect().center()), red);
    EXPECT_TRUE(view.shows(green)) << "the movement goes on";
}

TEST(MovingView, draggingASlowViewShowsCoarseSurfaces)
{
    Squares view(60);
    view.widget().setCoarseWhileMoving(true);
    ASSERT_TRUE(view.settle());
    QTest::mousePress(&view.viewer, Qt::LeftButton, {}, QPoint(100, 75));
    int x = 0;
    EXPECT_TRUE(spinUntil([&] {
        x = (x + 1) % 4;
        QTest::mouseMove(&view.viewer, QPoint(100 + x, 75));
        return view.onScreen() == green;
    }));
    QTest::mouseRelease(&view.viewer, Qt::LeftButton, {}, QPoint(100, 75));
    ASSERT_TRUE(view.settle());
    EXPECT_TRUE(view.shows(red));
}

TEST(MovingView, isAlwaysExactUnlessTheHostAllowsOtherwise)
{
    Squares view(60);
    EXPECT_FALSE(KVGamutView(&view.viewer).coarseWhileMoving());
    view.move();
    const int before = view.widget().drawnFrames();
    ASSERT_TRUE(spinUntil([&] {
        EXPECT_NE(view.onScreen(), green);
        return view.widget().drawnFrames() > before + 5;
    }));
    EXPECT_EQ(view.onScreen(), red);
}

TEST(MovingView, becomesExactWhenTheHostWithdrawsItsPermission)
{
    Squares view(60);
    KVGamutView host(&view.viewer);
    host.setCoarseWhileMoving(true);
    EXPECT_TRUE(host.coarseWhileMoving());
    EXPECT_TRUE(KVGamutView(&view.viewer).coarseWhileMoving()) << "shared by all views";
    ASSERT_TRUE(view.settle());
    view.move();
    ASSERT_TRUE(view.shows(green));
    host.setCoarseWhileMoving(false);
    EXPECT_TRUE(view.shows(red));
}

TEST(MovingView, gamutsGetCoarseSurfacesOnceFramesAreSlow)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    KVGamutView view(&shown.viewer);
    const auto load = [&](const QString& id) {
        bool done = false;
        view.load(id, KVLoadRequest::fromFile(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")), &view,
                  [&](const std::optional<KVProblem>& problem) { done = !problem; });
        return spinUntil([&] { return done; });
    };
    const auto front = [&](const QString& id) {
        return shown.root().childAt(
            {QStringLiteral("Profiles"), id, QStringLiteral("Gamut"), QStringLiteral("Front")});
    };
    ASSERT_TRUE(load(QStringLiteral("A")));
    ASSERT_TRUE(shown.settle());
    EXPECT_FALSE(front(QStringLiteral("A"))->hasCoarseVertices()) << "nothing asked for them";

    shown.widget().setOverlaySource([](const QMatrix4x4&, const QSize&) {
        QThread::msleep(60);
        return Overlay();
    });
    view.setCoarseWhileMoving(true);
    EXPECT_TRUE(spinUntil([&] { return front(QStringLiteral("A"))->hasCoarseVertices(); }));
    ASSERT_TRUE(load(QStringLiteral("B"))); // later ones, too
    EXPECT_TRUE(spinUntil([&] { return front(QStringLiteral("B"))->hasCoarseVertices(); }));
    ASSERT_TRUE(load(QStringLiteral("A"))); // and after a reload
    EXPECT_TRUE(spinUntil([&] { return front(QStringLiteral("A"))->hasCoarseVertices(); }));

    for (const char* id : {"A", "B"})
        shown.viewer.changeGamutAlpha(QLatin1String(id), 0.5f, 0);
    ASSERT_TRUE(shown.settle());
    const qsizetype exact = shown.root().sortedVertices().size();
    shown.viewer.setCamera(QVector3D(100, 50, -350), longMs, QVector3D(50, 0, 0));
    EXPECT_TRUE(spinUntil([&] {
        const qsizetype drawn = shown.root().sortedVertices().size();
        return drawn > 0 && drawn <= qsizetype(2) * 800 * 45;
    })) << "of "
        << exact / 45 << " triangles";
}
