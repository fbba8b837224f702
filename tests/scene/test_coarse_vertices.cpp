// SPDX-License-Identifier: Apache-2.0
#include "ObjectProbe.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

using namespace kvtest;
using testing::Each;
using testing::ElementsAre;
using testing::FloatEq;
using testing::IsEmpty;

namespace {

/// A scene with one translucent surface that has three exact triangles, at 1, 2 and 3, and a coarse one at 9.
struct Scene
{
    Scene()
    {
        surface->setVertices(trianglesAt({1, 2, 3}));
        surface->applyAlpha(0.5f);
        surface->setCoarseVertices(trianglesAt({9}));
        group->addChild(surface);
        root.addChild(group);
    }

    /// Depths of the triangles that a frame draws, ascending.
    std::vector<float> frame()
    {
        drawFrame(root, CameraState({0, 50, -400}, {0, 50, 0}));
        std::vector<float> depths;
        const QList<float>& batch = root.sortedVertices();
        for (qsizetype i = 0; i < batch.size(); i += qsizetype(3) * kvVertexFloats)
            depths.push_back(batch.at(i + 2));
        std::sort(depths.begin(), depths.end());
        return depths;
    }

    /// One value of each vertex that a frame draws; @p at is its place in the record.
    std::vector<float> drawn(int at)
    {
        frame();
        std::vector<float> values;
        for (qsizetype i = at; i < root.sortedVertices().size(); i += kvVertexFloats)
            values.push_back(root.sortedVertices().at(i));
        return values;
    }

    KV3DObject root{QStringLiteral("root"), QString()};
    ObjectPtr group = object(QStringLiteral("group"));
    ObjectPtr surface = object(QStringLiteral("Front"));
};

constexpr int alphaAt = 9, clipAt = 14, redAt = 6;

} // namespace

TEST(CoarseVertices, areDrawnInsteadOfTheExactOnesWhileTheyAreShown)
{
    Scene scene;
    EXPECT_THAT(scene.frame(), ElementsAre(1, 2, 3));
    EXPECT_TRUE(scene.root.showCoarse(true));
    EXPECT_THAT(scene.frame(), ElementsAre(9));
    EXPECT_THAT(scene.frame(), ElementsAre(9));
    EXPECT_FALSE(scene.root.showCoarse(false));
    EXPECT_THAT(scene.frame(), ElementsAre(1, 2, 3));
    EXPECT_EQ(scene.surface->vertices().size(), 9 * kvVertexFloats) << "hosts see the exact ones";
}

TEST(CoarseVertices, doNotUnsettleTheScene)
{
    Scene scene;
    scene.frame();
    ASSERT_TRUE(scene.root.isSettled());
    scene.root.showCoarse(true);
    EXPECT_TRUE(scene.root.isSettled());
    scene.frame();
    EXPECT_TRUE(scene.root.isSettled());
}

TEST(CoarseVertices, areSortedOnceWhileNothingMoves)
{
    Scene scene;
    scene.root.showCoarse(true);
    scene.frame();
    const int sorts = scene.root.sortCount();
    scene.root.showCoarse(true);
    scene.frame();
    EXPECT_EQ(scene.root.sortCount(), sorts);
}

TEST(CoarseVertices, objectsWithoutThemDrawTheExactOnes)
{
    Scene scene;
    const ObjectPtr other = object(QStringLiteral("other"));
    other->setVertices(trianglesAt({5}));
    other->applyAlpha(0.5f);
    scene.root.addChild(other);
    EXPECT_TRUE(scene.root.showCoarse(true));
    EXPECT_THAT(scene.frame(), ElementsAre(5, 9));
}

TEST(CoarseVertices, ofHiddenObjectsAreNotShown)
{
    Scene scene;
    scene.surface->setVisible(false);
    EXPECT_FALSE(scene.root.showCoarse(true));
    scene.surface->setVisible(true);
    scene.group->setVisible(false);
    EXPECT_FALSE(scene.root.showCoarse(true));
    EXPECT_THAT(scene.frame(), IsEmpty());
}

TEST(CoarseVertices, haveTheStyleThatTheObjectHasAndGets)
{
    Scene scene;
    scene.surface->applyAlpha(0.25f);
    scene.surface->setClip(70.0f);
    scene.surface->setCoarseVertices(trianglesAt({9})); // set before
    scene.root.showCoarse(true);
    EXPECT_THAT(scene.drawn(alphaAt), Each(FloatEq(0.25f)));
    EXPECT_THAT(scene.drawn(clipAt), Each(FloatEq(70.0f)));
    scene.surface->applyAlpha(0.75f); // set after
    scene.surface->setClip(30.0f);
    EXPECT_THAT(scene.drawn(alphaAt), Each(FloatEq(0.75f)));
    EXPECT_THAT(scene.drawn(clipAt), Each(FloatEq(30.0f)));

    EXPECT_THAT(scene.drawn(redAt), Each(FloatEq(0.0f))) << "green";
    scene.surface->setColor(Qt::white); // shaded by lightness: white is half as bright at L* 25
    EXPECT_THAT(scene.drawn(redAt), ElementsAre(0.0f, 0.0f, FloatEq(0.02f)));
    scene.surface->restoreColors();
    EXPECT_THAT(scene.drawn(redAt), Each(FloatEq(0.0f)));
    scene.surface->setColor(Qt::white);
    scene.surface->setCoarseVertices(trianglesAt({9}));
    EXPECT_THAT(scene.drawn(redAt), ElementsAre(0.0f, 0.0f, FloatEq(0.02f)));
}

TEST(CoarseVertices, lastUntilTheExactOnesAreReplaced)
{
    Scene scene;
    scene.root.showCoarse(true);
    scene.frame();
    scene.surface->setVertices(trianglesAt({4}));
    EXPECT_FALSE(scene.surface->hasCoarseVertices());
    EXPECT_THAT(scene.frame(), ElementsAre(4));
    GeometryData geometry;
    geometry.vertices = trianglesAt({6});
    scene.surface->setCoarseVertices(trianglesAt({9}));
    scene.surface->setGeometry(geometry);
    EXPECT_FALSE(scene.surface->hasCoarseVertices());
}
