// SPDX-License-Identifier: Apache-2.0
#include "ObjectProbe.h"

#include <scene/Generators.h>

#include <gmock/gmock.h>

#include <QtCore/QUuid>

#include <cmath>

using namespace kvtest;
using testing::ElementsAre;

namespace {

const QList<QVector3D> triangleAtOrigin = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};

void expectColor(const float* actual, double r, double g, double b, const char* what = "")
{
    EXPECT_NEAR(actual[0], r, 1e-5) << what;
    EXPECT_NEAR(actual[1], g, 1e-5) << what;
    EXPECT_NEAR(actual[2], b, 1e-5) << what;
}

QStringList ids(const QList<ObjectPtr>& objects)
{
    QStringList list;
    for (const ObjectPtr& o : objects)
        list << o->id();
    list.sort();
    return list;
}

/// Three generations: parent, child, grandchild, each with one triangle.
struct Family
{
    ObjectPtr parent = object(QStringLiteral("parent"));
    ObjectPtr child = object(QStringLiteral("child"));
    ObjectPtr grandchild = object(QStringLiteral("grandchild"));

    Family()
    {
        parent->addChild(child);
        child->addChild(grandchild);
        for (const ObjectPtr& o : all())
            o->setVertices(generated(triangleAtOrigin, Qt::darkGreen));
    }

    QList<ObjectPtr> all() const { return {parent, child, grandchild}; }
};

/// Draws one frame, after which everything counts as drawn.
void settle(KV3DObject& o)
{
    drawFrame(o);
    ASSERT_TRUE(o.isSettled());
}

} // namespace

// ---- a new object ---------------------------------------------------------------------------

TEST(SceneObject, startsOpaqueVisibleEmptyAndUnclipped)
{
    const KV3DObject o(QStringLiteral("Gamut"), QStringLiteral("sRGB"));
    EXPECT_EQ(o.name(), QStringLiteral("Gamut"));
    EXPECT_EQ(o.id(), QStringLiteral("sRGB"));
    EXPECT_EQ(o.alpha(), 1.0f);
    EXPECT_EQ(o.lineWidth(), 1.0f);
    EXPECT_EQ(o.clip(), 1000000.0f);
    EXPECT_EQ(o.ambientStrength(), 1.0f);
    EXPECT_EQ(o.displayMode(), 1);
    EXPECT_EQ(o.primitiveMode(), 4);
    EXPECT_TRUE(o.isVisible());
    EXPECT_FALSE(o.color().isValid());
    EXPECT_EQ(o.markerType(), 1);
    EXPECT_TRUE(o.markers().isEmpty());
    EXPECT_EQ(o.markerSize(), -1.0f);
    EXPECT_EQ(o.markerParam(), 0.0f);
    EXPECT_TRUE(o.vertices().isEmpty());
    EXPECT_TRUE(o.sortedVertices().isEmpty());
    EXPECT_TRUE(o.children().isEmpty());
    EXPECT_TRUE(o.childOrder().isEmpty());
    EXPECT_FALSE(o.isChanged());
    EXPECT_FALSE(o.isDrawnSinceChange());
    EXPECT_FALSE(o.hasTransition());
    EXPECT_EQ(o.glOwner(), nullptr);
    EXPECT_FALSE(o.hasProgram());
    EXPECT_FALSE(o.hasBuffer());
}

TEST(SceneObject, emptyIdArgumentGivesAUuidInBraces)
{
    const KV3DObject a(QStringLiteral("root"), QString());
    const KV3DObject b(QStringLiteral("root"));
    for (const KV3DObject* o : {&a, &b}) {
        EXPECT_EQ(o->id().size(), 38);
        EXPECT_TRUE(o->id().startsWith(QLatin1Char('{')) && o->id().endsWith(QLatin1Char('}')));
        EXPECT_FALSE(QUuid(o->id()).isNull());
        EXPECT_EQ(o->name(), QStringLiteral("root"));
    }
    EXPECT_NE(a.id(), b.id());
}

TEST(SceneObject, setIdAcceptsAnEmptyId)
{
    KV3DObject parent(QStringLiteral("Markers"), QStringLiteral("Markers"));
    const ObjectPtr set = object(QStringLiteral("something"));
    set->setId(QString());
    EXPECT_EQ(set->id(), QString());
    parent.addChild(set);
    EXPECT_TRUE(parent.hasChild(QString()));
    EXPECT_EQ(parent.child(QString()), set);
    EXPECT_EQ(parent.childOrder(), QStringList{QString()});
    EXPECT_EQ(parent.takeChild(QString()), set);
}

// ---- tree -----------------------------------------------------------------------------------

TEST(SceneObjectTree, childrenKeepTheirInsertionOrderAtBothEnds)
{
    KV3DObject parent(QStringLiteral("p"), QStringLiteral("p"));
    parent.addChild(object(QStringLiteral("a")));
    parent.addChild(object(QStringLiteral("b")), false);
    parent.addChild(object(QStringLiteral("c")), true);
    parent.addChild(object(QStringLiteral("d")), true);
    parent.addChild(object(QStringLiteral("e")));
    EXPECT_EQ(parent.childOrder(), QStringList({QStringLiteral("d"), QStringLiteral("c"), QStringLiteral("a"),
                                                QStringLiteral("b"), QStringLiteral("e")}));
    EXPECT_EQ(ids(parent.children()),
              QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d"),
                           QStringLiteral("e")}));
}

TEST(SceneObjectTree, childWithAnExistingIdReplacesItInPlace)
{
    for (const bool atFront : {false, true}) {
        KV3DObject parent(QStringLiteral("p"), QStringLiteral("p"));
        const ObjectPtr first = object(QStringLiteral("a"));
        const ObjectPtr second = object(QStringLiteral("a"));
        parent.addChild(object(QStringLiteral("x")));
        parent.addChild(first);
        parent.addChild(object(QStringLiteral("y")));
        parent.addChild(second, atFront);
        EXPECT_EQ(parent.childOrder(),
                  QStringList({QStringLiteral("x"), QStringLiteral("a"), QStringLiteral("y")}));
        EXPECT_EQ(parent.child(QStringLiteral("a")), second);
        EXPECT_EQ(parent.children().size(), 3);
    }
}

TEST(SceneObjectTree, replacingAChildChangesTheParent)
{
    KV3DObject parent(QStringLiteral("p"), QStringLiteral("p"));
    parent.addChild(object(QStringLiteral("a")));
    settle(parent);
    parent.addChild(object(QStringLiteral("a")));
    EXPECT_TRUE(parent.isChanged());
    EXPECT_FALSE(parent.isDrawnSinceChange());
    EXPECT_FALSE(parent.isSettled());
}

TEST(SceneObjectTree, newChildRequiresAFrame)
{
    KV3DObject parent(QStringLiteral("p"), QStringLiteral("p"));
    settle(parent);
    parent.addChild(object(QStringLiteral("a")));
    EXPECT_FALSE(parent.isSettled());
}

TEST(SceneObjectTree, takeChildRemovesTheChildAndChangesTheParent)
{
    KV3DObject parent(QStringLiteral("p"), QStringLiteral("p"));
    const ObjectPtr a = object(QStringLiteral("a"));
    const ObjectPtr b = object(QStringLiteral("b"));
    parent.addChild(a);
    parent.addChild(b);
    settle(parent);
    EXPECT_EQ(parent.takeChild(QStringLiteral("a")), a);
    EXPECT_FALSE(parent.hasChild(QStringLiteral("a")));
    EXPECT_TRUE(parent.child(QStringLiteral("a")).isNull());
    EXPECT_EQ(parent.childOrder(), QStringList{QStringLiteral("b")});
    EXPECT_EQ(parent.children(), QList<ObjectPtr>{b});
    EXPECT_TRUE(parent.isChanged());
    EXPECT_FALSE(parent.isDrawnSinceChange());
}

TEST(SceneObjectTree, takeChildOfAnUnknownIdChangesNothing)
{
    KV3DObject parent(QStringLiteral("root"));
    parent.addChild(object(QStringLiteral("a")));
    settle(parent);
    EXPECT_TRUE(parent.takeChild(QStringLiteral("nobody")).isNull());
    EXPECT_EQ(parent.childOrder(), QStringList{QStringLiteral("a")});
    EXPECT_FALSE(parent.isChanged());
    EXPECT_TRUE(parent.isDrawnSinceChange());
    EXPECT_TRUE(parent.isSettled());
}

TEST(SceneObjectTree, lookupOfAnUnknownIdReturnsNull)
{
    KV3DObject parent(QStringLiteral("p"), QStringLiteral("p"));
    EXPECT_TRUE(parent.child(QStringLiteral("a")).isNull());
    EXPECT_FALSE(parent.hasChild(QStringLiteral("a")));
    parent.addChild(object(QStringLiteral("a")));
    EXPECT_TRUE(parent.hasChild(QStringLiteral("a")));
    EXPECT_TRUE(parent.child(QStringLiteral("A")).isNull()) << "ids are case-sensitive";
    EXPECT_FALSE(parent.child(QStringLiteral("a"))->hasChild(QStringLiteral("a")));
}

TEST(SceneObjectTree, childAtFollowsAPathOfIds)
{
    const Family f;
    const QString child = QStringLiteral("child");
    const QString grandchild = QStringLiteral("grandchild");
    EXPECT_EQ(f.parent->childAt({child}), f.child);
    EXPECT_EQ(f.parent->childAt({child, grandchild}), f.grandchild);
    EXPECT_TRUE(f.parent->childAt({grandchild}).isNull());
    EXPECT_TRUE(f.parent->childAt({QStringLiteral("nobody"), grandchild}).isNull());
    EXPECT_TRUE(f.parent->childAt({child, grandchild, child}).isNull());
}

TEST(SceneObjectTree, parentOwnsItsChildren)
{
    QWeakPointer<KV3DObject> watched;
    {
        KV3DObject parent(QStringLiteral("p"), QStringLiteral("p"));
        {
            const ObjectPtr child = object(QStringLiteral("a"));
            watched = child;
            parent.addChild(child);
        }
        EXPECT_FALSE(watched.isNull());
    }
    EXPECT_TRUE(watched.isNull());
}

TEST(SceneObjectTree, releaseGLRemovesTheSubtreeAndKeepsTheObjectUsable)
{
    Family f;
    const QList<float> before = f.parent->vertices();
    f.parent->releaseGL();
    EXPECT_TRUE(f.parent->children().isEmpty());
    EXPECT_TRUE(f.parent->childOrder().isEmpty());
    EXPECT_TRUE(f.child->children().isEmpty());
    EXPECT_FALSE(f.parent->hasProgram());
    EXPECT_FALSE(f.parent->hasBuffer());
    EXPECT_EQ(f.parent->glOwner(), nullptr);
    EXPECT_EQ(f.parent->vertices(), before);
    f.parent->addChild(object(QStringLiteral("again")));
    EXPECT_TRUE(f.parent->hasChild(QStringLiteral("again")));
}

TEST(SceneObjectTree, storesPropertiesUnderTheirKeys)
{
    KV3DObject o(QStringLiteral("p"), QStringLiteral("p"));
    EXPECT_FALSE(o.property(QStringLiteral("Intent")).isValid());
    o.setProperty(QStringLiteral("Intent"), 3);
    o.setProperty(QStringLiteral("Name"), QStringLiteral("x"));
    EXPECT_EQ(o.property(QStringLiteral("Intent")).toInt(), 3);
    o.setProperty(QStringLiteral("Intent"), 1);
    EXPECT_EQ(o.property(QStringLiteral("Intent")).toInt(), 1);
    EXPECT_EQ(o.property(QStringLiteral("Name")).toString(), QStringLiteral("x"));
    EXPECT_FALSE(o.property(QStringLiteral("intent")).isValid());
}

// ---- visibility -----------------------------------------------------------------------------

TEST(SceneObject, setVisibleMarksAChangeOnlyIfTheValueDiffers)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr o = object(QStringLiteral("o"));
    root.addChild(o);
    settle(root);
    ASSERT_FALSE(o->isChanged());
    o->setVisible(true);
    EXPECT_FALSE(o->isChanged());
    EXPECT_TRUE(o->isDrawnSinceChange());
    o->setVisible(false);
    EXPECT_FALSE(o->isVisible());
    EXPECT_TRUE(o->isChanged());
    EXPECT_FALSE(o->isDrawnSinceChange());
    settle(root);
    o->setVisible(false);
    EXPECT_TRUE(o->isDrawnSinceChange());
}

TEST(SceneObject, setVisibleDoesNotAffectChildren)
{
    const Family f;
    f.parent->setVisible(false);
    EXPECT_TRUE(f.child->isVisible());
    EXPECT_TRUE(f.grandchild->isVisible());
}

// ---- vertices -------------------------------------------------------------------------------

TEST(SceneObjectVertices, tenGeneratedFloatsBecomeARecordOfFifteen)
{
    KV3DObject o(QStringLiteral("o"));
    o.applyAlpha(0.25f);
    o.setClip(42.0f);
    const QList<float> in = {1,  2,  3,  0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f, 0.7f, //
                             -1, -2, -3, 0.9f, 0.8f, 0.7f, 0.6f, 0.5f, 0.4f, 0.3f};
    o.setVertices(in);
    EXPECT_EQ(o.vertices(), QList<float>({1,    2,    3,    0.1f, 0.2f,  0.3f, 0.4f, 0.5f, 0.6f, 0.25f,
                                          0.4f, 0.5f, 0.6f, 0.7f, 42,    -1,   -2,   -3,   0.9f, 0.8f,
                                          0.7f, 0.6f, 0.5f, 0.4f, 0.25f, 0.6f, 0.5f, 0.4f, 0.3f, 42}));
}

TEST(SceneObjectVertices, setVerticesReplacesTheOldOnesAndMarksAChange)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr o = object(QStringLiteral("o"));
    root.addChild(o);
    o->setVertices(generated({{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}, Qt::red));
    settle(root);
    o->setVertices(generated({{9, 8, 7}}, Qt::blue));
    ASSERT_EQ(o->vertices().size(), 15);
    EXPECT_EQ(o->vertices().at(0), 9.0f);
    EXPECT_TRUE(o->isChanged());
    EXPECT_FALSE(o->isDrawnSinceChange());
    o->setVertices({});
    EXPECT_TRUE(o->vertices().isEmpty());
}

TEST(SceneObjectVertices, newVerticesGetTheStoredColour)
{
    KV3DObject o(QStringLiteral("o"));
    o.setColor(Qt::red);
    for (int round = 0; round < 2; ++round) {
        o.setVertices(generated(triangleAtOrigin, QColor(0, 255, 0, 128)));
        for (const VertexStride& v : verticesOf(o)) {
            expectColor(v.color, 1, 0, 0, "current");
            EXPECT_EQ(v.color[3], 1.0f);
            expectColor(v.baseColor, 0, 1, 0, "base");
            EXPECT_NEAR(v.baseColor[3], 128.0 / 255.0, 1e-4);
        }
        EXPECT_EQ(o.displayMode(), 1);
    }
}

TEST(SceneObjectVertices, setVerticesKeepsTheDisplayMode)
{
    KV3DObject o(QStringLiteral("o"), QStringLiteral("Front"));
    o.setDisplayMode(2);
    o.setVertices(generated(triangleAtOrigin, Qt::green));
    EXPECT_EQ(o.displayMode(), 2);
}

TEST(SceneObjectVertices, drawingWithoutAProgramUploadsNothing)
{
    KV3DObject o(QStringLiteral("o"));
    o.setVertices(generated(triangleAtOrigin, Qt::green));
    EXPECT_FALSE(o.hasBuffer());
    EXPECT_EQ(o.uploadCount(), 0);
    drawFrame(o);
    EXPECT_FALSE(o.hasBuffer()) << "uploaded without a program";
    EXPECT_EQ(o.uploadCount(), 0);
}

// ---- colour ---------------------------------------------------------------------------------

TEST(SceneObjectColour, invalidColourKeepsTheGeneratedColours)
{
    KV3DObject o(QStringLiteral("o"), QStringLiteral("Front"));
    o.setVertices(generated({{0, 10, 0}, {0, 50, 0}, {0, 90, 0}}, QColor(10, 20, 30)));
    const QList<float> before = o.vertices();
    o.setColor(QColor());
    EXPECT_EQ(o.vertices(), before);
    o.setDisplayMode(2);
    EXPECT_EQ(o.vertices(), before) << "averaged without a colour";
}

TEST(SceneObjectColour, invalidColourAfterAValidOneKeepsThePresentColours)
{
    KV3DObject o(QStringLiteral("o"));
    o.setVertices(generated(triangleAtOrigin, QColor(10, 20, 30)));
    o.setColor(Qt::red);
    o.setColor(QColor());
    EXPECT_FALSE(o.color().isValid());
    for (const VertexStride& v : verticesOf(o))
        expectColor(v.color, 1, 0, 0);
    o.setVertices(generated(triangleAtOrigin, Qt::blue));
    for (const VertexStride& v : verticesOf(o))
        expectColor(v.color, 0, 0, 1);
}

TEST(SceneObjectColour, settingTheSameColourAgainChangesNothing)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr o = object(QStringLiteral("o"));
    root.addChild(o);
    o->setVertices(generated(triangleAtOrigin, Qt::green));
    o->setColor(Qt::red);
    EXPECT_TRUE(o->isChanged());
    EXPECT_FALSE(o->isDrawnSinceChange());
    settle(root);
    o->setColor(Qt::red);
    EXPECT_FALSE(o->isChanged());
    EXPECT_TRUE(o->isDrawnSinceChange());
    o->setColor(Qt::blue);
    EXPECT_TRUE(o->isChanged());
    EXPECT_FALSE(o->isDrawnSinceChange());
}

TEST(SceneObjectColour, setColorKeepsOpacityBaseColourAndGeometry)
{
    KV3DObject o(QStringLiteral("o"), QStringLiteral("Front"));
    o.setVertices(generated({{1, 20, 3}, {4, 80, 6}, {7, 50, 9}}, QColor(10, 20, 30)));
    o.applyAlpha(0.5f);
    o.setClip(77.0f);
    const auto before = verticesOf(o);
    o.setColor(QColor(200, 100, 50, 10));
    const auto after = verticesOf(o);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_EQ(std::memcmp(after[i].position, before[i].position, sizeof before[i].position), 0);
        EXPECT_EQ(std::memcmp(after[i].normal, before[i].normal, sizeof before[i].normal), 0);
        EXPECT_EQ(std::memcmp(after[i].baseColor, before[i].baseColor, sizeof before[i].baseColor), 0);
        EXPECT_EQ(after[i].color[3], 0.5f);
        EXPECT_EQ(after[i].clip, 77.0f);
    }
    EXPECT_EQ(o.color(), QColor(200, 100, 50, 10));
}

TEST(SceneObjectColour, otherObjectsAreNotShaded)
{
    for (const int mode : {0, 1, 2, 3}) {
        KV3DObject o(QStringLiteral("Front"), QStringLiteral("another"));
        o.setVertices(generated({{0, 10, 0}, {0, 50, 0}, {0, 90, 0}}, Qt::green));
        o.setDisplayMode(mode);
        o.setColor(QColor(51, 102, 153));
        for (const VertexStride& v : verticesOf(o))
            expectColor(v.color, 0.2, 0.4, 0.6);
    }
}

struct ShadeRow
{
    double lightness;
    double towardsWhite; ///< added to each channel
    double factor;       ///< of the colour
};

class ShadedSurface : public testing::TestWithParam<const char*>
{
};

TEST_P(ShadedSurface, isShadedByTheLightnessOfEachVertex)
{
    // From black at L* 0 to the colour at L* 50, and from there to white at L* 100.
    const ShadeRow rows[] = {{0, 0, 0},      {10, 0, 0.2}, {25, 0, 0.5},       {50, 0, 1},     {60, 0.2, 0.8},
                             {75, 0.5, 0.5}, {100, 1, 0},  {50.5, 0.01, 0.99}, {49.5, 0, 0.99}};
    for (const int mode : {0, 1, 3}) {
        KV3DObject o(QStringLiteral("any"), QString::fromLatin1(GetParam()));
        o.setDisplayMode(mode);
        QList<QVector3D> positions;
        for (const ShadeRow& row : rows)
            positions.append({3.0f, float(row.lightness), -8.0f});
        o.setVertices(generated(positions, Qt::green));
        o.setColor(QColor(51, 102, 153));
        const auto vertices = verticesOf(o);
        for (std::size_t i = 0; i < std::size(rows); ++i) {
            expectColor(vertices[i].color, 0.2 * rows[i].factor + rows[i].towardsWhite,
                        0.4 * rows[i].factor + rows[i].towardsWhite,
                        0.6 * rows[i].factor + rows[i].towardsWhite,
                        qPrintable(QString::number(rows[i].lightness)));
        }
    }
}

TEST_P(ShadedSurface, hasOneShadePerTriangleInFlatMode)
{
    KV3DObject o(QStringLiteral("any"), QString::fromLatin1(GetParam()));
    o.setVertices(
        generated({{0, 10, 0}, {0, 20, 0}, {0, 30, 0}, {0, 60, 0}, {0, 90, 0}, {0, 75, 0}}, Qt::green));
    o.setColor(QColor(51, 102, 153));
    o.setDisplayMode(2);
    const auto vertices = verticesOf(o);
    for (std::size_t i = 0; i < 3; ++i) // mean lightness 20: 0.4 of the colour
        expectColor(vertices[i].color, 0.2 * 0.4, 0.4 * 0.4, 0.6 * 0.4);
    for (std::size_t i = 3; i < 6; ++i) // mean lightness 75: half colour, half white
        expectColor(vertices[i].color, 0.6, 0.7, 0.8);
}

TEST_P(ShadedSurface, flatLinesSumTwoVerticesAndDivideByThree)
{
    KV3DObject o(QStringLiteral("any"), QString::fromLatin1(GetParam()));
    GeometryData lines;
    lines.primitiveMode = 1;
    lines.vertices =
        generated({{0, 60, 0}, {0, 90, 0}, {0, 99, 0}, {0, 30, 0}, {0, 45, 0}, {0, 0, 0}}, Qt::green);
    o.setGeometry(lines);
    o.setColor(QColor(51, 102, 153));
    o.setDisplayMode(2);
    const auto vertices = verticesOf(o);
    for (std::size_t i = 0; i < 3; ++i) // (60 + 90) / 3 = 50: the unchanged colour
        expectColor(vertices[i].color, 0.2, 0.4, 0.6);
    for (std::size_t i = 3; i < 6; ++i) // (30 + 45) / 3 = 25: half of it
        expectColor(vertices[i].color, 0.1, 0.2, 0.3);
}

TEST_P(ShadedSurface, incompleteGroupInFlatModeSumsItsPresentVertices)
{
    for (const int primitiveMode : {0, 1, 4}) {
        KV3DObject o(QStringLiteral("any"), QString::fromLatin1(GetParam()));
        GeometryData g;
        g.primitiveMode = primitiveMode;
        g.vertices = generated({{0, 30, 0}, {0, 30, 0}, {0, 30, 0}, {0, 75, 0}}, Qt::green);
        o.setGeometry(g);
        o.setColor(QColor(51, 102, 153));
        o.setDisplayMode(2);
        const auto vertices = verticesOf(o);
        expectColor(vertices[3].color, 0.1, 0.2, 0.3, "75 / 3 = 25"); // half of the colour

        g.vertices = generated({{0, 30, 0}, {0, 30, 0}, {0, 30, 0}, {0, 60, 0}, {0, 90, 0}}, Qt::green);
        o.setGeometry(g);
        for (const std::size_t i : {3u, 4u})
            expectColor(verticesOf(o)[i].color, 0.2, 0.4, 0.6, "(60 + 90) / 3 = 50");
    }
}

INSTANTIATE_TEST_SUITE_P(SceneObjectColour, ShadedSurface, testing::Values("Front", "Wireframe"),
                         [](const auto& row) { return std::string(row.param); });

TEST(SceneObjectColour, leavingFlatModeRestoresShadingPerVertex)
{
    KV3DObject o(QStringLiteral("Front"), QStringLiteral("Front"));
    o.setVertices(generated({{0, 10, 0}, {0, 20, 0}, {0, 30, 0}}, Qt::green));
    o.setColor(QColor(51, 102, 153));
    const QList<float> smooth = o.vertices();
    o.setDisplayMode(2);
    EXPECT_NE(o.vertices(), smooth);
    o.setDisplayMode(1);
    EXPECT_EQ(o.vertices(), smooth);
}

TEST(SceneObjectColour, setColorAppliesToTheWholeSubtree)
{
    const Family f;
    f.parent->setColor(Qt::red);
    for (const ObjectPtr& o : f.all()) {
        EXPECT_EQ(o->color(), QColor(Qt::red));
        for (const VertexStride& v : verticesOf(*o))
            expectColor(v.color, 1, 0, 0);
    }
}

TEST(SceneObjectColour, setDisplayModeAppliesModeAndColourToTheSubtree)
{
    const Family f;
    f.parent->setColor(Qt::red);
    f.grandchild->setColor(Qt::blue);
    f.parent->setDisplayMode(3);
    for (const ObjectPtr& o : f.all()) {
        EXPECT_EQ(o->displayMode(), 3);
        EXPECT_EQ(o->color(), QColor(Qt::red)) << "the colour of the parent is applied with the mode";
    }
}

// ---- opacity --------------------------------------------------------------------------------

class ImmediateAlpha : public testing::TestWithParam<int>
{
};

TEST_P(ImmediateAlpha, appliesToTheSubtreeAndCancelsARunningChange)
{
    const Family f;
    f.parent->setAlpha(0.0f, 10000);
    ASSERT_TRUE(f.parent->hasTransition());
    f.parent->setAlpha(0.25f, GetParam());
    EXPECT_FALSE(f.parent->hasTransition());
    for (const ObjectPtr& o : f.all()) {
        EXPECT_EQ(o->alpha(), 0.25f);
        EXPECT_TRUE(o->isChanged());
        EXPECT_FALSE(o->isDrawnSinceChange());
        for (const VertexStride& v : verticesOf(*o)) {
            EXPECT_EQ(v.color[3], 0.25f);
            EXPECT_EQ(v.baseColor[3], 1.0f);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(SceneObjectAlpha, ImmediateAlpha, testing::Values(0, -5, -1000),
                         [](const auto& row) { return "minus" + std::to_string(-row.param) + "ms"; });

TEST(SceneObjectAlpha, timedSetAlphaStartsATransitionOnTheParentOnly)
{
    const Family f;
    f.parent->setAlpha(0.25f, 500);
    EXPECT_TRUE(f.parent->hasTransition());
    EXPECT_FALSE(f.child->hasTransition());
    EXPECT_FALSE(f.grandchild->hasTransition());
    for (const ObjectPtr& o : f.all()) {
        EXPECT_EQ(o->alpha(), 1.0f);
        for (const VertexStride& v : verticesOf(*o))
            EXPECT_EQ(v.color[3], 1.0f);
    }
}

TEST(SceneObjectAlpha, applyAlphaKeepsARunningTransition)
{
    const Family f;
    f.parent->setAlpha(0.0f, 10000);
    f.parent->applyAlpha(0.5f);
    EXPECT_EQ(f.parent->alpha(), 0.5f);
    EXPECT_TRUE(f.parent->hasTransition());
    f.child->setAlpha(0.0f, 10000);
    f.parent->setAlpha(1.0f, 0);
    EXPECT_TRUE(f.child->hasTransition()) << "changes of children continue";
}

// ---- clip, light, line width ----------------------------------------------------------------

TEST(SceneObject, setClipAppliesToPresentAndFutureVertices)
{
    const Family f;
    f.parent->setClip(55.5f);
    for (const ObjectPtr& o : f.all()) {
        EXPECT_EQ(o->clip(), 55.5f);
        EXPECT_TRUE(o->isChanged());
        EXPECT_FALSE(o->isDrawnSinceChange());
        for (const VertexStride& v : verticesOf(*o))
            EXPECT_EQ(v.clip, 55.5f);
        o->setVertices(generated(triangleAtOrigin, Qt::green));
        for (const VertexStride& v : verticesOf(*o))
            EXPECT_EQ(v.clip, 55.5f);
    }
}

TEST(SceneObject, newAmbientStrengthRequiresAFrameButNoUpload)
{
    KV3DObject root(QStringLiteral("root"));
    const Family f;
    root.addChild(f.parent);
    settle(root);
    f.parent->setAmbientStrength(0.3f);
    for (const ObjectPtr& o : f.all()) {
        EXPECT_EQ(o->ambientStrength(), 0.3f);
        EXPECT_FALSE(o->isChanged());
        EXPECT_FALSE(o->isDrawnSinceChange());
    }
    EXPECT_FALSE(root.isSettled());
    settle(root);
    f.parent->setAmbientStrength(0.3f);
    EXPECT_TRUE(root.isSettled()) << "an equal value requires no frame";
}

TEST(SceneObject, newLineWidthRequiresAFrameButNoUpload)
{
    KV3DObject root(QStringLiteral("root"));
    const Family f;
    root.addChild(f.parent);
    settle(root);
    f.parent->setLineWidth(3.5f);
    for (const ObjectPtr& o : f.all()) {
        EXPECT_EQ(o->lineWidth(), 3.5f);
        EXPECT_FALSE(o->isChanged());
        EXPECT_FALSE(o->isDrawnSinceChange());
    }
    EXPECT_FALSE(root.isSettled());
    settle(root);
    f.parent->setLineWidth(3.5f);
    EXPECT_TRUE(root.isSettled()) << "an equal value requires no frame";
}

TEST(SceneObject, unchangedParentValuesStillReplaceThoseOfChildren)
{
    const Family f;
    f.child->setLineWidth(9.0f);
    f.parent->setLineWidth(1.0f); // the value of the parent does not change
    EXPECT_EQ(f.child->lineWidth(), 1.0f);
    EXPECT_EQ(f.grandchild->lineWidth(), 1.0f);
    f.child->setAmbientStrength(0.1f);
    f.parent->setAmbientStrength(1.0f);
    EXPECT_EQ(f.child->ambientStrength(), 1.0f);
    EXPECT_EQ(f.grandchild->ambientStrength(), 1.0f);
}

// ---- geometry -------------------------------------------------------------------------------

TEST(SceneObjectGeometry, setGeometryAppliesEveryField)
{
    KV3DObject o(QStringLiteral("o"));
    GeometryData g;
    g.primitiveMode = 0;
    g.vertices = generated({{1, 2, 3}}, Qt::red);
    g.lineWidth = 4.5f;
    g.markerType = 7;
    g.markers = {{Qt::red, {2, -1, 3}}};
    g.markerSize = 6.5f;
    g.markerParam = 0.125f;
    o.setGeometry(g);
    EXPECT_EQ(o.primitiveMode(), 0);
    EXPECT_EQ(o.vertices().size(), 15);
    EXPECT_EQ(o.lineWidth(), 4.5f);
    EXPECT_EQ(o.markerType(), 7);
    EXPECT_EQ(o.markers(), g.markers);
    EXPECT_EQ(o.markerSize(), 6.5f);
    EXPECT_EQ(o.markerParam(), 0.125f);
    EXPECT_TRUE(o.isChanged());
    EXPECT_FALSE(o.isDrawnSinceChange());

    o.setGeometry({});
    EXPECT_EQ(o.primitiveMode(), 4);
    EXPECT_TRUE(o.vertices().isEmpty());
    EXPECT_EQ(o.lineWidth(), 1.0f);
    EXPECT_EQ(o.markerType(), 1);
    EXPECT_TRUE(o.markers().isEmpty());
    EXPECT_EQ(o.markerSize(), -1.0f);
    EXPECT_EQ(o.markerParam(), 0.0f);
}

TEST(SceneObjectGeometry, setGeometryDoesNotAffectChildren)
{
    const Family f;
    GeometryData g;
    g.lineWidth = 4.5f;
    f.parent->setGeometry(g);
    EXPECT_EQ(f.child->lineWidth(), 1.0f);
    EXPECT_EQ(f.child->vertices().size(), 45);
}

struct AmbientRow
{
    int type;
    bool hasMarkers;
    float param;
    float expected; ///< ambient strength of an object that had 0.9 before
};

TEST(SceneObjectGeometry, sphereMarkersTakeTheirAmbientStrengthFromTheParameter)
{
    const AmbientRow rows[] = {{1, true, 0.4f, 0.4f},  {1, true, 0.0f, 1.0f}, {1, true, -2.0f, 1.0f},
                               {1, false, 0.4f, 0.9f}, {2, true, 0.4f, 0.9f}, {3, true, 0.4f, 0.9f},
                               {0, true, 0.4f, 0.9f}};
    for (const AmbientRow& row : rows) {
        KV3DObject o(QStringLiteral("o"));
        const ObjectPtr child = object(QStringLiteral("c"));
        o.addChild(child);
        o.setAmbientStrength(0.9f);
        GeometryData g;
        g.markerType = row.type;
        g.markerParam = row.param;
        if (row.hasMarkers)
            g.markers = {{Qt::red, {2, -1, 3}}};
        o.setGeometry(g);
        EXPECT_EQ(o.ambientStrength(), row.expected) << row.type << " " << row.param;
        EXPECT_EQ(child->ambientStrength(), row.expected) << row.type << " " << row.param;
    }
}

TEST(SceneObjectGeometry, settersGenerateTrianglesSegmentsAndText)
{
    const QList<ColoredTriangle> triangles = {{ColoredPoint{Qt::red, {1, 2, 3}},
                                               ColoredPoint{Qt::green, {4, 5, 7}},
                                               ColoredPoint{Qt::blue, {0, 0, 9}}}};
    KV3DObject o(QStringLiteral("o"));
    o.setTriangles(triangles);
    ASSERT_EQ(o.vertices().size(), 45);
    EXPECT_EQ(o.primitiveMode(), 4);
    const QList<float> ten = kvTriangles(triangles).vertices;
    const auto vertices = verticesOf(o);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(std::memcmp(vertices[i].position, ten.constData() + 10 * i, 6 * sizeof(float)), 0);
        EXPECT_EQ(std::memcmp(vertices[i].baseColor, ten.constData() + 10 * i + 6, 4 * sizeof(float)), 0);
    }

    const QList<ColoredSegment> segments = {{{Qt::red, {1, 2, 3}}, {Qt::blue, {9, 9, 9}}}};
    o.setSegments(segments, false, 0.0f);
    EXPECT_EQ(o.primitiveMode(), 1);
    EXPECT_EQ(o.lineWidth(), 0.0f);
    ASSERT_EQ(o.vertices().size(), 30);
    EXPECT_EQ(verticesOf(o)[0].position[0], -2.0f);
    for (const bool hint : {false, true}) {
        o.setSegments(segments, hint, 5.0f);
        EXPECT_EQ(o.primitiveMode(), 4);
        EXPECT_EQ(o.lineWidth(), 5.0f);
        const QList<float> ribbon = kvSegments(segments, hint, 5.0f).vertices;
        ASSERT_EQ(o.vertices().size() / 15, ribbon.size() / 10);
        for (qsizetype i = 0; i < ribbon.size() / 10; ++i)
            ASSERT_EQ(o.vertices().at(15 * i + 2), ribbon.at(10 * i + 2));
    }

    QMatrix4x4 transform;
    transform.translate(3, 4, 5);
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(16);
    o.setLineWidth(2.9f);
    o.setTextOutline(QStringLiteral("a*"), transform, font, Qt::yellow);
    const GeometryData text = kvTextOutline(QStringLiteral("a*"), transform, font, Qt::yellow, 2);
    EXPECT_EQ(o.lineWidth(), 2.0f);
    EXPECT_EQ(o.vertices().size() / 15, text.vertices.size() / 10);
    EXPECT_FALSE(o.vertices().isEmpty());
}

// ---- markers --------------------------------------------------------------------------------

namespace {

const QList<ColoredPoint> twoMarkers = {{Qt::red, {50, 0, 0}}, {Qt::blue, {20, 30, -40}}};

/// Maximum distance in L* of a vertex of the first marker from its position.
double markerRadius(const KV3DObject& o)
{
    double radius = 0.0;
    for (const VertexStride& v : verticesOf(o)) {
        if (v.baseColor[0] == 1.0f)
            radius = std::max(radius, std::abs(double(v.position[1]) - 50.0));
    }
    return radius;
}

} // namespace

TEST(SceneObjectMarkers, areStoredAndGenerated)
{
    for (const int type : {1, 2, 3, 9}) {
        KV3DObject o(QStringLiteral("o"));
        o.setMarkers(type, twoMarkers, 6.0f, 0.75f);
        EXPECT_EQ(o.markerType(), type);
        EXPECT_EQ(o.markers(), twoMarkers);
        EXPECT_EQ(o.markerSize(), 6.0f);
        EXPECT_EQ(o.markerParam(), 0.75f);
        EXPECT_EQ(o.vertices().size() / 15, kvMarkers(type, twoMarkers, 6.0f, 0.75f).vertices.size() / 10);
        EXPECT_FALSE(o.vertices().isEmpty());
        EXPECT_EQ(o.ambientStrength(), type == 1 ? 0.75f : 1.0f);
    }
}

TEST(SceneObjectMarkers, setMarkersWithTheSameArgumentsDoesNothing)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr o = object(QStringLiteral("o"));
    root.addChild(o);
    o->setMarkers(2, twoMarkers, 6.0f, 0.75f);
    settle(root);
    o->setMarkers(2, {{Qt::red, {50, 0, 0}}, {Qt::blue, {20, 30, -40}}}, 6.0f, 0.75f);
    EXPECT_FALSE(o->isChanged());
    EXPECT_TRUE(root.isSettled());
}

TEST(SceneObjectMarkers, setMarkersWithAnotherArgumentRegenerates)
{
    const QList<ColoredPoint> recoloured = {{Qt::green, {50, 0, 0}}, {Qt::blue, {20, 30, -40}}};
    const QList<ColoredPoint> moved = {{Qt::red, {50, 0, 0}}, {Qt::blue, {20, 30, -40.5f}}};
    const QList<ColoredPoint> fewer = {{Qt::red, {50, 0, 0}}};
    const std::vector<std::tuple<int, QList<ColoredPoint>, float, float>> others = {
        {3, twoMarkers, 6.0f, 0.75f}, {2, recoloured, 6.0f, 0.75f}, {2, moved, 6.0f, 0.75f},
        {2, fewer, 6.0f, 0.75f},      {2, twoMarkers, 6.5f, 0.75f}, {2, twoMarkers, 6.0f, 0.5f},
        {2, {}, 6.0f, 0.75f}};
    for (const auto& [type, markers, size, param] : others) {
        KV3DObject root(QStringLiteral("root"));
        const ObjectPtr o = object(QStringLiteral("o"));
        root.addChild(o);
        o->setMarkers(2, twoMarkers, 6.0f, 0.75f);
        settle(root);
        o->setMarkers(type, markers, size, param);
        EXPECT_TRUE(o->isChanged());
        EXPECT_FALSE(root.isSettled());
        EXPECT_EQ(o->markers(), markers);
        EXPECT_EQ(o->markerType(), type);
        EXPECT_EQ(o->markerSize(), size);
        EXPECT_EQ(o->markerParam(), param);
        EXPECT_EQ(o->vertices().isEmpty(), markers.isEmpty());
    }
}

TEST(SceneObjectMarkers, setMarkerSizeCanBeCalledRepeatedly)
{
    for (const int type : {1, 2, 3, 9}) {
        const double bar = type == 2 ? 0.5 / 1.5 : 0.0; // thickness of the ribbons
        KV3DObject o(QStringLiteral("o"));
        o.setMarkers(type, twoMarkers, 6.0f, 0.75f);
        EXPECT_NEAR(markerRadius(o), 3.0 + bar, 1e-4);
        for (const float size : {20.0f, 1.5f, 8.0f}) {
            o.setMarkerSize(size);
            EXPECT_EQ(o.markerSize(), size);
            EXPECT_EQ(o.markers(), twoMarkers);
            EXPECT_EQ(o.markerType(), type);
            EXPECT_EQ(o.markerParam(), 0.75f);
            EXPECT_NEAR(markerRadius(o), 0.5 * size + bar, 1e-4) << "type " << type;
        }
    }
}

TEST(SceneObjectMarkers, setMarkerSizeWithThePresentSizeDoesNothing)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr o = object(QStringLiteral("o"));
    root.addChild(o);
    o->setMarkers(1, twoMarkers, 6.0f, 0.75f);
    settle(root);
    o->setMarkerSize(6.0f);
    EXPECT_FALSE(o->isChanged());
    EXPECT_TRUE(root.isSettled());
}

TEST(SceneObjectMarkers, setMarkerSizeAppliesToTheWholeSubtree)
{
    const Family f;
    for (const ObjectPtr& o : f.all())
        o->setMarkers(1, twoMarkers, 6.0f, 0.0f);
    f.parent->setMarkerSize(10.0f);
    for (const ObjectPtr& o : f.all()) {
        EXPECT_EQ(o->markerSize(), 10.0f);
        EXPECT_NEAR(markerRadius(*o), 5.0, 1e-4);
    }
}

TEST(SceneObjectMarkers, setMarkerSizeWithoutMarkersKeepsTheGeometry)
{
    KV3DObject o(QStringLiteral("o"));
    o.setVertices(generated(triangleAtOrigin, Qt::green));
    const QList<float> before = o.vertices();
    o.setMarkerSize(5.0f);
    EXPECT_EQ(o.markerSize(), 5.0f);
    EXPECT_EQ(o.vertices(), before);
    EXPECT_EQ(o.primitiveMode(), 4);
}

TEST(SceneObjectMarkers, sameMarkersAfterOtherGeometryAreGeneratedAgain)
{
    KV3DObject o(QStringLiteral("o"));
    o.setMarkers(1, twoMarkers, 6.0f, 0.0f);
    const QList<float> first = o.vertices();
    o.setSegments({{{Qt::red, {1, 2, 3}}, {Qt::blue, {9, 9, 9}}}}, false, 0.0f);
    EXPECT_TRUE(o.markers().isEmpty());
    o.setMarkers(1, twoMarkers, 6.0f, 0.0f);
    EXPECT_EQ(o.vertices(), first);
}

// ---- overrides ------------------------------------------------------------------------------

namespace {

/// Records calls of virtual functions.
class Recorder : public KV3DObject
{
public:
    explicit Recorder(const QString& id) : KV3DObject(QStringLiteral("Recorder"), id) {}

    std::vector<std::string> calls;
    float ownAlpha = -1.0f; ///< returned by alpha() unless negative

    void setAlpha(float a, int ms) override
    {
        calls.push_back("setAlpha");
        KV3DObject::setAlpha(a, ms);
    }
    void applyAlpha(float a) override
    {
        calls.push_back("applyAlpha");
        KV3DObject::applyAlpha(a);
    }
    float alpha() const override { return ownAlpha < 0.0f ? KV3DObject::alpha() : ownAlpha; }
    void setDisplayMode(int mode) override
    {
        calls.push_back("setDisplayMode");
        KV3DObject::setDisplayMode(mode);
    }
    void setLineWidth(float width) override
    {
        calls.push_back("setLineWidth");
        KV3DObject::setLineWidth(width);
    }
    void setMarkerSize(float size) override
    {
        calls.push_back("setMarkerSize");
        KV3DObject::setMarkerSize(size);
    }
    void setClip(float clipValue) override
    {
        calls.push_back("setClip");
        KV3DObject::setClip(clipValue);
    }
    void setAmbientStrength(float strength) override
    {
        calls.push_back("setAmbientStrength");
        KV3DObject::setAmbientStrength(strength);
    }
    void applyColor(const QColor& c, int mode) override
    {
        calls.push_back("applyColor");
        KV3DObject::applyColor(c, mode);
    }
};

} // namespace

TEST(SceneObjectOverrides, parentCallsTheVirtualSettersOfItsChildren)
{
    KV3DObject parent(QStringLiteral("p"));
    const auto child = QSharedPointer<Recorder>::create(QStringLiteral("c"));
    parent.addChild(child);
    const auto callsOf = [&](auto change) {
        child->calls.clear();
        change();
        return child->calls;
    };
    EXPECT_THAT(callsOf([&] { parent.applyAlpha(0.5f); }), ElementsAre("applyAlpha"));
    EXPECT_THAT(callsOf([&] { parent.setAlpha(0.25f, 0); }), ElementsAre("applyAlpha"));
    EXPECT_THAT(callsOf([&] { parent.setAlpha(0.5f, 500); }), ElementsAre());
    EXPECT_THAT(callsOf([&] { parent.setColor(Qt::red); }), ElementsAre("applyColor"));
    EXPECT_THAT(callsOf([&] { parent.setColor(Qt::red); }), ElementsAre());
    EXPECT_THAT(callsOf([&] { parent.setLineWidth(3.0f); }), ElementsAre("setLineWidth"));
    EXPECT_THAT(callsOf([&] { parent.setMarkerSize(3.0f); }), ElementsAre("setMarkerSize"));
    EXPECT_THAT(callsOf([&] { parent.setClip(3.0f); }), ElementsAre("setClip"));
    EXPECT_THAT(callsOf([&] { parent.setAmbientStrength(0.5f); }), ElementsAre("setAmbientStrength"));
    // applyColor() of the parent, then setDisplayMode() of the child with its own applyColor().
    EXPECT_THAT(callsOf([&] { parent.setDisplayMode(2); }),
                ElementsAre("applyColor", "setDisplayMode", "applyColor"));
}

TEST(SceneObjectOverrides, setVerticesCallsTheVirtualSetters)
{
    Recorder o(QStringLiteral("o"));
    o.ownAlpha = 0.25f;
    o.setVertices(generated(triangleAtOrigin, Qt::green));
    EXPECT_THAT(o.calls, ElementsAre("applyColor", "applyAlpha", "setClip"));
    for (const VertexStride& v : verticesOf(o))
        EXPECT_EQ(v.color[3], 0.25f) << "the opacity returned by alpha()";
}

TEST(SceneObjectOverrides, immediateSetAlphaCallsApplyAlpha)
{
    Recorder o(QStringLiteral("o"));
    o.setAlpha(0.5f, 0);
    EXPECT_THAT(o.calls, ElementsAre("setAlpha", "applyAlpha"));
}
