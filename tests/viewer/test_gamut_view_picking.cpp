// SPDX-License-Identifier: Apache-2.0
#include "GamutViewCase.h"

#include <gamut/Picking.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QStyleHints>
#include <QtTest/QSignalSpy>

#include <cmath>
#include <limits>

namespace {

using kvtest::id;
using kvtest::other;
const QPoint centre(150, 100);
constexpr float nothingCut = 1000000.0f;
const float notANumber = std::numeric_limits<float>::quiet_NaN();

/// Lightnesses at which the vertical line through a*, b* meets the faces, from top to bottom: solved in
/// the ab plane, in double precision.
QList<double> lightnessesAt(const KVGamut::Mesh& mesh, double a, double b)
{
    QList<double> found;
    for (const auto& t : mesh.triangles) {
        const auto& p = mesh.lab[static_cast<std::size_t>(t[0])];
        const auto& q = mesh.lab[static_cast<std::size_t>(t[1])];
        const auto& r = mesh.lab[static_cast<std::size_t>(t[2])];
        const double area = (q.a - p.a) * (r.b - p.b) - (r.a - p.a) * (q.b - p.b);
        const double v = ((a - p.a) * (r.b - p.b) - (r.a - p.a) * (b - p.b)) / area;
        const double w = ((q.a - p.a) * (b - p.b) - (a - p.a) * (q.b - p.b)) / area;
        if (v >= 0 && w >= 0 && v + w <= 1)
            found.append(p.L + v * (q.L - p.L) + w * (r.L - p.L));
    }
    std::sort(found.rbegin(), found.rend());
    return found;
}

class GamutViewPicking : public GamutViewCase
{
protected:
    void SetUp() override
    {
        GamutViewCase::SetUp();
        widget().resize(300, 200);
        lookDownAt(20.0f, -10.0f);
    }

    /// The ray through the middle of the window is the vertical line through a*, b*, from L* 500.
    void lookDownAt(float a, float b) { viewer->setCamera({500, a, b}, 0, {50, a, b}); }

    void send(QEvent::Type type, const QPoint& at, Qt::MouseButton button, Qt::MouseButtons buttons,
              QObject* receiver = nullptr, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent event(type, at, at, button, buttons, modifiers);
        QCoreApplication::sendEvent(receiver ? receiver : &widget(), &event);
    }

    void click(const QPoint& from, const QPoint& to, QObject* receiver = nullptr)
    {
        send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton, receiver);
        if (from != to)
            send(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, receiver);
        send(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton, receiver);
    }

    static KVHit hitOf(const QSignalSpy& spy, qsizetype i) { return spy[i][0].value<KVHit>(); }
};

} // namespace

// --- Pure functions ------------------------------------------------------------------------------

TEST_F(GamutViewPicking, aRayMeetsTheNearestFaceFromBothSides)
{
    const KVGamut::GamutObject gamut = computed();
    const auto lightnesses = lightnessesAt(gamut.mesh(), 20, -10);
    ASSERT_EQ(lightnesses.size(), 2);
    const auto above = kvPickSurface({{500, 20, -10}, {-3, 0, 0}}, gamut.mesh(), nothingCut);
    ASSERT_TRUE(above);
    EXPECT_NEAR(above->lab.x(), lightnesses[0], 1e-3);
    EXPECT_NEAR(above->distance, 500 - lightnesses[0], 1e-3);
    const auto inside = kvPickSurface({{static_cast<float>(lightnesses[0]) - 1.0f, 20, -10}, {-1, 0, 0}},
                                      gamut.mesh(), nothingCut);
    ASSERT_TRUE(inside);
    EXPECT_NEAR(inside->lab.x(), lightnesses[1], 1e-3) << "the inner side";
}

TEST_F(GamutViewPicking, whatIsCutOffIsNotMet)
{
    const KVGamut::GamutObject gamut = computed();
    const auto lightnesses = lightnessesAt(gamut.mesh(), 20, -10);
    const KVRay down{{500, 20, -10}, {-1, 0, 0}};
    const auto clip = static_cast<float>((lightnesses[0] + lightnesses[1]) / 2);
    const auto hit = kvPickSurface(down, gamut.mesh(), clip);
    ASSERT_TRUE(hit);
    EXPECT_NEAR(hit->lab.x(), lightnesses[1], 1e-3);
    EXPECT_FALSE(kvPickSurface(down, gamut.mesh(), static_cast<float>(lightnesses[1]) - 1.0f));
}

TEST_F(GamutViewPicking, raysThatMissOrAreInvalidMeetNothing)
{
    const KVGamut::Mesh mesh = computed().mesh();
    EXPECT_FALSE(kvPickSurface({{500, 200, 0}, {-1, 0, 0}}, mesh, nothingCut));
    EXPECT_FALSE(kvPickSurface({{500, 20, -10}, {1, 0, 0}}, mesh, nothingCut)) << "behind the origin";
    EXPECT_FALSE(kvPickSurface({{500, 20, -10}, {}}, mesh, nothingCut));
    EXPECT_FALSE(kvPickSurface({{notANumber, 20, -10}, {-1, 0, 0}}, mesh, nothingCut));
    EXPECT_FALSE(kvPickSurface({{500, 20, -10}, {-1, 0, 0}}, KVGamut::Mesh(), nothingCut));
}

TEST_F(GamutViewPicking, aRayMeetsTheNearestMarker)
{
    const QList<ColoredPoint> markers{
        {Qt::red, {10, 0, 0}}, {Qt::red, {60, 1, 0}}, {Qt::red, {notANumber, 0, 0}}};
    const auto hit = kvPickMarker({{100, 0, 0}, {-2, 0, 0}}, markers, 2.0f);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->index, 1);
    EXPECT_NEAR(hit->distance, 40.0 - std::sqrt(3.0), 1e-4);
    EXPECT_EQ(kvPickMarker({{100, 0, 0}, {-2, 0, 0}}, markers, 0.5f)->index, 0) << "beside the second";
    EXPECT_FALSE(kvPickMarker({{100, 0, 0}, {2, 0, 0}}, markers, 2.0f)) << "behind the origin";
    EXPECT_FALSE(kvPickMarker({{100, 0, 0}, {}}, markers, 2.0f));
}

// --- The view ------------------------------------------------------------------------------------

TEST_F(GamutViewPicking, aPixelHitsTheSurfaceOfAGamut)
{
    showAndWait(id);
    const double top = lightnessesAt(view->gamut(id).mesh(), 20, -10)[0];
    const KVHit hit = view->hitAt(centre);
    EXPECT_EQ(hit.kind, KVHit::Kind::Gamut);
    EXPECT_EQ(hit.id, id);
    EXPECT_EQ(hit.index, -1);
    EXPECT_NEAR(hit.lab.x(), top, 1e-2);
    EXPECT_NEAR(hit.lab.y(), 20, 1e-2);
    EXPECT_NEAR(hit.lab.z(), -10, 1e-2);
    EXPECT_NEAR(hit.distance, 500 - top, 1e-2);
    EXPECT_EQ(hit.pixel, centre);
    EXPECT_EQ(hit.rayOrigin, viewer->rayToPoint(centre).first);
    EXPECT_EQ(hit.rayDirection, viewer->rayToPoint(centre).second);
    EXPECT_EQ(hit.button, Qt::NoButton);
}

TEST_F(GamutViewPicking, aPixelBesideEverythingHitsNothing)
{
    showAndWait(id);
    lookDownAt(400.0f, 0.0f);
    const KVHit hit = view->hitAt(centre);
    EXPECT_EQ(hit.kind, KVHit::Kind::Nothing);
    EXPECT_TRUE(hit.id.isEmpty());
    EXPECT_EQ(hit.index, -1);
    EXPECT_EQ(hit.distance, 0.0f);
    EXPECT_EQ(hit.rayOrigin, QVector3D(500, 400, 0));
}

TEST_F(GamutViewPicking, onlyVisibleSurfacesAreHit)
{
    showAndWait(id);
    const auto kind = [this] { return view->hitAt(centre).kind; };
    viewer->setGamutVisible(id, false);
    EXPECT_EQ(kind(), KVHit::Kind::Nothing);
    viewer->setGamutVisible(id, true);
    viewer->setDisplayGamut(id, false);
    EXPECT_EQ(kind(), KVHit::Kind::Nothing);
    viewer->setDisplayGamut(id, true);
    viewer->changeGamutAlpha(id, 0.0f, 0);
    EXPECT_EQ(kind(), KVHit::Kind::Nothing);
    viewer->changeGamutAlpha(id, 0.1f, 0);
    EXPECT_EQ(kind(), KVHit::Kind::Gamut);
    viewer->setClipping(1.0f);
    EXPECT_EQ(kind(), KVHit::Kind::Nothing);
    viewer->setClipping(std::numeric_limits<float>::quiet_NaN()); // nothing is cut off
    EXPECT_EQ(kind(), KVHit::Kind::Gamut);
}

TEST_F(GamutViewPicking, theNearestGamutIsHit)
{
    showAndWait(id);
    auto higher = fakevelmora::tetrahedron(QStringLiteral("B"));
    for (auto& face : higher.faces)
        for (auto& corner : face)
            corner.lab[0] += 20.0f;
    showAndWait(other, computed(higher));
    EXPECT_EQ(view->hitAt(centre).id, other);
    viewer->setGamutVisible(other, false);
    EXPECT_EQ(view->hitAt(centre).id, id);
}

TEST_F(GamutViewPicking, markersAndPointsAreHitByNameAndIndex)
{
    showAndWait(id);
    const QString markers = QStringLiteral("patches");
    const QString points = QStringLiteral("dots");
    viewer->addMarkerSet(markers, KVGamut3DViewer::Star, {{Qt::red, {10, 0, 0}}, {Qt::red, {200, 20, -10}}},
                         6.0f, 1.0f);
    KVHit hit = view->hitAt(centre);
    EXPECT_EQ(hit.kind, KVHit::Kind::Marker);
    EXPECT_EQ(hit.id, markers);
    EXPECT_EQ(hit.index, 1);
    EXPECT_EQ(hit.lab, QVector3D(200, 20, -10));
    EXPECT_NEAR(hit.distance, 297.0, 1e-3);

    viewer->addPointSet(points, {{Qt::blue, {300, 20, -10}}});
    hit = view->hitAt(centre);
    EXPECT_EQ(hit.kind, KVHit::Kind::Point);
    EXPECT_EQ(hit.id, points);
    EXPECT_EQ(hit.index, 0);
    EXPECT_NEAR(hit.distance, 198.0, 1e-3) << "point size 4";

    group("Points")->setVisible(false);
    item("Markers", markers)->setVisible(false);
    EXPECT_EQ(view->hitAt(centre).kind, KVHit::Kind::Gamut);
}

TEST_F(GamutViewPicking, aReleaseIsReportedWithWhatItHits)
{
    showAndWait(id);
    QSignalSpy clicked(view.get(), &KVGamutView::clicked);
    send(QEvent::MouseButtonPress, centre, Qt::RightButton, Qt::RightButton);
    send(QEvent::MouseButtonRelease, centre, Qt::RightButton, Qt::NoButton, nullptr,
         Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_TRUE(clicked.isEmpty()) << "from the event loop";
    settle();
    ASSERT_EQ(clicked.size(), 1);
    const KVHit hit = hitOf(clicked, 0);
    EXPECT_EQ(hit.kind, KVHit::Kind::Gamut);
    EXPECT_EQ(hit.id, id);
    EXPECT_EQ(hit.button, Qt::RightButton);
    EXPECT_EQ(hit.modifiers, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(hit.pixel, centre);
    EXPECT_FALSE(hit.endsDrag);
}

TEST_F(GamutViewPicking, eventsOfEitherWindowAreReportedOnce)
{
    QSignalSpy clicked(view.get(), &KVGamutView::clicked);
    click(centre, centre, viewer.get());
    settle();
    EXPECT_EQ(clicked.size(), 1);
    click(centre, centre, &widget());
    settle();
    EXPECT_EQ(clicked.size(), 2);
}

TEST_F(GamutViewPicking, aReleaseFarFromThePressEndsADrag)
{
    QSignalSpy clicked(view.get(), &KVGamutView::clicked);
    const int distance = QGuiApplication::styleHints()->startDragDistance();
    click(centre, centre + QPoint(distance - 1, 0));
    click(centre, centre + QPoint(distance, 0));
    send(QEvent::MouseButtonPress, centre, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, centre + QPoint(50, 0), Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseMove, centre, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, centre, Qt::LeftButton, Qt::NoButton);
    click(centre, centre);
    settle();
    ASSERT_EQ(clicked.size(), 4);
    EXPECT_FALSE(hitOf(clicked, 0).endsDrag);
    EXPECT_TRUE(hitOf(clicked, 1).endsDrag);
    EXPECT_TRUE(hitOf(clicked, 2).endsDrag) << "moved away and back";
    EXPECT_FALSE(hitOf(clicked, 3).endsDrag) << "each press begins anew";
}

TEST_F(GamutViewPicking, movesWithoutAButtonHover)
{
    showAndWait(id);
    QSignalSpy hovered(view.get(), &KVGamutView::hovered);
    send(QEvent::MouseMove, {1, 1}, Qt::NoButton, Qt::NoButton);
    send(QEvent::MouseMove, centre, Qt::NoButton, Qt::NoButton, nullptr, Qt::AltModifier);
    settle();
    ASSERT_EQ(hovered.size(), 1) << "moves in one turn are reported once";
    EXPECT_EQ(hitOf(hovered, 0).id, id);
    EXPECT_EQ(hitOf(hovered, 0).pixel, centre);
    EXPECT_EQ(hitOf(hovered, 0).modifiers, Qt::AltModifier);
    EXPECT_EQ(hitOf(hovered, 0).button, Qt::NoButton);
    send(QEvent::MouseMove, centre, Qt::NoButton, Qt::LeftButton);
    settle();
    EXPECT_EQ(hovered.size(), 1);
}

TEST_F(GamutViewPicking, aSlotOfClickedMayDestroyViewerAndView)
{
    QObject::connect(view.get(), &KVGamutView::clicked, qGuiApp, [this] {
        viewer.reset();
        view.reset();
    });
    click(centre, centre);
    settle();
    EXPECT_FALSE(viewer);
    EXPECT_FALSE(view);
}
