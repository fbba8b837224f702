// SPDX-License-Identifier: Apache-2.0
#include "support/ShownViewer.h"

#include <gamut/KV3DGamutObject.h>
#include <glwindow/ContextScope.h>

#include <gtest/gtest.h>

#include <QtGui/QOpenGLFunctions>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>

using kvtest::ShownViewer;
using kvtest::spinFor;
using kvtest::spinUntil;

namespace {

const QString srgbPath = QStringLiteral("/usr/share/color/icc/colord/sRGB.icc");
const QString cmykPath = QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc");

QHash<QString, QVariant> fromPath(const QString& path)
{
    return {{QStringLiteral("ProfilePath"), path}};
}

bool loadAndWait(KVGamut3DViewer& viewer, const QString& id, const QString& path)
{
    int answer = -1;
    viewer.load(id, fromPath(path), [&](QString, bool ok) { answer = ok; });
    return spinUntil([&] { return answer >= 0; }) && answer == 1;
}

/// The pixel of a host position, computed from the camera in double precision.
QPointF projected(const KVGamut3DViewer& viewer, const QVector3D& host)
{
    struct V
    {
        double x, y, z;
    };
    const auto scene = [](const QVector3D& h) { return V{-double(h.y()), double(h.x()), double(h.z())}; };
    const auto minus = [](V a, V b) { return V{a.x - b.x, a.y - b.y, a.z - b.z}; };
    const auto cross = [](V a, V b) {
        return V{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    };
    const auto dot = [](V a, V b) { return a.x * b.x + a.y * b.y + a.z * b.z; };
    const auto unit = [&](V a) {
        const double l = std::sqrt(dot(a, a));
        return V{a.x / l, a.y / l, a.z / l};
    };
    const V eye = scene(viewer.camera()), target = scene(viewer.interestPt());
    const V forward = unit(minus(target, eye));
    const V right = unit(cross(forward, V{0, 1, 0}));
    const V up = cross(right, forward);
    const V p = minus(scene(host), eye);
    const double depth = dot(p, forward);
    const double t = std::tan(viewer.viewingAngle() * 3.14159265358979323846 / 360.0);
    const double aspect = double(viewer.width()) / viewer.height();
    const double x = dot(p, right) / (depth * t * aspect), y = dot(p, up) / (depth * t);
    return QPointF((x + 1) / 2 * viewer.width(), (1 - y) / 2 * viewer.height());
}

QColor pixelAt(const QImage& image, const QPointF& p)
{
    return image.pixelColor(static_cast<int>(p.x()), static_cast<int>(p.y()));
}

const QVector3D oblique(220, -260, -330);

} // namespace

TEST(ViewerGL, loadedProfileShowsItsOwnColours)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    shown.viewer.setCamera(oblique, 0, QVector3D(50, 0, 0));
    ASSERT_TRUE(loadAndWait(shown.viewer, QStringLiteral("srgb"), srgbPath));
    const QImage picture = shown.settledPicture();
    // Published Lab (D50) values of the visible sRGB corners. Just inside each corner the surface has the
    // colour of the corner; just outside the corners on the silhouette is the grey background.
    struct Corner
    {
        QVector3D lab;
        QColor color;
        bool onSilhouette = true;
    };
    const Corner corners[] = {
        {{87.82f, -79.27f, 80.99f}, QColor(0, 255, 0)},
        {{90.67f, -50.67f, -14.96f}, QColor(0, 255, 255), false},
        {{60.17f, 93.54f, -60.50f}, QColor(255, 0, 255)},
        {{29.57f, 68.30f, -112.03f}, QColor(0, 0, 255)},
    };
    const QPointF center = projected(shown.viewer, QVector3D(60, -10, -20));
    for (const Corner& corner : corners) {
        const QPointF at = projected(shown.viewer, corner.lab);
        const QPointF inside = at + (center - at) * 0.04;
        const QColor got = pixelAt(picture, inside);
        EXPECT_NEAR(got.red(), corner.color.red(), 70) << at.x() << " " << at.y();
        EXPECT_NEAR(got.green(), corner.color.green(), 70);
        EXPECT_NEAR(got.blue(), corner.color.blue(), 70);
        if (!corner.onSilhouette)
            continue;
        const QColor outside = pixelAt(picture, at + (at - center) * 0.12);
        EXPECT_LT(outside.saturation(), 30) << at.x() << " " << at.y();
    }
}

TEST(ViewerGL, removedGamutIsNotDrawn)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    shown.viewer.setCamera(oblique, 0, QVector3D(50, 0, 0));
    const QImage before = shown.settledPicture();
    ASSERT_TRUE(loadAndWait(shown.viewer, QStringLiteral("srgb"), srgbPath));
    EXPECT_NE(shown.settledPicture(), before);
    shown.viewer.removeGamut(QStringLiteral("srgb"));
    EXPECT_EQ(shown.settledPicture(), before);

    // the same for a translucent gamut, which is part of the batch
    ASSERT_TRUE(loadAndWait(shown.viewer, QStringLiteral("srgb"), srgbPath));
    shown.viewer.changeGamutAlpha(QStringLiteral("srgb"), 0.5f, 0);
    EXPECT_NE(shown.settledPicture(), before);
    shown.viewer.removeGamut(QStringLiteral("srgb"));
    EXPECT_EQ(shown.settledPicture(), before);
}

TEST(ViewerGL, clearedSetsAreNotDrawn)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    const QImage before = shown.settledPicture();
    const QList<KVGamut3DViewer::ColoredPosition> items{{Qt::red, QVector3D(50, 0, 0)}};
    shown.viewer.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Sphere, items, 20, 0);
    EXPECT_NE(shown.settledPicture(), before);
    shown.viewer.clearMarkerSet();
    EXPECT_EQ(shown.settledPicture(), before);
    shown.viewer.addPointSet(QStringLiteral("p"), items);
    EXPECT_NE(shown.settledPicture(), before);
    shown.viewer.removePointSet(QStringLiteral("p"));
    EXPECT_EQ(shown.settledPicture(), before);
    shown.viewer.addSegmentSet(QStringLiteral("s"),
                               {{{Qt::red, QVector3D(50, -90, 0)}, {Qt::blue, QVector3D(50, 90, 0)}}});
    EXPECT_NE(shown.settledPicture(), before);
    shown.viewer.clearSegmentSet();
    EXPECT_EQ(shown.settledPicture(), before);
}

TEST(ViewerGL, animatedOpacityEndsExactlyAtItsTarget)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    const QString id = QStringLiteral("srgb");
    ASSERT_TRUE(loadAndWait(shown.viewer, id, srgbPath));
    shown.settle();
    bool between = false;
    for (int duration = 300; !between && duration < 30000; duration *= 3) { // a busy machine may skip frames
        shown.viewer.changeGamutAlpha(id, 1.0f, 0);
        shown.viewer.changeGamutAlpha(id, 0.25f, duration);
        ASSERT_TRUE(spinUntil(
            [&] {
                const float now = shown.viewer.gamutAlpha(id);
                between = between || (now < 0.95f && now > 0.3f);
                return now == 0.25f;
            },
            60000));
    }
    EXPECT_TRUE(between);
    EXPECT_TRUE(shown.settle());
    EXPECT_FALSE(shown.root().sortedVertices().isEmpty());

    shown.viewer.changeGamutAlpha(id, 1.0f, 200);
    ASSERT_TRUE(spinUntil([&] { return shown.viewer.gamutAlpha(id) == 1.0f; }));
    EXPECT_TRUE(shown.settle());
    EXPECT_TRUE(shown.root().sortedVertices().isEmpty()); // nothing translucent is left
}

TEST(ViewerGL, gamutLoadedWhileHiddenIsDrawnWhenMadeVisible)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    const QImage empty = shown.settledPicture();
    const QString id = QStringLiteral("srgb");
    int answer = -1;
    shown.viewer.load(id, fromPath(srgbPath), [&](QString, bool ok) { answer = ok; });
    shown.viewer.setGamutVisible(id, false);
    ASSERT_TRUE(spinUntil([&] { return answer == 1; }));
    EXPECT_EQ(shown.settledPicture(), empty);
    ASSERT_TRUE(shown.comeToRest()); // an object that was never drawn must not keep the viewer drawing
    shown.viewer.setGamutVisible(id, true);
    EXPECT_NE(shown.settledPicture(), empty);
}

TEST(ViewerGL, loadCallbackMayRemoveOrReloadItsGamut)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    const QString id = QStringLiteral("g");
    int calls = 0;
    shown.viewer.load(id, fromPath(srgbPath), [&](QString, bool) {
        ++calls;
        shown.viewer.removeGamut(id);
    });
    ASSERT_TRUE(spinUntil([&] { return calls == 1; }));
    EXPECT_FALSE(shown.viewer.exists(id));

    int reloaded = 0;
    shown.viewer.load(id, fromPath(srgbPath), [&](QString, bool) {
        shown.viewer.load(id, fromPath(cmykPath), [&](QString, bool ok) { reloaded = ok ? 1 : -1; });
    });
    ASSERT_TRUE(spinUntil([&] { return reloaded != 0; }));
    EXPECT_EQ(reloaded, 1);
    EXPECT_NEAR(shown.viewer.volume(id), 296508, 600); // of the printer profile, absolute colorimetric
    EXPECT_TRUE(shown.settle());
}

TEST(ViewerGL, shownAndUnshownViewersReturnTheSameValues)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    KVGamut3DViewer hidden;
    const QString id = QStringLiteral("g");
    for (KVGamut3DViewer* viewer : {&shown.viewer, &hidden}) {
        ASSERT_TRUE(loadAndWait(*viewer, id, srgbPath));
        viewer->setClipping(60);
        viewer->changeGamutAlpha(id, 0.5f, 0);
        viewer->changeGamutColor(id, QColor(20, 40, 60));
        viewer->setGamutAmbientStrength(id, 0.25f);
        viewer->setDisplayMode(id, KVGamut3DViewer::Wireframe);
        viewer->setDisplayPrimaries(id, true);
        viewer->addPointSet(QStringLiteral("p"), {{Qt::red, QVector3D(1, 2, 3)}});
        viewer->setPointSetSize(QStringLiteral("p"), 9);
        viewer->setCamera(QVector3D(1, 2, 3), 0, QVector3D(4, 5, 6));
    }
    const KVGamut3DViewer& a = shown.viewer;
    EXPECT_EQ(a.volume(id), hidden.volume(id));
    EXPECT_EQ(a.gamutAlpha(id), hidden.gamutAlpha(id));
    EXPECT_EQ(a.gamutColor(id), hidden.gamutColor(id));
    EXPECT_EQ(a.gamutAmbientStrength(id), hidden.gamutAmbientStrength(id));
    EXPECT_EQ(a.displayMode(id), hidden.displayMode(id));
    EXPECT_EQ(a.displayPrimaries(id), hidden.displayPrimaries(id));
    EXPECT_EQ(a.camera(), hidden.camera());
    EXPECT_EQ(a.params(id), hidden.params(id));
    EXPECT_EQ(shown.viewer.faceList(id), hidden.faceList(id));
    EXPECT_EQ(shown.viewer.isInsideGamut(id, QVector3D(50, 0, 0)),
              hidden.isInsideGamut(id, QVector3D(50, 0, 0)));
    const auto vertices = [&](const KVGamut3DViewer& v) {
        return v.getGamut(id)->childAt({QStringLiteral("Gamut"), QStringLiteral("Front")})->vertices();
    };
    EXPECT_EQ(vertices(a), vertices(hidden));
}

TEST(ViewerGL, viewerFilledBeforeShowDrawsTheSamePicture)
{
    const auto fill = [](KVGamut3DViewer& viewer) {
        viewer.setCamera(oblique, 0, QVector3D(50, 0, 0));
        viewer.setabPlane(true);
        viewer.addSegmentSet(QStringLiteral("s"),
                             {{{Qt::red, QVector3D(50, -90, 0)}, {Qt::blue, QVector3D(50, 90, 0)}}});
        return loadAndWait(viewer, QStringLiteral("g"), srgbPath);
    };
    ShownViewer after;
    ASSERT_TRUE(after.shown);
    ASSERT_TRUE(fill(after.viewer));
    const QImage expected = after.settledPicture();

    KVGamut3DViewer before;
    before.resize(200, 150);
    ASSERT_TRUE(fill(before));
    before.show();
    auto* widget = before.findChild<KVGLWidget*>();
    ASSERT_TRUE(spinUntil([&] { return widget->drawnFrames() > 0 && before.isSettled(); }));
    EXPECT_EQ(before.picture(), expected);
}

TEST(ViewerGL, eventsToViewerOrWindowReachAHandlerOnce)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    for (QWindow* target : {static_cast<QWindow*>(&shown.viewer), static_cast<QWindow*>(&shown.widget())}) {
        shown.viewer.setCamera(QVector3D(50, 0, -300), 0, QVector3D(50, 0, 0));
        const float distance = shown.widget().cameraState().distance();
        QWheelEvent wheel(QPointF(100, 75), target->mapToGlobal(QPointF(100, 75)), {}, QPoint(0, 120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(target, &wheel);
        EXPECT_FLOAT_EQ(shown.widget().cameraState().distance(), distance - 6.0f);

        QSignalSpy clicks(&shown.viewer, &KVGamut3DViewer::click);
        QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, QPoint(30, 40));
        ASSERT_EQ(clicks.count(), 1);
        EXPECT_EQ(clicks[0][0].toPoint(), QPoint(30, 40));
        const auto ray = shown.viewer.rayToPoint(QPoint(30, 40));
        EXPECT_EQ(clicks[0][1].value<QVector3D>(), ray.first);
        EXPECT_EQ(clicks[0][2].value<QVector3D>(), ray.second);

        QSignalSpy finished(&shown.viewer, &KVGamut3DViewer::moveFinished);
        QTest::keyClick(target, Qt::Key_Plus);
        ASSERT_TRUE(spinUntil([&] { return finished.count() > 0; }));
        EXPECT_NEAR(shown.widget().cameraState().distance(), distance - 26.0f, 1e-3);
        spinFor(100);
        EXPECT_EQ(finished.count(), 1);
    }
}

TEST(ViewerGL, mousePressOnTheViewerIsNotForwarded)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    struct Counter : QObject
    {
        int presses = 0, releases = 0;
        bool eventFilter(QObject*, QEvent* e) override
        {
            presses += e->type() == QEvent::MouseButtonPress;
            releases += e->type() == QEvent::MouseButtonRelease;
            return false;
        }
    } counter;
    shown.widget().installEventFilter(&counter);
    QSignalSpy clicks(&shown.viewer, &KVGamut3DViewer::click);
    QTest::mousePress(&shown.viewer, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    EXPECT_EQ(clicks.count(), 0);
    QTest::mouseRelease(&shown.viewer, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_EQ(counter.presses, 0);
    shown.widget().removeEventFilter(&counter);
}

TEST(ViewerGL, planeIsDrawnFromAboveOnly)
{
    ShownViewer shown;
    ASSERT_TRUE(shown.shown);
    shown.viewer.setBackground(QColor(1, 2, 3));
    shown.viewer.setDisplayGrid(false);
    shown.viewer.setDisplayAxes(false);
    shown.viewer.setabPlane(true);
    EXPECT_NE(shown.settledPicture().pixelColor(100, 75), QColor(1, 2, 3));
    shown.viewer.resetCamera(KVGamut3DViewer::Bottom, 0);
    EXPECT_EQ(shown.settledPicture().pixelColor(100, 75), QColor(1, 2, 3));
    shown.viewer.resetCamera(KVGamut3DViewer::Top, 0);
    EXPECT_NE(shown.settledPicture().pixelColor(100, 75), QColor(1, 2, 3));
}

TEST(ViewerGL, twoViewersInOneProcessAreIndependent)
{
    ShownViewer one, two;
    ASSERT_TRUE(one.shown && two.shown);
    ASSERT_TRUE(loadAndWait(one.viewer, QStringLiteral("g"), srgbPath));
    ASSERT_TRUE(loadAndWait(two.viewer, QStringLiteral("g"), srgbPath));
    const QImage first = one.settledPicture(), second = two.settledPicture();
    EXPECT_EQ(first, second);
    one.viewer.removeGamut(QStringLiteral("g"));
    EXPECT_NE(one.settledPicture(), first);
    EXPECT_EQ(two.settledPicture(), second);
}

TEST(ViewerGL, destroyingALoadingViewerCallsNoCallback)
{
    bool called = false;
    {
        ShownViewer shown;
        ASSERT_TRUE(shown.shown);
        shown.viewer.load(QStringLiteral("g"), fromPath(cmykPath), [&](QString, bool) { called = true; });
        shown.viewer.setCamera(oblique, 500, QVector3D());
        spinFor(10);
    }
    spinFor(100);
    EXPECT_FALSE(called);
}
