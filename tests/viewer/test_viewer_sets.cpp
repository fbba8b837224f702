// SPDX-License-Identifier: Apache-2.0
#include "ViewerCase.h"

#include <scene/Generators.h>

#include <cmath>

namespace {

using kvtest::expectGeometry;
using kvtest::idsOf;
using kvtest::sorted;
using kvtest::Vertex;
using kvtest::verticesOf;

using ViewerSets = ViewerCase;
using MarkerSets = ViewerCase;
using PointSets = ViewerCase;
using SegmentSets = ViewerCase;

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
using kvtest::unknown;

const QList<ColoredPoint> twoPoints{{QColor(255, 0, 0), QVector3D(50, 10, -20)},
                                    {QColor(0, 0, 255, 128), QVector3D(70, -30, 40)}};
const QList<ColoredPoint> onePoint{{QColor(0, 255, 0), QVector3D(20, 60, 60)}};

const QList<ColoredSegment> twoSegments{
    {{QColor(255, 0, 0), QVector3D(50, 10, -20)}, {QColor(0, 0, 255), QVector3D(70, -30, 40)}},
    {{QColor(0, 255, 0), QVector3D(0, 0, 0)}, {QColor(0, 255, 0), QVector3D(100, 0, 0)}}};
const QList<ColoredSegment> oneSegment{
    {{QColor(1, 2, 3), QVector3D(10, 20, 30)}, {QColor(4, 5, 6), QVector3D(40, 50, 60)}}};

/// Largest distance of a vertex from the nearest of @p points.
double reach(const KV3DObject& object, const QList<ColoredPoint>& points)
{
    double largest = 0;
    for (const Vertex& vertex : verticesOf(object)) {
        double nearest = 1e9;
        for (const ColoredPoint& point : points) {
            const QVector3D d = vertex.lab() - point.second;
            nearest = std::min(
                nearest, std::sqrt(double(d.x()) * d.x() + double(d.y()) * d.y() + double(d.z()) * d.z()));
        }
        largest = std::max(largest, nearest);
    }
    return largest;
}

} // namespace

// --- Groups: clearing, removing, listing ---------------------------------------------------------

TEST_F(ViewerSets, clearingAndRemovingInANewViewerDoesNothing)
{
    const QStringList before = root().childOrder();
    viewer->clearMarkerSet();
    viewer->clearPointSet();
    viewer->clearSegmentSet();
    viewer->removeMarkerSet(a);
    viewer->removePointSet(a);
    viewer->removeSegmentSet(a);
    viewer->removeGamut(a);
    EXPECT_EQ(root().childOrder(), before);
    EXPECT_TRUE(viewer->markerSet().isEmpty());
    EXPECT_TRUE(viewer->pointSet().isEmpty());
    EXPECT_TRUE(viewer->segmentSet().isEmpty());
    EXPECT_TRUE(viewer->gamuts().isEmpty());
}

TEST_F(ViewerSets, clearingRemovesTheGroupUntilTheNextSet)
{
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 5, 0);
    viewer->addPointSet(a, twoPoints);
    viewer->addSegmentSet(a, twoSegments);

    viewer->clearMarkerSet();
    EXPECT_TRUE(viewer->markerSet().isEmpty());
    EXPECT_FALSE(root().hasChild(QStringLiteral("Markers")));
    EXPECT_EQ(viewer->pointSet(), QStringList{a});
    EXPECT_EQ(viewer->segmentSet(), QStringList{a});
    viewer->addMarkerSet(b, KVGamut3DViewer::Sphere, twoPoints, 5, 0);
    EXPECT_EQ(viewer->markerSet(), QStringList{b});

    viewer->clearPointSet();
    EXPECT_TRUE(viewer->pointSet().isEmpty());
    EXPECT_FALSE(root().hasChild(QStringLiteral("Points")));
    viewer->addPointSet(b, twoPoints);
    EXPECT_EQ(viewer->pointSet(), QStringList{b});

    viewer->clearSegmentSet();
    EXPECT_TRUE(viewer->segmentSet().isEmpty());
    EXPECT_FALSE(root().hasChild(QStringLiteral("Segments")));
    viewer->addSegmentSet(b, twoSegments);
    EXPECT_EQ(viewer->segmentSet(), QStringList{b});
    EXPECT_EQ(viewer->markerSet(), QStringList{b});
}

TEST_F(ViewerSets, removingASetKeepsTheGroup)
{
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 5, 0);
    viewer->addPointSet(a, twoPoints);
    viewer->addPointSet(b, twoPoints);
    viewer->addSegmentSet(a, twoSegments);

    viewer->removeMarkerSet(a);
    EXPECT_TRUE(viewer->markerSet().isEmpty());
    ASSERT_TRUE(group("Markers")) << "the group stays, even when it becomes empty";
    EXPECT_EQ(sorted(viewer->pointSet()), (QStringList{a, b})) << "the same name in another kind";
    viewer->removePointSet(b);
    EXPECT_EQ(viewer->pointSet(), QStringList{a});
    EXPECT_EQ(group("Points")->childOrder(), QStringList{a});
    viewer->removeSegmentSet(a);
    EXPECT_TRUE(viewer->segmentSet().isEmpty());
    EXPECT_TRUE(group("Segments"));
}

TEST_F(ViewerSets, removingAnUnknownNameChangesNothing)
{
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 5, 0);
    viewer->addPointSet(a, twoPoints);
    viewer->addSegmentSet(a, twoSegments);
    for (const QString& name : {QStringLiteral("x"), QStringLiteral("A"), QString()}) {
        viewer->removeMarkerSet(name);
        viewer->removePointSet(name);
        viewer->removeSegmentSet(name);
    }
    EXPECT_EQ(viewer->markerSet(), QStringList{a});
    EXPECT_EQ(viewer->pointSet(), QStringList{a});
    EXPECT_EQ(viewer->segmentSet(), QStringList{a});
}

TEST_F(ViewerSets, aRemovedSetLivesAsLongAsItIsReferenced)
{
    viewer->addPointSet(a, twoPoints);
    auto held = item("Points", a);
    const QWeakPointer<KV3DObject> watch = held;
    viewer->removePointSet(a);
    EXPECT_EQ(held->id(), a);
    EXPECT_FALSE(held->vertices().isEmpty());
    held.reset();
    EXPECT_TRUE(watch.isNull());
}

TEST_F(ViewerSets, removingAndClearingCauseARedraw)
{
    viewer->addPointSet(a, twoPoints);
    viewer->addPointSet(b, twoPoints);
    const auto draw = [this] {
        for (const int pass : {KVPassOpaque, KVPassTranslucent})
            root().draw(nullptr, {}, {}, {}, CameraState(), {}, Qt::white, pass);
        EXPECT_TRUE(root().isSettled());
    };
    draw();
    viewer->removePointSet(a);
    EXPECT_FALSE(root().isSettled());
    draw();
    viewer->removePointSet(a);
    EXPECT_TRUE(root().isSettled()) << "nothing was removed";
    viewer->clearPointSet();
    EXPECT_FALSE(root().isSettled());
}

TEST_F(ViewerSets, listsTheSetsInTheOrderOfTheGroupsTable)
{
    QStringList names;
    for (int i = 0; i < 20; ++i) {
        names.append(QStringLiteral("set %1").arg(i));
        viewer->addMarkerSet(names.last(), KVGamut3DViewer::Sphere, onePoint, 5, 0);
        viewer->addPointSet(names.last(), onePoint);
        viewer->addSegmentSet(names.last(), oneSegment);
    }
    EXPECT_EQ(sorted(viewer->markerSet()), sorted(names));
    EXPECT_EQ(viewer->markerSet(), idsOf(group("Markers")->children()));
    EXPECT_EQ(viewer->pointSet(), idsOf(group("Points")->children()));
    EXPECT_EQ(viewer->segmentSet(), idsOf(group("Segments")->children()));
}

TEST_F(ViewerSets, drawsMarkersLastAndPointsAndSegmentsFirst)
{
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, onePoint, 5, 0);
    viewer->addPointSet(a, onePoint);
    viewer->addSegmentSet(a, oneSegment);
    viewer->addMarkerSet(b, KVGamut3DViewer::Sphere, onePoint, 5, 0);
    viewer->addPointSet(b, onePoint);
    viewer->addSegmentSet(b, oneSegment);
    EXPECT_EQ(root().childOrder(),
              (QStringList{QStringLiteral("Segments"), QStringLiteral("Points"), QStringLiteral("Plane"),
                           QStringLiteral("Axes"), QStringLiteral("Grid"), QStringLiteral("Markers")}));
    EXPECT_EQ(group("Markers")->childOrder(), (QStringList{a, b}));
    EXPECT_EQ(group("Points")->childOrder(), (QStringList{b, a}));
    EXPECT_EQ(group("Segments")->childOrder(), (QStringList{b, a}));
    // Refilling does not move a set.
    viewer->addPointSet(a, twoPoints);
    viewer->addSegmentSet(a, twoSegments);
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 5, 0);
    EXPECT_EQ(group("Markers")->childOrder(), (QStringList{a, b}));
    EXPECT_EQ(group("Points")->childOrder(), (QStringList{b, a}));
    EXPECT_EQ(group("Segments")->childOrder(), (QStringList{b, a}));
}

TEST_F(ViewerSets, objectsHaveTheDocumentedNames)
{
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, onePoint, 5, 0);
    viewer->addPointSet(a, onePoint);
    viewer->addSegmentSet(a, oneSegment);
    for (const char* id : {"Markers", "Points", "Segments"}) {
        EXPECT_EQ(group(id)->name(), QLatin1String(id));
        EXPECT_TRUE(group(id)->isVisible());
        EXPECT_TRUE(group(id)->vertices().isEmpty());
        EXPECT_EQ(item(id, a)->id(), a);
        EXPECT_TRUE(item(id, a)->isVisible());
    }
    EXPECT_EQ(item("Markers", a)->name(), QStringLiteral("Marker"));
    EXPECT_EQ(item("Points", a)->name(), a);
    EXPECT_EQ(item("Segments", a)->name(), a);
}

TEST_F(ViewerSets, aSetMayHaveTheNameOfAGroup)
{
    for (const QString& name : {QStringLiteral("root"), QStringLiteral("Points"), QStringLiteral("Axis_X")}) {
        viewer->addMarkerSet(name, KVGamut3DViewer::Sphere, onePoint, 5, 0);
        viewer->addPointSet(name, onePoint);
        viewer->addSegmentSet(name, oneSegment);
        EXPECT_TRUE(viewer->markerSet().contains(name));
        EXPECT_TRUE(viewer->pointSet().contains(name));
        EXPECT_TRUE(viewer->segmentSet().contains(name));
        viewer->removePointSet(name);
        EXPECT_FALSE(viewer->pointSet().contains(name));
    }
    EXPECT_TRUE(viewer->displayAxes());
}

// --- Marker sets ---------------------------------------------------------------------------------

TEST_F(MarkerSets, passAllArgumentsToTheGenerator)
{
    for (const auto type : {KVGamut3DViewer::Sphere, KVGamut3DViewer::BracketedCube, KVGamut3DViewer::Star}) {
        viewer->addMarkerSet(a, type, twoPoints, 6.5f, 0.25f);
        expectGeometry(*item("Markers", a), kvMarkers(type, twoPoints, 6.5f, 0.25f));
        EXPECT_EQ(item("Markers", a)->markerType(), type);
        EXPECT_EQ(item("Markers", a)->markerSize(), 6.5f);
        EXPECT_EQ(item("Markers", a)->markerParam(), 0.25f);
        EXPECT_TRUE(item("Markers", a)->markers() == twoPoints);
        EXPECT_FALSE(item("Markers", a)->vertices().isEmpty());
    }
}

TEST_F(MarkerSets, lieAtTheirPositionsInHostCoordinates)
{
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, onePoint, 6, 0);
    QVector3D lowest(1e9f, 1e9f, 1e9f);
    QVector3D highest = -lowest;
    for (const Vertex& vertex : verticesOf(*item("Markers", a)))
        for (int k = 0; k < 3; ++k) {
            lowest[k] = std::min(lowest[k], vertex.lab()[k]);
            highest[k] = std::max(highest[k], vertex.lab()[k]);
        }
    for (int k = 0; k < 3; ++k) {
        EXPECT_NEAR(lowest[k], onePoint[0].second[k] - 3, 1e-3) << k;
        EXPECT_NEAR(highest[k], onePoint[0].second[k] + 3, 1e-3) << k;
    }
}

TEST_F(MarkerSets, ofSpheresAndStarsUseTheSecondSizeAsAmbientStrength)
{
    for (const auto type : {KVGamut3DViewer::Sphere, KVGamut3DViewer::Star}) {
        viewer->addMarkerSet(a, type, twoPoints, 5, 0.4f);
        EXPECT_EQ(item("Markers", a)->ambientStrength(), 0.4f) << type;
        viewer->addMarkerSet(a, type, twoPoints, 5, 0);
        EXPECT_EQ(item("Markers", a)->ambientStrength(), 1.0f) << type;
    }
}

TEST_F(MarkerSets, ofCubesShowTheirPureColours)
{
    const auto cube = KVGamut3DViewer::BracketedCube;
    viewer->addMarkerSet(a, cube, twoPoints, 5, 0.4f);
    EXPECT_EQ(item("Markers", a)->ambientStrength(), 1.0f);
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 5, 0.4f); // the same set, refilled
    viewer->addMarkerSet(a, cube, twoPoints, 5, 0.4f);
    EXPECT_EQ(item("Markers", a)->ambientStrength(), 1.0f);
}

TEST_F(MarkerSets, acceptAnEmptyNameAndAnEmptyList)
{
    viewer->addMarkerSet(QString(), KVGamut3DViewer::Sphere, {}, 5, 0);
    ASSERT_TRUE(group("Markers"));
    EXPECT_EQ(viewer->markerSet(), QStringList{QString()});
    ASSERT_TRUE(item("Markers", QString()));
    EXPECT_TRUE(item("Markers", QString())->id().isEmpty());
    EXPECT_TRUE(item("Markers", QString())->vertices().isEmpty());

    viewer->addMarkerSet(QString(), KVGamut3DViewer::Sphere, twoPoints, 5, 0);
    EXPECT_EQ(viewer->markerSet().size(), 1);
    EXPECT_FALSE(item("Markers", QString())->vertices().isEmpty());
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, onePoint, 5, 0);
    viewer->removeMarkerSet(QString());
    EXPECT_EQ(viewer->markerSet(), QStringList{a});
}

TEST_F(MarkerSets, areRefilledInPlace)
{
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 5, 0);
    const auto set = item("Markers", a);
    set->setVisible(false);
    viewer->addMarkerSet(a, KVGamut3DViewer::BracketedCube, onePoint, 7, 1);
    EXPECT_EQ(viewer->markerSet(), QStringList{a});
    EXPECT_EQ(item("Markers", a), set);
    EXPECT_FALSE(set->isVisible());
    expectGeometry(*set, kvMarkers(2, onePoint, 7, 1));
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, {}, 5, 0);
    EXPECT_TRUE(set->vertices().isEmpty());
    EXPECT_EQ(viewer->markerSet(), QStringList{a});
}

TEST_F(MarkerSets, areNotRebuiltForTheSameItems)
{
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 5, 0.5f);
    const auto set = item("Markers", a);
    set->setAmbientStrength(0.9f); // a rebuild would restore the value of the parameter
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 5, 0.5f);
    EXPECT_EQ(set->ambientStrength(), 0.9f);
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 6, 0.5f);
    EXPECT_EQ(set->ambientStrength(), 0.5f);
}

TEST_F(MarkerSets, keepTheirSizeWhenThePointSizeChanges)
{
    viewer->addMarkerSet(a, KVGamut3DViewer::Sphere, twoPoints, 5, 0);
    viewer->setPointSize(20);
    viewer->setPointSetSize(a, 30);
    EXPECT_EQ(item("Markers", a)->markerSize(), 5.0f);
}

// --- Point sets ----------------------------------------------------------------------------------

TEST_F(PointSets, areSpheresInThePointSize)
{
    viewer->addPointSet(a, twoPoints);
    expectGeometry(*item("Points", a), kvMarkers(1, twoPoints, 4, 0));
    EXPECT_NEAR(reach(*item("Points", a), twoPoints), 2.0, 1e-3);
    EXPECT_EQ(item("Points", a)->ambientStrength(), 1.0f);
}

TEST_F(PointSets, withoutItemsOrNameAreNotCreated)
{
    viewer->addPointSet(a, {});
    viewer->addPointSet(QString(), twoPoints);
    viewer->addPointSet(QString(), {});
    EXPECT_TRUE(viewer->pointSet().isEmpty());
    EXPECT_FALSE(root().hasChild(QStringLiteral("Points")));

    viewer->addPointSet(a, twoPoints);
    const QList<float> before = item("Points", a)->vertices();
    viewer->addPointSet(a, {});
    EXPECT_EQ(item("Points", a)->vertices(), before);
}

TEST_F(PointSets, areRefilledInPlace)
{
    viewer->addPointSet(a, twoPoints);
    const auto set = item("Points", a);
    set->setVisible(false);
    viewer->addPointSet(a, onePoint);
    EXPECT_EQ(item("Points", a), set);
    EXPECT_EQ(viewer->pointSet(), QStringList{a});
    EXPECT_FALSE(set->isVisible());
    expectGeometry(*set, kvMarkers(1, onePoint, 4, 0));
}

TEST_F(PointSets, aPointSizeSetBeforeIsUsedByTheFirstSet)
{
    viewer->setPointSize(8);
    EXPECT_EQ(viewer->pointSize(), 8.0f);
    EXPECT_FALSE(root().hasChild(QStringLiteral("Points")));
    viewer->addPointSet(a, twoPoints);
    EXPECT_EQ(item("Points", a)->markerSize(), 8.0f);
    EXPECT_NEAR(reach(*item("Points", a), twoPoints), 4.0, 1e-3);
}

TEST_F(PointSets, aPointSizeChangesEverySet)
{
    viewer->addPointSet(a, twoPoints);
    viewer->addPointSet(b, onePoint);
    for (const float size : {8.0f, 3.0f, 10.0f}) {
        viewer->setPointSize(size);
        EXPECT_EQ(viewer->pointSize(), size);
        expectGeometry(*item("Points", a), kvMarkers(1, twoPoints, size, 0));
        expectGeometry(*item("Points", b), kvMarkers(1, onePoint, size, 0));
        EXPECT_NEAR(reach(*item("Points", a), twoPoints), size / 2, 1e-3);
        EXPECT_NEAR(reach(*item("Points", b), onePoint), size / 2, 1e-3);
    }
}

TEST_F(PointSets, aSetKeepsItsOwnSizeUntilItIsRefilled)
{
    viewer->addPointSet(a, twoPoints);
    viewer->addPointSet(b, onePoint);
    viewer->setPointSetSize(a, 12);
    expectGeometry(*item("Points", a), kvMarkers(1, twoPoints, 12, 0));
    expectGeometry(*item("Points", b), kvMarkers(1, onePoint, 4, 0));
    EXPECT_EQ(viewer->pointSize(), 4.0f);

    viewer->addPointSet(a, twoPoints);
    expectGeometry(*item("Points", a), kvMarkers(1, twoPoints, 4, 0));

    viewer->setPointSetSize(a, 12);
    viewer->setPointSize(6);
    expectGeometry(*item("Points", a), kvMarkers(1, twoPoints, 6, 0));
}

TEST_F(PointSets, theSizeOfAnUnknownSetIsIgnored)
{
    viewer->setPointSetSize(unknown, 12);
    EXPECT_FALSE(root().hasChild(QStringLiteral("Points")));
    viewer->addPointSet(a, twoPoints);
    viewer->setPointSetSize(unknown, 12);
    viewer->setPointSetSize(QString(), 12);
    EXPECT_EQ(item("Points", a)->markerSize(), 4.0f);
    EXPECT_EQ(viewer->pointSet(), QStringList{a});
}

// --- Segment sets --------------------------------------------------------------------------------

TEST_F(SegmentSets, areTwoWideAtFirst)
{
    viewer->addSegmentSet(a, twoSegments);
    expectGeometry(*item("Segments", a), kvSegments(twoSegments, false, 2.0f));
    EXPECT_EQ(item("Segments", a)->lineWidth(), 2.0f);
    EXPECT_FALSE(item("Segments", a)->vertices().isEmpty());
}

TEST_F(SegmentSets, interpolateTheColoursOfTheirEnds)
{
    viewer->addSegmentSet(a, {twoSegments.first()});
    const QVector3D start = twoSegments[0].first.second;
    const QVector3D end = twoSegments[0].second.second;
    for (const Vertex& vertex : verticesOf(*item("Segments", a))) {
        const bool atStart = (vertex.lab() - start).length() < (vertex.lab() - end).length();
        EXPECT_EQ(vertex.color[0], atStart ? 1.0f : 0.0f);
        EXPECT_EQ(vertex.color[2], atStart ? 0.0f : 1.0f);
    }
}

TEST_F(SegmentSets, withoutItemsOrNameAreNotCreated)
{
    viewer->addSegmentSet(a, {});
    viewer->addSegmentSet(QString(), twoSegments);
    viewer->addSegmentSet(QString(), {});
    EXPECT_TRUE(viewer->segmentSet().isEmpty());
    EXPECT_FALSE(root().hasChild(QStringLiteral("Segments")));

    viewer->addSegmentSet(a, twoSegments);
    const QList<float> before = item("Segments", a)->vertices();
    viewer->addSegmentSet(a, {});
    EXPECT_EQ(item("Segments", a)->vertices(), before);
}

TEST_F(SegmentSets, keepTheirWidthWhenTheyAreRefilled)
{
    viewer->addSegmentSet(a, twoSegments);
    const auto set = item("Segments", a);
    viewer->setSegmentSetWidth(a, 5);
    EXPECT_EQ(set->lineWidth(), 5.0f);
    viewer->addSegmentSet(a, oneSegment);
    EXPECT_EQ(item("Segments", a), set);
    EXPECT_EQ(viewer->segmentSet(), QStringList{a});
    expectGeometry(*set, kvSegments(oneSegment, false, 5.0f));
    EXPECT_EQ(set->lineWidth(), 5.0f);

    viewer->addSegmentSet(b, oneSegment);
    EXPECT_EQ(item("Segments", b)->lineWidth(), 2.0f);
    EXPECT_NE(item("Segments", b)->vertices(), set->vertices());
}

TEST_F(SegmentSets, ofWidthZeroArePlainLines)
{
    viewer->addSegmentSet(a, twoSegments);
    viewer->setSegmentSetWidth(a, 0);
    viewer->addSegmentSet(a, oneSegment);
    EXPECT_EQ(item("Segments", a)->primitiveMode(), 1);
    const auto vertices = verticesOf(*item("Segments", a));
    ASSERT_EQ(vertices.size(), 2);
    EXPECT_EQ(vertices[0].lab(), QVector3D(10, 20, 30));
    EXPECT_EQ(vertices[1].lab(), QVector3D(40, 50, 60));
}

TEST_F(SegmentSets, theWidthOfAnUnknownSetIsIgnored)
{
    viewer->setSegmentSetWidth(unknown, 5);
    EXPECT_FALSE(root().hasChild(QStringLiteral("Segments")));
    viewer->addSegmentSet(a, twoSegments);
    viewer->setSegmentSetWidth(unknown, 5);
    EXPECT_EQ(item("Segments", a)->lineWidth(), 2.0f);
    EXPECT_EQ(viewer->segmentSet(), QStringList{a});
    viewer->addPointSet(unknown, onePoint);
    viewer->setSegmentSetWidth(unknown, 5);
    EXPECT_EQ(item("Points", unknown)->lineWidth(), 1.0f);
}
