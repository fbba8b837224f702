// SPDX-License-Identifier: Apache-2.0
#include "GamutViewCase.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

using kvtest::id;
using kvtest::other;

const KVCamera someCamera{{300.0f, 100.0f, -200.0f}, {50.0f, 10.0f, 5.0f}, 40.0f, false};

class GamutViewCamera : public GamutViewCase
{
};

QList<QVector3D> someBody()
{
    return {{0, 0, 0}, {100, 0, 0}, {50, 80, 10}, {60, -70, 40}, {40, 10, -90}};
}

/// Tangent of the maximum angle between the line of sight and a position, divided by the tangent at the edge
/// of the view: above 1 means outside the view.
double reach(const KVCamera& camera, const QList<QVector3D>& positions, double aspect)
{
    const QVector3D forward = (camera.interestPoint - camera.position).normalized();
    const QVector3D right = QVector3D::crossProduct(forward, QVector3D(1, 0, 0)).normalized();
    const QVector3D up = QVector3D::crossProduct(right, forward);
    const double tangent = std::tan(static_cast<double>(camera.viewingAngle) * std::numbers::pi / 360.0);
    double most = 0.0;
    for (const QVector3D& p : positions) {
        const QVector3D v = p - camera.position;
        const double depth = QVector3D::dotProduct(v, forward);
        most = std::max({most, std::abs(QVector3D::dotProduct(v, right)) / (depth * tangent * aspect),
                         std::abs(QVector3D::dotProduct(v, up)) / (depth * tangent)});
    }
    return most;
}

} // namespace

TEST_F(GamutViewCamera, theWholeCameraIsSetAndRead)
{
    KVCamera camera = someCamera;
    camera.orthogonal = true;
    view->setCamera(camera);
    EXPECT_EQ(view->camera(), camera);
    EXPECT_EQ(viewer->camera(), camera.position);
    EXPECT_EQ(viewer->interestPt(), camera.interestPoint);
    EXPECT_EQ(viewer->viewingAngle(), 40.0f);
    EXPECT_TRUE(viewer->orthogonalProjection());
}

TEST_F(GamutViewCamera, aCameraThatIsNotValidIsIgnored)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN(),
                    inf = std::numeric_limits<float>::infinity();
    view->setCamera(someCamera);
    QList<KVCamera> cameras(9, someCamera);
    cameras[0].position.setX(nan);
    cameras[1].position.setZ(inf);
    cameras[2].interestPoint.setY(nan);
    cameras[3].interestPoint = cameras[3].position;
    const float angles[] = {0.0f, -30.0f, 400.0f, 0.99f, nan};
    for (int i = 0; i < 5; ++i)
        cameras[4 + i].viewingAngle = angles[i];
    for (const KVCamera& camera : std::as_const(cameras)) {
        EXPECT_FALSE(camera.isValid());
        view->setCamera(camera);
        EXPECT_EQ(view->camera(), someCamera);
        view->setCamera(camera, 100);
        EXPECT_EQ(view->camera(), someCamera);
        KVViewState state = view->state();
        state.camera = camera;
        state.grid = false;
        view->setState(state); // the rest is applied
        EXPECT_EQ(view->camera(), someCamera);
        EXPECT_FALSE(viewer->displayGrid());
        viewer->setDisplayGrid(true);
    }
}

TEST_F(GamutViewCamera, theLimitsOfTheViewingAngleAreValid)
{
    EXPECT_TRUE(KVCamera().isValid());
    for (const float angle : {1.0f, 150.0f}) {
        KVCamera camera = someCamera;
        camera.viewingAngle = angle;
        EXPECT_TRUE(camera.isValid());
        view->setCamera(camera);
        EXPECT_EQ(viewer->viewingAngle(), angle);
    }
}

TEST_F(GamutViewCamera, theViewerAcceptsEveryCamera)
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float angle : {0.0f, -30.0f, 400.0f}) {
        viewer->setViewingAngle(angle, 0);
        EXPECT_EQ(viewer->viewingAngle(), angle);
    }
    viewer->setCamera({10, nan, 0}, 0, {50, 0, 0});
    EXPECT_TRUE(std::isnan(viewer->camera().y()));
    EXPECT_FALSE(view->camera().isValid());
}

TEST_F(GamutViewCamera, framingReplacesACameraThatIsNotValid)
{
    KVCamera broken = someCamera;
    broken.viewingAngle = 0.0f;
    EXPECT_EQ(KVGamutView::framing(broken, someBody(), 1.5f),
              KVGamutView::framing(KVCamera(), someBody(), 1.5f));
    for (const float aspect : {0.0f, -1.0f, std::numeric_limits<float>::quiet_NaN()})
        EXPECT_TRUE(KVGamutView::framing(someCamera, someBody(), aspect).isValid());
}

TEST_F(GamutViewCamera, aDurationMakesAMove)
{
    const KVCamera before = view->camera();
    view->setCamera(someCamera, 10000);
    EXPECT_TRUE(widget().isMoving());
    EXPECT_EQ(view->camera(), before);
    view->setCamera(someCamera);
    EXPECT_FALSE(widget().isMoving());
    EXPECT_EQ(view->camera(), someCamera);
}

TEST_F(GamutViewCamera, framedPositionsAreInTheViewAndFillIt)
{
    for (const float aspect : {0.5f, 1.0f, 1.7f}) {
        const KVCamera framed = KVGamutView::framing(someCamera, someBody(), aspect);
        const double fills = reach(framed, someBody(), static_cast<double>(aspect));
        EXPECT_LE(fills, 1.0) << aspect;
        EXPECT_GT(fills, 0.5) << aspect;
        EXPECT_EQ(framed.viewingAngle, someCamera.viewingAngle);
        const QVector3D before = (someCamera.interestPoint - someCamera.position).normalized();
        const QVector3D after = (framed.interestPoint - framed.position).normalized();
        EXPECT_NEAR(QVector3D::dotProduct(before, after), 1.0, 1e-5) << "the same line of sight";
    }
}

TEST_F(GamutViewCamera, framingNothingKeepsTheCamera)
{
    EXPECT_EQ(KVGamutView::framing(someCamera, {}, 1.0f), someCamera);
    view->setCamera(someCamera);
    view->frame();
    view->frame({id});
    EXPECT_EQ(view->camera(), someCamera);
}

TEST_F(GamutViewCamera, framingASinglePointKeepsADistance)
{
    const KVCamera framed = KVGamutView::framing(someCamera, {{10, 20, 30}}, 1.0f);
    EXPECT_EQ(framed.interestPoint, QVector3D(10, 20, 30));
    EXPECT_GT((framed.position - framed.interestPoint).length(), 1.1f);
}

TEST_F(GamutViewCamera, frameShowsTheVisibleGamuts)
{
    showAndWait(id);
    auto tall = fakevelmora::tetrahedron(QStringLiteral("B"));
    for (auto& face : tall.faces)
        for (auto& corner : face)
            corner.lab[1] += 500.0f;
    showAndWait(other, computed(tall));
    viewer->resize(400, 200);
    viewer->setGamutVisible(other, false);

    const auto positionsOf = [this](const QString& gamut) {
        QList<QVector3D> positions;
        for (const auto& face : viewer->faceList(gamut))
            positions += face;
        return positions;
    };
    const KVCamera before = view->camera();
    view->frame();
    EXPECT_EQ(view->camera(), KVGamutView::framing(before, positionsOf(id), 2.0f));
    view->setCamera(before);
    view->frame({other});
    EXPECT_EQ(view->camera(), KVGamutView::framing(before, positionsOf(other), 2.0f))
        << "named, so hidden or not";
    view->setCamera(before);
    viewer->setGamutVisible(other, true);
    view->frame();
    EXPECT_EQ(view->camera(), KVGamutView::framing(before, positionsOf(id) + positionsOf(other), 2.0f));
}

TEST_F(GamutViewCamera, changesInOneTurnAreReportedOnce)
{
    QSignalSpy changed(view.get(), &KVGamutView::cameraChanged);
    settle();
    EXPECT_TRUE(changed.isEmpty()) << "nothing changed since the viewer was made";
    viewer->setCamera({200, 10, 20}, 0, {50, 0, 0});
    viewer->setViewingAngle(50.0f, 0);
    EXPECT_TRUE(changed.isEmpty()) << "from the event loop";
    settle();
    EXPECT_EQ(changed.size(), 1);
    viewer->setViewingAngle(50.0f, 0);
    settle();
    EXPECT_EQ(changed.size(), 1) << "nothing changed";
}

TEST_F(GamutViewCamera, wheelAndDragsAreReported)
{
    QSignalSpy changed(view.get(), &KVGamutView::cameraChanged);
    widget().resize(300, 200);
    QWheelEvent wheel({}, {}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(viewer.get(), &wheel);
    settle();
    EXPECT_EQ(changed.size(), 1);
    QMouseEvent drag(QEvent::MouseMove, {20, 30}, {20, 30}, Qt::NoButton, Qt::RightButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewer.get(), &drag);
    settle();
    EXPECT_EQ(changed.size(), 2);
}

TEST_F(GamutViewCamera, aSlotOfCameraChangedMayDestroyTheViewer)
{
    QObject::connect(view.get(), &KVGamutView::cameraChanged, view.get(), [this] { viewer.reset(); });
    viewer->setViewingAngle(50.0f, 0);
    settle();
    EXPECT_FALSE(viewer);
    EXPECT_EQ(view->camera(), KVCamera());
}
