// SPDX-License-Identifier: Apache-2.0
// The wireframe of a gamut is made when it is first shown, and then looks as if it had always been there.

#include <gamut/KV3DGamutObject.h>
#include <glwindow/CameraState.h>
#include <scene/Generators.h>

#include "support/FakeVelmora.h"
#include "support/SceneCheck.h"

#include <gtest/gtest.h>

#include <QtTest/QTest>

#include <functional>

namespace {

using fakevelmora::Gamut;
using fakevelmora::node;
using fakevelmora::tetrahedron;

constexpr int wireframeMode = 3;
constexpr int maxWaitMs = 60000;

using Object = QSharedPointer<KV3DGamutObject>;

QSharedPointer<KV3DObject> below(const Object& object, const char* name)
{
    return object->childAt({QStringLiteral("Gamut"), QLatin1String(name)});
}

QList<float> wireframeOf(const Object& object)
{
    return below(object, "Wireframe")->vertices();
}

/// Loads @p gamut inside the call.
void install(const Object& object, const Gamut& gamut)
{
    fakevelmora::onInit([gamut](const fakevelmora::InitCall&) { return std::optional(gamut); });
    object->load({{QStringLiteral("ProfileData"), QByteArray("profile A")}}, {}, {});
}

/// Loads @p gamut in the background and waits for it.
void installInBackground(const Object& object, const Gamut& gamut)
{
    fakevelmora::onInit([gamut](const fakevelmora::InitCall&) { return std::optional(gamut); });
    bool done = false;
    object->load({{QStringLiteral("ProfileData"), QByteArray("profile A")}},
                 [&done](const QString&, const QString&, bool) { done = true; }, {});
    EXPECT_TRUE(QTest::qWaitFor([&done] { return done; }, maxWaitMs));
}

void waitForWireframe(const Object& object)
{
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return !below(object, "Wireframe")->isAwaitingVertices(); }, maxWaitMs));
}

/// A gamut with @p count faces that share no vertex.
Gamut manyFaces(int count)
{
    Gamut gamut = tetrahedron(QStringLiteral("many"));
    gamut.faces.clear();
    for (int i = 0; i < count; ++i) {
        const auto x = static_cast<float>(i % 100), y = static_cast<float>(i / 100);
        gamut.faces.append({node({x, y, 0}), node({x + 0.5f, y, 1}), node({x, y + 0.5f, 2})});
    }
    return gamut;
}

class GamutWireframe : public fakevelmora::Case
{
protected:
    static Object newObject() { return Object::create(QStringLiteral("sRGB")); }

    /// The wireframe of an object that had it when @p change was made.
    static QList<float> afterwards(const std::function<void(const Object&)>& change)
    {
        const Object object = newObject();
        object->setDisplayMode(wireframeMode);
        install(object, tetrahedron(QStringLiteral("A")));
        EXPECT_FALSE(wireframeOf(object).isEmpty());
        change(object);
        return wireframeOf(object);
    }
};

} // namespace

TEST_F(GamutWireframe, hasNoVerticesUntilItIsShown)
{
    const Object object = newObject();
    install(object, tetrahedron(QStringLiteral("A")));
    for (const int mode : {0, 1, 2, 17}) {
        object->setDisplayMode(mode);
        EXPECT_TRUE(wireframeOf(object).isEmpty());
        EXPECT_FALSE(below(object, "Wireframe")->isAwaitingVertices());
    }
}

TEST_F(GamutWireframe, isMadeInModeThree)
{
    const Object object = newObject();
    install(object, tetrahedron(QStringLiteral("A")));
    object->setDisplayMode(wireframeMode);
    waitForWireframe(object);

    QList<ColoredSegment> edges; // of every face: kvSegments() ignores repetitions
    const auto faces = tetrahedron({}).faces;
    for (const auto& face : faces)
        for (qsizetype i = 0; i < 3; ++i) {
            const auto point = [&face](qsizetype k) {
                const QList<float>& lab = face[k % 3].lab;
                return ColoredPoint{kvLabToColor(lab), QVector3D(lab[0], lab[1], lab[2])};
            };
            edges.append({point(i), point(i + 1)});
        }
    kvtest::expectGeometry(*below(object, "Wireframe"), kvSegments(edges, true, 1.2f));
}

TEST_F(GamutWireframe, replacesTheSurfaceAtOnce)
{
    const Object object = newObject();
    install(object, tetrahedron(QStringLiteral("A")));
    object->setDisplayMode(wireframeMode);
    EXPECT_FALSE(below(object, "Front")->isVisible());
    EXPECT_TRUE(below(object, "Wireframe")->isVisible());
}

TEST_F(GamutWireframe, theGamutIsNotSettledBeforeItIsMade)
{
    const Object object = newObject();
    install(object, tetrahedron(QStringLiteral("A")));
    object->setDisplayMode(wireframeMode);
    const auto draw = [&object] {
        object->draw(nullptr, {}, {}, {}, {}, {}, Qt::white, KVPassOpaque);
        object->draw(nullptr, {}, {}, {}, {}, {}, Qt::white, KVPassTranslucent);
    };
    draw();
    EXPECT_FALSE(object->isSettled());
    waitForWireframe(object);
    EXPECT_FALSE(object->isSettled()) << "it is not drawn yet";
    draw();
    EXPECT_TRUE(object->isSettled());
}

TEST_F(GamutWireframe, settingsBeforeItIsShownReachIt)
{
    const std::function<void(const Object&)> changes[] = {
        [](const Object& object) { object->setAlpha(0.25f, 0); },
        [](const Object& object) { object->setClip(42.0f); },
        [](const Object& object) { object->setColor(QColor(200, 100, 50)); },
        [](const Object& object) {
            object->setColor(QColor(200, 100, 50));
            object->setDisplayMode(2);
        },
        [](const Object& object) {
            object->setColor(Qt::red);
            object->restoreColors();
        },
    };
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        const Object object = newObject();
        install(object, tetrahedron(QStringLiteral("A")));
        changes[i](object);
        object->setDisplayMode(wireframeMode);
        waitForWireframe(object);
        const QList<float> expected = afterwards([&](const Object& there) {
            changes[i](there);
            there->setDisplayMode(wireframeMode);
        });
        EXPECT_EQ(wireframeOf(object), expected) << "change " << i;
    }
}

TEST_F(GamutWireframe, settingsWhileItIsMadeReachIt)
{
    const auto change = [](const Object& object) {
        object->setAlpha(0.5f, 0);
        object->setClip(30.0f);
        object->setColor(QColor(10, 200, 50));
    };
    const Object object = newObject();
    install(object, tetrahedron(QStringLiteral("A")));
    object->setDisplayMode(wireframeMode);
    ASSERT_TRUE(below(object, "Wireframe")->isAwaitingVertices());
    change(object);
    waitForWireframe(object);
    EXPECT_EQ(wireframeOf(object), afterwards(change));
}

TEST_F(GamutWireframe, aLineWidthFromTheHostStays)
{
    const Object object = newObject();
    install(object, tetrahedron(QStringLiteral("A")));
    object->solid()->setLineWidth(5.0f);
    object->setDisplayMode(wireframeMode);
    waitForWireframe(object);
    EXPECT_EQ(below(object, "Wireframe")->lineWidth(), 5.0f);
}

TEST_F(GamutWireframe, aLoadInModeThreeMakesIt)
{
    const Object object = newObject();
    object->setDisplayMode(wireframeMode);
    installInBackground(object, tetrahedron(QStringLiteral("A")));
    EXPECT_FALSE(below(object, "Wireframe")->isAwaitingVertices());
    EXPECT_FALSE(wireframeOf(object).isEmpty());

    installInBackground(object, manyFaces(7));
    EXPECT_FALSE(below(object, "Wireframe")->isAwaitingVertices());
    EXPECT_EQ(below(object, "Front")->vertices().size(), 7 * 3 * 15);
    const QList<float> reloaded = wireframeOf(object);
    const Object fresh = newObject();
    fresh->setDisplayMode(wireframeMode);
    install(fresh, manyFaces(7));
    EXPECT_EQ(reloaded, wireframeOf(fresh));
}

TEST_F(GamutWireframe, modeThreeDuringALoadMakesItAfterwards)
{
    const Object object = newObject();
    fakevelmora::onInit(
        [](const fakevelmora::InitCall&) { return std::optional(tetrahedron(QStringLiteral("A"))); });
    bool done = false;
    object->load({{QStringLiteral("ProfileData"), QByteArray("profile A")}},
                 [&done](const QString&, const QString&, bool) { done = true; }, {});
    object->setDisplayMode(wireframeMode);
    ASSERT_TRUE(QTest::qWaitFor([&done] { return done; }, maxWaitMs));
    waitForWireframe(object);
    EXPECT_FALSE(wireframeOf(object).isEmpty());
}

TEST_F(GamutWireframe, aReloadInAnotherModeDropsIt)
{
    const Object object = newObject();
    object->setDisplayMode(wireframeMode);
    install(object, tetrahedron(QStringLiteral("A")));
    object->setDisplayMode(1);
    EXPECT_FALSE(wireframeOf(object).isEmpty()) << "kept for the next time";
    install(object, tetrahedron(QStringLiteral("B")));
    EXPECT_TRUE(wireframeOf(object).isEmpty());
    object->setDisplayMode(wireframeMode);
    waitForWireframe(object);
    EXPECT_FALSE(wireframeOf(object).isEmpty());
}

TEST_F(GamutWireframe, leavingModeThreeCancelsIt)
{
    const Object object = newObject();
    install(object, manyFaces(500));
    object->setDisplayMode(wireframeMode);
    object->setDisplayMode(1);
    EXPECT_FALSE(below(object, "Wireframe")->isAwaitingVertices());
    QTest::qWait(0);
    EXPECT_TRUE(wireframeOf(object).isEmpty());
    object->setDisplayMode(wireframeMode);
    waitForWireframe(object);
    EXPECT_FALSE(wireframeOf(object).isEmpty());
}

TEST_F(GamutWireframe, aReloadWhileItIsMadeMakesThatOfTheNewGamut)
{
    const Object object = newObject();
    install(object, manyFaces(500));
    object->setDisplayMode(wireframeMode);
    install(object, tetrahedron(QStringLiteral("B")));
    waitForWireframe(object);
    EXPECT_EQ(wireframeOf(object), afterwards([](const Object&) {}));
}

TEST_F(GamutWireframe, theGamutMayBeDestroyedWhileItIsMade)
{
    for (int i = 0; i < 5; ++i) {
        Object object = newObject();
        install(object, manyFaces(500));
        object->setDisplayMode(wireframeMode);
        QTest::qWait(i);
        object.reset();
    }
    QTest::qWait(0);
}
