// SPDX-License-Identifier: Apache-2.0
#include "support/EveryMethod.h"

#include <gtest/gtest.h>

#include <QtGui/QImage>

QString kvtest::everyGamut()
{
    return QStringLiteral("h");
}

QString kvtest::everySet()
{
    return QStringLiteral("set");
}

QHash<QString, QVariant> kvtest::srgb()
{
    return {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}};
}

void kvtest::callEverything(KVGamut3DViewer& v)
{
    const QString h = everyGamut(), set = everySet();
    using Item = KVGamut3DViewer::ColoredPosition;
    const Item from{Qt::red, QVector3D(20, -60, 0)}, to{Qt::blue, QVector3D(80, 60, 0)};

    // In the order of the constructor: after a teardown the order decides which object is drawn at equal
    // depth.
    v.addabPlane();
    v.addAxesAndGrid();
    v.clearMarkerSet();
    v.addMarkerSet(set, KVGamut3DViewer::Star, {from, to}, 9, 0);
    v.addMarkerSet(QStringLiteral("other"), KVGamut3DViewer::Sphere, {from}, 9, 0.5f);
    v.removeMarkerSet(QStringLiteral("other"));
    EXPECT_EQ(v.markerSet(), QStringList{set});
    v.clearPointSet();
    v.setPointSize(5);
    v.addPointSet(set, {from, to});
    v.setPointSetSize(set, 7);
    v.removePointSet(QStringLiteral("none"));
    EXPECT_EQ(v.pointSet(), QStringList{set});
    EXPECT_EQ(v.pointSize(), 5.0f);
    v.clearSegmentSet();
    v.addSegmentSet(set, {{from, to}});
    v.setSegmentSetWidth(set, 3);
    v.removeSegmentSet(QStringLiteral("none"));
    EXPECT_EQ(v.segmentSet(), QStringList{set});

    v.setDisplayGrid(!v.displayGrid());
    v.setDisplayGrid(true);
    v.setDisplayAxes(!v.displayAxes());
    v.setDisplayAxes(true);
    EXPECT_FALSE(v.abPlane());
    v.setabPlane(true);
    EXPECT_TRUE(v.abPlane() && v.displayGrid() && v.displayAxes());

    v.load(h, srgb(), nullptr);
    ASSERT_TRUE(v.exists(h));
    EXPECT_NEAR(v.volume(h), 832781, 420);
    EXPECT_TRUE(v.gamuts().contains(h));
    v.setGamutVisible(h, false);
    EXPECT_FALSE(v.gamutVisible(h));
    v.setGamutVisible(h, true);
    v.setDisplayGamut(h, true);
    v.setDisplayProjection(h, false);
    v.setDisplayPrimaries(h, true);
    EXPECT_TRUE(v.displayGamut(h) && !v.displayProjection(h) && v.displayPrimaries(h));
    v.setDisplayMode(h, KVGamut3DViewer::Wireframe);
    EXPECT_EQ(v.displayMode(h), KVGamut3DViewer::Wireframe);
    v.setDisplayMode(h, KVGamut3DViewer::Smooth);
    v.changeGamutAlpha(h, 0.5f, 0);
    EXPECT_EQ(v.gamutAlpha(h), 0.5f);
    v.changeGamutAlpha(h, 0.75f, 40);
    v.changeGamutColor(h, QColor(10, 20, 30));
    EXPECT_EQ(v.gamutColor(h), QColor(10, 20, 30));
    v.setGamutAmbientStrength(h, 0.5f);
    EXPECT_EQ(v.gamutAmbientStrength(h), 0.5f);
    EXPECT_EQ(v.params(h), srgb());
    const auto saved = v.save(h);
    EXPECT_TRUE(saved.contains(QStringLiteral("Gamut")));
    EXPECT_TRUE(v.isInsideGamut(h, QVector3D(50, 0, 0)));
    EXPECT_FALSE(v.isInsideGamut(h, QVector3D(50, 120, 120)));
    EXPECT_GT(v.faceList(h).size(), 1000);
    const QString copy = QStringLiteral("copy");
    v.load(copy, saved, nullptr);
    float f[6] = {};
    EXPECT_TRUE(v.gamutSetProperties(h, copy, f[0], f[1], f[2], f[3], f[4], f[5]));
    EXPECT_EQ(f[0], f[1]);
    EXPECT_NEAR(f[5], 1.0f, 1e-4f);
    v.removeGamut(copy);
    v.setClipping(70);
    EXPECT_EQ(v.clipping(), 70.0f);

    v.resetCamera(KVGamut3DViewer::Bottom, 0);
    v.setCamera(QVector3D(200, -200, -300), 0, QVector3D(50, 0, 0));
    EXPECT_EQ(v.camera(), QVector3D(200, -200, -300));
    EXPECT_EQ(v.interestPt(), QVector3D(50, 0, 0));
    v.setOrthogonalProjection(true, 0);
    EXPECT_TRUE(v.orthogonalProjection());
    v.setOrthogonalProjection(false, 0);
    v.setViewingAngle(35, 0);
    EXPECT_EQ(v.viewingAngle(), 35.0f);
    EXPECT_EQ(v.rayToPoint(QPoint(3, 4)).first, v.camera());
    v.setEnableInteraction(false);
    EXPECT_FALSE(v.enableInteraction());
    v.setEnableInteraction(true);

    v.setFramerate(10);
    v.setLightPos(QVector3D(10, 300, 20));
    v.setLightColor(QColor(250, 250, 240));
    v.setBackground(QColor(60, 60, 70));
    EXPECT_EQ(v.framerate(), 10);
    EXPECT_EQ(v.lightPos(), QVector3D(10, 300, 20));
    EXPECT_EQ(v.lightColor(), QColor(250, 250, 240));
    EXPECT_EQ(v.background(), QColor(60, 60, 70));
    v.picture();
    v.isSettled();
}
