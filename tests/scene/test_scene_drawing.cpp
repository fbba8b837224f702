// SPDX-License-Identifier: Apache-2.0
#include "ObjectProbe.h"
#include "support/AllocationCount.h"
#include "support/Vec3d.h"

#include <gmock/gmock.h>

#include <QtCore/QThread>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <thread>

using namespace kvtest;
using testing::ElementsAre;

namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration d)
{
    return std::chrono::duration<double, std::milli>(d).count();
}

/// The in-out sine in double precision.
double inOutSine(double p)
{
    p = std::clamp(p, 0.0, 1.0);
    return 0.5 * (1.0 - std::cos(M_PI * p));
}

/// Checks an opacity change against the times measured around each call: the alpha must lie between the
/// values for the earliest and for the latest time that the object can have used.
class TimedChange
{
public:
    TimedChange(KV3DObject& o, float to, int ms) : m_object(o), m_from(o.alpha()), m_to(to), m_ms(ms)
    {
        m_startEarliest = Clock::now();
        o.setAlpha(to, ms);
        m_startLatest = Clock::now();
    }

    /// Draws a frame and checks its alpha. True if the change had certainly not ended yet.
    bool expectAlphaAfterFrame()
    {
        const auto before = Clock::now();
        drawFrame(m_object);
        const auto after = Clock::now();
        // The object measures whole milliseconds.
        const double min = inOutSine((milliseconds(before - m_startLatest) - 1.0) / m_ms);
        const double max = inOutSine((milliseconds(after - m_startEarliest) + 1.0) / m_ms);
        const double a = m_from + (m_to - m_from) * min;
        const double b = m_from + (m_to - m_from) * max;
        EXPECT_GE(m_object.alpha(), std::min(a, b) - 1e-4);
        EXPECT_LE(m_object.alpha(), std::max(a, b) + 1e-4);
        return milliseconds(after - m_startEarliest) < m_ms;
    }

    void sleepUntil(int ms) const
    {
        std::this_thread::sleep_until(m_startLatest + std::chrono::milliseconds(ms));
    }

private:
    KV3DObject& m_object;
    double m_from;
    double m_to;
    double m_ms;
    Clock::time_point m_startEarliest, m_startLatest;
};

/// Duration of changes that do not end while a test runs, but advance measurably within milliseconds.
constexpr int endlessMs = 100000;

CameraState cameraAt(const QVector3D& eye)
{
    return CameraState(eye, {0, 50, 0});
}

ObjectPtr surface(const QString& id, const std::vector<float>& depths, float alpha)
{
    const ObjectPtr o = object(id);
    o->setVertices(trianglesAt(depths));
    o->applyAlpha(alpha);
    return o;
}

/// Depths of the triangles of the batch in drawing order.
std::vector<float> batchDepths(const KV3DObject& root)
{
    std::vector<float> depths;
    const QList<float>& batch = root.sortedVertices();
    EXPECT_EQ(batch.size() % 45, 0);
    for (qsizetype i = 0; i + 45 <= batch.size(); i += 45)
        depths.push_back(batch.at(i + 2));
    return depths;
}

std::vector<float> sortedDepths(const KV3DObject& root)
{
    std::vector<float> depths = batchDepths(root);
    std::sort(depths.begin(), depths.end());
    return depths;
}

/// A recorded call of a draw check.
struct Asked
{
    std::string by;
    std::string what;
    int flags = 0;
    QMatrix4x4 worldToCamera, cameraToView, model;
    CameraState camera;
};

class RecordingCheck : public KV3DObject::IDrawCheckFunctor
{
public:
    RecordingCheck(const char* name, std::vector<Asked>& log) : m_name(name), m_log(log) {}

    int refusedPass = 0;
    QMatrix4x4 adjusted; ///< returned by adjustModel(), unless it is the identity

    bool accept(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView, const QMatrix4x4& model,
                const CameraState& camera, int flags) override
    {
        m_log.push_back({m_name, "accept", flags, worldToCamera, cameraToView, model, camera});
        return flags != refusedPass;
    }
    QMatrix4x4 adjustModel(const QMatrix4x4& worldToCamera, const QMatrix4x4& cameraToView,
                           const QMatrix4x4& model, const CameraState& camera) override
    {
        m_log.push_back({m_name, "adjust", 0, worldToCamera, cameraToView, model, camera});
        return adjusted.isIdentity() ? model : adjusted;
    }

private:
    std::string m_name;
    std::vector<Asked>& m_log;
};

std::vector<std::string> acceptedBy(const std::vector<Asked>& log, int flags)
{
    std::vector<std::string> names;
    for (const Asked& a : log) {
        if (a.what == "accept" && a.flags == flags)
            names.push_back(a.by);
    }
    return names;
}

QSharedPointer<RecordingCheck> watch(const ObjectPtr& o, const char* name, std::vector<Asked>& log)
{
    const auto check = QSharedPointer<RecordingCheck>::create(name, log);
    o->setDrawCheck(check);
    return check;
}

} // namespace

// ---- opacity changes ------------------------------------------------------------------------

TEST(OpacityChange, followsAnInOutSine)
{
    const ObjectPtr o = object(QStringLiteral("o"));
    o->setVertices(trianglesAt({0}));
    TimedChange change(*o, 0.0f, 1000);
    change.expectAlphaAfterFrame();
    for (const int ms : {100, 250, 500, 750, 900}) {
        change.sleepUntil(ms);
        if (change.expectAlphaAfterFrame()) {
            EXPECT_TRUE(o->hasTransition());
            EXPECT_FALSE(o->isSettled());
        }
        for (const VertexStride& v : verticesOf(*o))
            EXPECT_EQ(v.color[3], o->alpha());
    }
    change.sleepUntil(1010);
    drawFrame(*o);
    EXPECT_EQ(o->alpha(), 0.0f) << "not exact";
    EXPECT_FALSE(o->hasTransition());
}

TEST(OpacityChange, endsExactlyAtItsTarget)
{
    for (const float target : {0.3f, 1.0f, 0.0f, 0.999f}) {
        const ObjectPtr o = object(QStringLiteral("o"));
        o->applyAlpha(0.7f);
        o->setAlpha(target, 1);
        QThread::msleep(4);
        drawFrame(*o);
        EXPECT_EQ(o->alpha(), target);
        EXPECT_FALSE(o->hasTransition());
    }
}

TEST(OpacityChange, bothPassesOfAFrameUseTheSameOpacity)
{
    const ObjectPtr o = object(QStringLiteral("o"));
    o->setVertices(trianglesAt({0}));
    o->setAlpha(0.0f, 100);
    for (int frame = 0; frame < 12; ++frame) {
        QThread::msleep(10);
        drawPass(*o, KVPassOpaque);
        const float alpha = o->alpha();
        QThread::msleep(4);
        drawPass(*o, KVPassTranslucent);
        EXPECT_EQ(o->alpha(), alpha) << "frame " << frame;
    }
    EXPECT_EQ(o->alpha(), 0.0f);
}

TEST(OpacityChange, appliesToTheWholeSubtreeInEachFrame)
{
    const ObjectPtr parent = object(QStringLiteral("parent"));
    const ObjectPtr child = object(QStringLiteral("child"));
    const ObjectPtr grandchild = object(QStringLiteral("grandchild"));
    parent->addChild(child);
    child->addChild(grandchild);
    grandchild->setVertices(trianglesAt({0}));
    grandchild->applyAlpha(0.1f);
    parent->setAlpha(0.0f, endlessMs);
    while (parent->alpha() == 1.0f)
        drawFrame(*parent);
    EXPECT_LT(parent->alpha(), 1.0f);
    EXPECT_GT(parent->alpha(), 0.0f);
    EXPECT_EQ(child->alpha(), parent->alpha());
    EXPECT_EQ(grandchild->alpha(), parent->alpha());
    for (const VertexStride& v : verticesOf(*grandchild))
        EXPECT_EQ(v.color[3], parent->alpha());
}

TEST(OpacityChange, ofAChildContinuesBesideThatOfTheParent)
{
    const ObjectPtr parent = object(QStringLiteral("parent"));
    const ObjectPtr child = object(QStringLiteral("child"));
    parent->addChild(child);
    child->setAlpha(0.5f, endlessMs);
    parent->setAlpha(0.0f, 1);
    QThread::msleep(5);
    drawFrame(*parent);
    EXPECT_EQ(parent->alpha(), 0.0f);
    EXPECT_TRUE(child->hasTransition());
    EXPECT_FALSE(parent->isSettled());
}

TEST(OpacityChange, ofAChildEndsAtItsTargetAfterTheParent)
{
    const ObjectPtr parent = object(QStringLiteral("parent"));
    const ObjectPtr child = object(QStringLiteral("child"));
    parent->addChild(child);
    child->setAlpha(0.5f, 50);
    parent->setAlpha(0.0f, 1);
    QThread::msleep(5);
    drawFrame(*parent);
    EXPECT_EQ(parent->alpha(), 0.0f);
    QThread::msleep(55);
    drawFrame(*parent);
    EXPECT_EQ(child->alpha(), 0.5f);
    EXPECT_FALSE(child->hasTransition());
}

TEST(OpacityChange, startsFromTheOpacityReachedByTheOneItReplaces)
{
    const ObjectPtr o = object(QStringLiteral("o"));
    o->setAlpha(0.0f, 2000);
    while (o->alpha() > 0.9f)
        drawFrame(*o);
    const float reached = o->alpha();
    TimedChange second(*o, 1.0f, 400);
    EXPECT_EQ(o->alpha(), reached);
    for (const int ms : {0, 100, 200, 300}) {
        second.sleepUntil(ms);
        second.expectAlphaAfterFrame();
        EXPECT_GE(o->alpha(), reached - 1e-4) << "the replaced change continued";
    }
    second.sleepUntil(410);
    drawFrame(*o);
    EXPECT_EQ(o->alpha(), 1.0f);
}

TEST(OpacityChange, pausesWhileTheObjectIsHidden)
{
    const ObjectPtr o = object(QStringLiteral("o"));
    o->setVisible(false);
    o->setAlpha(0.0f, 5);
    QThread::msleep(10);
    drawFrame(*o);
    EXPECT_EQ(o->alpha(), 1.0f);
    EXPECT_TRUE(o->hasTransition());
    EXPECT_FALSE(o->isSettled());
    o->setVisible(true);
    drawFrame(*o);
    EXPECT_EQ(o->alpha(), 0.0f);
    EXPECT_FALSE(o->hasTransition());
    drawFrame(*o);
    EXPECT_TRUE(o->isSettled());
}

TEST(OpacityChange, advancesOnlyWhileFramesAreDrawn)
{
    const ObjectPtr o = object(QStringLiteral("o"));
    o->setAlpha(0.0f, 5);
    QThread::msleep(15);
    EXPECT_EQ(o->alpha(), 1.0f);
    EXPECT_TRUE(o->hasTransition());
}

// ---- what is drawn and when a picture is settled --------------------------------------------

TEST(Drawing, objectIsSettledAfterItsFirstFrame)
{
    const ObjectPtr o = object(QStringLiteral("o"));
    EXPECT_FALSE(o->isSettled());
    drawFrame(*o);
    EXPECT_TRUE(o->isDrawnSinceChange());
    EXPECT_TRUE(o->isSettled());
}

TEST(Drawing, everyChangeRequiresOneMoreFrame)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr o = surface(QStringLiteral("o"), {1, 2}, 0.5f);
    root.addChild(o);
    const std::vector<std::pair<const char*, std::function<void()>>> changes = {
        {"vertices", [&] { o->setVertices(trianglesAt({3})); }},
        {"alpha", [&] { o->setAlpha(0.75f, 0); }},
        {"opaque", [&] { o->setAlpha(1.0f, 0); }},
        {"clip", [&] { o->setClip(3.0f); }},
        {"colour", [&] { o->setColor(Qt::red); }},
        {"mode", [&] { o->setDisplayMode(2); }},
        {"width", [&] { o->setLineWidth(2.0f); }},
        {"ambient", [&] { o->setAmbientStrength(0.5f); }},
        {"markers",
         [&] {
             o->setMarkers(1, {{Qt::red, {1, 2, 3}}}, 2.0f, 0.0f);
         }},
        {"size", [&] { o->setMarkerSize(4.0f); }},
        {"hide", [&] { o->setVisible(false); }},
        {"show", [&] { o->setVisible(true); }},
        {"new child", [&] { o->addChild(object(QStringLiteral("c"))); }},
        {"replaced child", [&] { o->addChild(object(QStringLiteral("c"))); }},
        {"removed child", [&] { o->takeChild(QStringLiteral("c")); }},
    };
    drawFrame(root);
    for (const auto& [name, change] : changes) {
        EXPECT_TRUE(root.isSettled()) << "before " << name;
        change();
        EXPECT_FALSE(root.isSettled()) << "after " << name;
        drawFrame(root);
        EXPECT_TRUE(root.isSettled()) << "drawn after " << name;
    }
}

TEST(Drawing, treeIsUnsettledIfOneDescendantIs)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr a = object(QStringLiteral("a"));
    const ObjectPtr b = object(QStringLiteral("b"));
    const ObjectPtr c = object(QStringLiteral("c"));
    root.addChild(a);
    a->addChild(b);
    root.addChild(c);
    drawFrame(root);
    ASSERT_TRUE(root.isSettled());
    b->setColor(Qt::red);
    EXPECT_FALSE(root.isSettled());
    EXPECT_FALSE(a->isSettled());
    EXPECT_TRUE(c->isSettled());
}

TEST(Drawing, hiddenObjectThatWasNeverDrawnCountsAsSettled)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr hidden = object(QStringLiteral("hidden"));
    const ObjectPtr below = surface(QStringLiteral("below"), {1}, 0.5f);
    const ObjectPtr deeper = surface(QStringLiteral("deeper"), {2}, 1.0f);
    hidden->addChild(below);
    below->addChild(deeper);
    hidden->setVisible(false);
    root.addChild(hidden);
    drawFrame(root);
    EXPECT_TRUE(below->isDrawnSinceChange());
    EXPECT_TRUE(deeper->isDrawnSinceChange());
    EXPECT_TRUE(root.isSettled());
    deeper->setColor(Qt::red);
    drawFrame(root);
    EXPECT_TRUE(root.isSettled());
}

TEST(Drawing, refusedSubtreeCountsAsSettled)
{
    std::vector<Asked> log;
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr refused = surface(QStringLiteral("refused"), {1}, 1.0f);
    const ObjectPtr below = surface(QStringLiteral("below"), {2}, 1.0f);
    refused->addChild(below);
    root.addChild(refused);
    const auto check = watch(refused, "refused", log);
    for (const int pass : {KVPassOpaque, KVPassTranslucent}) {
        check->refusedPass = pass;
        below->setColor(pass == KVPassOpaque ? Qt::red : Qt::blue);
        drawPass(root, pass);
        EXPECT_TRUE(refused->isDrawnSinceChange()) << pass;
        EXPECT_TRUE(below->isDrawnSinceChange()) << pass;
        EXPECT_TRUE(root.isSettled()) << pass;
    }
}

TEST(Drawing, worksWithoutAProgramAndWithoutFunctions)
{
    KV3DObject root(QStringLiteral("root"));
    root.addChild(surface(QStringLiteral("opaque"), {1}, 1.0f));
    root.addChild(surface(QStringLiteral("translucent"), {2}, 0.5f));
    const ObjectPtr lines = object(QStringLiteral("lines"));
    lines->setSegments({{{Qt::red, {1, 2, 3}}, {Qt::blue, {9, 9, 9}}}}, false, 0.0f);
    lines->applyAlpha(0.5f);
    root.addChild(lines);
    drawFrame(root);
    EXPECT_TRUE(root.isSettled());
    for (const ObjectPtr& o : root.children()) {
        EXPECT_FALSE(o->hasBuffer());
        EXPECT_EQ(o->uploadCount(), 0);
    }
    EXPECT_FALSE(root.hasBuffer());
}

// ---- draw checks and order ------------------------------------------------------------------

TEST(DrawCheck, isCalledInBothPassesWithTheArgumentsOfDraw)
{
    std::vector<Asked> log;
    const ObjectPtr o = object(QStringLiteral("o"));
    const auto check = watch(o, "o", log);
    const CameraState camera = cameraAt({30, 40, -120});
    QMatrix4x4 model;
    model.translate(1, 2, 3);
    for (const int pass : {KVPassOpaque, KVPassTranslucent}) {
        log.clear();
        o->draw(nullptr, camera.viewMatrix(), camera.projectionMatrix(), model, camera, {0, 300, 0},
                Qt::white, pass);
        ASSERT_EQ(log.size(), 2u);
        EXPECT_EQ(log[0].what, "adjust");
        EXPECT_EQ(log[1].what, "accept");
        EXPECT_EQ(log[1].flags, pass);
        for (const Asked& a : log) {
            EXPECT_EQ(a.worldToCamera, camera.viewMatrix());
            EXPECT_EQ(a.cameraToView, camera.projectionMatrix());
            EXPECT_EQ(a.model, model);
            EXPECT_TRUE(a.camera == camera);
        }
    }
}

TEST(DrawCheck, acceptGetsTheAdjustedModelAndChildrenTheIncomingOne)
{
    std::vector<Asked> log;
    const ObjectPtr parent = object(QStringLiteral("parent"));
    const ObjectPtr child = object(QStringLiteral("child"));
    parent->addChild(child);
    const auto parentCheck = watch(parent, "parent", log);
    watch(child, "child", log);
    QMatrix4x4 incoming;
    incoming.scale(2.0f);
    parentCheck->adjusted.translate(0, -500, 0);
    const CameraState camera;
    parent->draw(nullptr, camera.viewMatrix(), camera.projectionMatrix(), incoming, camera, {}, Qt::white,
                 KVPassOpaque);
    ASSERT_EQ(log.size(), 4u);
    EXPECT_EQ(log[0].model, incoming) << "adjustModel() must get the incoming model";
    EXPECT_EQ(log[1].model, parentCheck->adjusted) << "accept() must get the adjusted model";
    EXPECT_EQ(log[2].by, "child");
    EXPECT_EQ(log[2].model, incoming);
    EXPECT_EQ(log[3].model, incoming);
}

TEST(DrawCheck, refusalHidesTheSubtreeInThatPassOnly)
{
    std::vector<Asked> log;
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr parent = object(QStringLiteral("parent"));
    const ObjectPtr child = object(QStringLiteral("child"));
    parent->addChild(child);
    root.addChild(parent);
    const auto check = watch(parent, "parent", log);
    watch(child, "child", log);
    for (const int refused : {KVPassOpaque, KVPassTranslucent}) {
        log.clear();
        check->refusedPass = refused;
        drawFrame(root);
        EXPECT_THAT(acceptedBy(log, refused), ElementsAre("parent"));
        EXPECT_THAT(acceptedBy(log, KVPassOpaque + KVPassTranslucent - refused),
                    ElementsAre("parent", "child"));
    }
}

TEST(DrawCheck, isNotCalledForHiddenSubtrees)
{
    std::vector<Asked> log;
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr parent = object(QStringLiteral("parent"));
    const ObjectPtr child = object(QStringLiteral("child"));
    parent->addChild(child);
    root.addChild(parent);
    watch(parent, "parent", log);
    watch(child, "child", log);
    parent->setVisible(false);
    drawFrame(root);
    EXPECT_TRUE(acceptedBy(log, KVPassOpaque).empty());
    EXPECT_TRUE(acceptedBy(log, KVPassTranslucent).empty());
}

TEST(DrawCheck, baseClassAcceptsEverything)
{
    std::vector<Asked> log;
    const ObjectPtr parent = object(QStringLiteral("parent"));
    const ObjectPtr child = object(QStringLiteral("child"));
    parent->addChild(child);
    parent->setDrawCheck(QSharedPointer<KV3DObject::IDrawCheckFunctor>::create());
    watch(child, "child", log);
    drawFrame(*parent);
    EXPECT_THAT(acceptedBy(log, KVPassOpaque), ElementsAre("child"));
    EXPECT_THAT(acceptedBy(log, KVPassTranslucent), ElementsAre("child"));
    KV3DObject::IDrawCheckFunctor base;
    QMatrix4x4 model;
    model.translate(4, 5, 6);
    EXPECT_EQ(base.adjustModel({}, {}, model, {}), model);
    EXPECT_TRUE(base.accept({}, {}, model, {}, 1));
}

TEST(Drawing, bothPassesVisitChildrenInOrder)
{
    for (const char* name : {"root", "other"}) {
        std::vector<Asked> log;
        KV3DObject top(QString::fromLatin1(name));
        const ObjectPtr a = object(QStringLiteral("a"));
        const ObjectPtr b = object(QStringLiteral("b"));
        const ObjectPtr c = object(QStringLiteral("c"));
        const ObjectPtr below = object(QStringLiteral("below"));
        top.addChild(a);
        top.addChild(b, true);
        top.addChild(c);
        a->addChild(below);
        watch(a, "a", log);
        watch(b, "b", log);
        watch(c, "c", log);
        watch(below, "below", log);
        drawFrame(top);
        EXPECT_THAT(acceptedBy(log, KVPassOpaque), ElementsAre("b", "a", "below", "c"));
        EXPECT_THAT(acceptedBy(log, KVPassTranslucent), ElementsAre("b", "a", "below", "c"));
    }
}

TEST(Drawing, childrenOfAnObjectWithOpacityZeroAreDrawn)
{
    std::vector<Asked> log;
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr clear = surface(QStringLiteral("clear"), {1}, 0.0f);
    const ObjectPtr child = surface(QStringLiteral("child"), {2}, 0.5f);
    clear->addChild(child);
    root.addChild(clear);
    watch(child, "child", log);
    drawFrame(root);
    EXPECT_THAT(acceptedBy(log, KVPassOpaque), ElementsAre("child"));
    EXPECT_THAT(acceptedBy(log, KVPassTranslucent), ElementsAre("child"));
    EXPECT_THAT(sortedDepths(root), testing::Contains(2.0f));
}

// ---- the batch of translucent triangles -----------------------------------------------------

TEST(Batch, containsExactlyTheVisibleTranslucentTriangles)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr group = object(QStringLiteral("group"));
    root.addChild(group);
    group->addChild(surface(QStringLiteral("half"), {1, 2}, 0.5f));
    group->addChild(surface(QStringLiteral("nearly"), {3}, 0.999f));
    group->addChild(surface(QStringLiteral("opaque"), {4}, 1.0f));
    const ObjectPtr belowOpaque = surface(QStringLiteral("belowOpaque"), {5}, 0.5f);
    group->child(QStringLiteral("opaque"))->addChild(belowOpaque);

    const ObjectPtr hidden = surface(QStringLiteral("hidden"), {6}, 0.5f);
    hidden->addChild(surface(QStringLiteral("belowHidden"), {7}, 0.5f));
    hidden->setVisible(false);
    group->addChild(hidden);

    for (const int mode : {KVPrimitivePoints, KVPrimitiveLines}) {
        const ObjectPtr o = object(QString::number(mode));
        GeometryData g;
        g.primitiveMode = mode;
        g.vertices = trianglesAt({8, 9});
        o->setGeometry(g);
        o->applyAlpha(0.5f);
        root.addChild(o);
    }
    drawFrame(root, cameraAt({0, 50, -350}));
    EXPECT_THAT(sortedDepths(root), ElementsAre(1, 2, 3, 5));
}

TEST(Batch, containsVertexRecordsInBackToFrontOrder)
{
    KV3DObject root(QStringLiteral("root"));
    QList<float> all;
    for (int i = 0; i < 5; ++i) {
        // Distinct depths, distributed to five objects.
        const ObjectPtr o =
            surface(QString::number(i), {float(10 * i), float(-10 * i - 5), float(70 + 7 * i)},
                    0.25f + 0.1f * float(i));
        root.addChild(o);
        all += o->vertices();
    }
    const QVector3D eye(5, 60, -200);
    drawFrame(root, cameraAt(eye));

    std::vector<std::vector<float>> expected;
    for (qsizetype i = 0; i < all.size(); i += 45)
        expected.emplace_back(all.begin() + i, all.begin() + i + 45);
    const auto distances = [&](const std::vector<float>& t) {
        double nearest = 1e300, sum = 0.0;
        for (std::size_t v = 0; v < 3; ++v) {
            const Vec3d d = Vec3d(t[15 * v], t[15 * v + 1], t[15 * v + 2]) - Vec3d(eye);
            nearest = std::min(nearest, dot(d, d));
            sum += dot(d, d);
        }
        return std::pair(nearest, sum);
    };
    std::stable_sort(expected.begin(), expected.end(),
                     [&](const auto& a, const auto& b) { return distances(a) > distances(b); });
    QList<float> flat;
    for (const auto& t : expected)
        flat.append(QList<float>(t.begin(), t.end()));
    EXPECT_EQ(root.sortedVertices(), flat);
}

TEST(Batch, isSortedAgainOnlyWhenTheEyeMoves)
{
    KV3DObject root(QStringLiteral("root"));
    root.addChild(surface(QStringLiteral("a"), {10, 30}, 0.5f));
    root.addChild(surface(QStringLiteral("b"), {20, 40}, 0.5f));
    drawFrame(root, cameraAt({0, 50, -350}));
    EXPECT_THAT(batchDepths(root), ElementsAre(40, 30, 20, 10));
    EXPECT_EQ(root.sortCount(), 1);
    for (int i = 0; i < 5; ++i)
        drawFrame(root, cameraAt({0, 50, -350}));
    EXPECT_EQ(root.sortCount(), 1);

    drawFrame(root, cameraAt({0, 50, 350}));
    EXPECT_THAT(batchDepths(root), ElementsAre(10, 20, 30, 40));
    EXPECT_EQ(root.sortCount(), 2);

    int expected = 2;
    for (const QVector3D& eye : {QVector3D(0.001f, 50, 350), QVector3D(0.001f, 50.001f, 350),
                                 QVector3D(0.001f, 50.001f, 350.001f)}) {
        drawFrame(root, cameraAt(eye));
        EXPECT_EQ(root.sortCount(), ++expected) << "after a change of one coordinate";
        drawFrame(root, cameraAt(eye));
        EXPECT_EQ(root.sortCount(), expected);
    }

    // Another interest point or projection does not change the order.
    CameraState other({0.001f, 50.001f, 350.001f}, {10, 20, 30});
    other.setOrthogonal(true);
    drawFrame(root, other);
    EXPECT_EQ(root.sortCount(), expected);
}

TEST(Batch, steadySceneAllocatesNothing)
{
    if (!kvtest::countsAllocations())
        GTEST_SKIP() << "allocations are not counted in sanitized builds";
    KV3DObject root(QStringLiteral("root"));
    for (int i = 0; i < 10; ++i)
        root.addChild(surface(QString::number(i), std::vector<float>(200, float(i)), 0.5f));
    const auto orbit = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            const CameraState camera = cameraAt({float(i), 50, -350});
            drawFrame(root, camera); // new eye: sorted again
            drawFrame(root, camera); // same eye
        }
    };
    orbit(0, 2); // buffers are allocated in the first frames
    const std::uint64_t before = kvtest::allocationsSoFar();
    orbit(2, 10);
    EXPECT_EQ(kvtest::allocationsSoFar(), before);
    EXPECT_EQ(root.sortCount(), 10);
    delete new KV3DObject(QStringLiteral("x"));
    EXPECT_GT(kvtest::allocationsSoFar(), before) << "allocations are not counted";
}

TEST(Batch, steadySceneOfAllObjectKindsIsNotSortedAgain)
{
    std::vector<Asked> log;
    KV3DObject root(QStringLiteral("root"));
    root.addChild(surface(QStringLiteral("translucent"), {1}, 0.5f));
    root.addChild(surface(QStringLiteral("opaque"), {2}, 1.0f));
    root.addChild(surface(QStringLiteral("clear"), {3}, 0.0f));
    root.addChild(object(QStringLiteral("empty")));
    const ObjectPtr emptyTranslucent = object(QStringLiteral("emptyTranslucent"));
    emptyTranslucent->applyAlpha(0.5f);
    root.addChild(emptyTranslucent);
    const ObjectPtr hidden = surface(QStringLiteral("hidden"), {4}, 0.5f);
    hidden->addChild(surface(QStringLiteral("belowHidden"), {5}, 0.5f));
    hidden->setVisible(false);
    root.addChild(hidden);
    for (const float alpha : {0.5f, 1.0f}) {
        for (const int mode : {KVPrimitivePoints, KVPrimitiveLines}) {
            const ObjectPtr o = object(QString::number(mode + 10.0f * alpha));
            GeometryData g;
            g.primitiveMode = mode;
            g.vertices = trianglesAt({8, 9});
            o->setGeometry(g);
            o->applyAlpha(alpha);
            root.addChild(o);
        }
    }
    for (const int pass : {KVPassOpaque, KVPassTranslucent}) {
        const ObjectPtr refused = surface(QStringLiteral("refused") + QString::number(pass), {6}, 1.0f);
        refused->addChild(surface(QStringLiteral("belowRefused"), {7}, 1.0f));
        watch(refused, "refused", log)->refusedPass = pass;
        root.addChild(refused);
    }
    const CameraState camera = cameraAt({0, 50, -350});
    drawFrame(root, camera);
    const int sorts = root.sortCount();
    for (int i = 0; i < 5; ++i)
        drawFrame(root, camera);
    EXPECT_EQ(root.sortCount(), sorts);
    EXPECT_TRUE(root.isSettled());
}

TEST(Batch, isRebuiltOnceAfterEachChange)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr a = surface(QStringLiteral("a"), {10}, 0.5f);
    const ObjectPtr b = surface(QStringLiteral("b"), {20}, 0.5f);
    root.addChild(a);
    a->addChild(b);
    const CameraState camera = cameraAt({0, 50, -350});
    drawFrame(root, camera);
    const std::vector<std::function<void()>> changes = {
        [&] { b->setColor(Qt::red); }, [&] { b->setVertices(trianglesAt({30, 40})); },
        [&] { a->setClip(77.0f); },    [&] { b->setAlpha(0.25f, 0); },
        [&] { b->setVisible(false); }, [&] { b->setVisible(true); },
    };
    for (const auto& change : changes) {
        const int sorts = root.sortCount();
        change();
        drawFrame(root, camera);
        EXPECT_EQ(root.sortCount(), sorts + 1);
        drawFrame(root, camera);
        EXPECT_EQ(root.sortCount(), sorts + 1);
    }
    EXPECT_THAT(batchDepths(root), ElementsAre(40, 30, 10));
    for (qsizetype i = 0; i < 2 * 45; i += 15) {
        EXPECT_EQ(root.sortedVertices().at(i + 6), 1.0f) << "old colour";
        EXPECT_EQ(root.sortedVertices().at(i + 9), 0.25f) << "old opacity";
        EXPECT_EQ(root.sortedVertices().at(i + 14), 77.0f) << "old clip value";
    }
}

TEST(Batch, lineWidthAndAmbientStrengthDoNotCauseASort)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr a = surface(QStringLiteral("a"), {10}, 0.5f);
    root.addChild(a);
    drawFrame(root);
    const int sorts = root.sortCount();
    a->setLineWidth(4.0f);
    a->setAmbientStrength(0.4f);
    EXPECT_FALSE(root.isSettled());
    drawFrame(root);
    EXPECT_TRUE(root.isSettled());
    EXPECT_EQ(root.sortCount(), sorts);
}

TEST(Batch, excludesObjectsThatBecomeOpaque)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr a = surface(QStringLiteral("a"), {10}, 0.5f);
    const ObjectPtr b = surface(QStringLiteral("b"), {20}, 0.5f);
    root.addChild(a);
    root.addChild(b);
    drawFrame(root);
    ASSERT_THAT(sortedDepths(root), ElementsAre(10, 20));
    a->setAlpha(1.0f, 0);
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre(20));
    b->setAlpha(1.0f, 0);
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre());
    a->setAlpha(0.999f, 0);
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre(10));
}

TEST(Batch, excludesAnObjectOnceItBecomesOpaque)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr a = surface(QStringLiteral("a"), {10}, 0.5f);
    root.addChild(a);
    drawFrame(root);
    a->setAlpha(1.0f, endlessMs);
    while (a->alpha() == 0.5f)
        drawFrame(root);
    ASSERT_LT(a->alpha(), 1.0f);
    EXPECT_THAT(sortedDepths(root), ElementsAre(10));

    a->setAlpha(1.0f, 100);
    while (a->hasTransition()) {
        QThread::msleep(3);
        drawPass(root, KVPassOpaque);
        QThread::msleep(2);
        drawPass(root, KVPassTranslucent);
        if (a->alpha() < 1.0f) {
            EXPECT_THAT(sortedDepths(root), ElementsAre(10)) << "translucent at " << a->alpha();
        } else {
            EXPECT_THAT(sortedDepths(root), ElementsAre()) << "opaque";
        }
    }
    EXPECT_EQ(a->alpha(), 1.0f);
    const int sorts = root.sortCount();
    drawFrame(root);
    EXPECT_EQ(root.sortCount(), sorts);
    EXPECT_TRUE(root.isSettled());
}

TEST(Batch, excludesRemovedReplacedAndHiddenObjects)
{
    KV3DObject root(QStringLiteral("root"));
    const ObjectPtr group = object(QStringLiteral("group"));
    root.addChild(group);
    for (int i = 1; i <= 3; ++i)
        group->addChild(surface(QString::number(i), {float(10 * i)}, 0.5f));
    drawFrame(root);
    ASSERT_THAT(sortedDepths(root), ElementsAre(10, 20, 30));
    group->takeChild(QStringLiteral("1"));
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre(20, 30));
    group->addChild(surface(QStringLiteral("2"), {25}, 0.5f));
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre(25, 30));
    group->addChild(object(QStringLiteral("3")));
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre(25));
    group->setVisible(false);
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre());
    group->setVisible(true);
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre(25));
    root.takeChild(QStringLiteral("group"));
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre());
}

TEST(Batch, isEmptyAfterReleaseGL)
{
    KV3DObject root(QStringLiteral("root"));
    root.addChild(surface(QStringLiteral("a"), {10}, 0.5f));
    drawFrame(root);
    ASSERT_FALSE(root.sortedVertices().isEmpty());
    root.releaseGL();
    EXPECT_TRUE(root.sortedVertices().isEmpty());
    drawFrame(root);
    EXPECT_TRUE(root.sortedVertices().isEmpty());
    root.addChild(surface(QStringLiteral("b"), {20}, 0.5f));
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre(20));
}

TEST(Batch, isGatheredAgainAfterItWasReleased)
{
    KV3DObject root(QStringLiteral("root"));
    root.addChild(surface(QStringLiteral("a"), {10, 30, 20}, 0.5f));
    drawFrame(root);
    const QList<float> before = root.sortedVertices();
    ASSERT_TRUE(root.isSettled());
    root.releaseBatch();
    EXPECT_EQ(root.sortedVertices().capacity(), 0);
    EXPECT_TRUE(root.isSettled()) << "the picture stays";
    drawFrame(root);
    EXPECT_EQ(root.sortedVertices(), before);
    const int sorts = root.sortCount();
    drawFrame(root);
    EXPECT_EQ(root.sortCount(), sorts) << "only once";
}

TEST(Batch, givesBackTheMemoryOfWhatWasRemoved)
{
    KV3DObject root(QStringLiteral("root"));
    root.addChild(surface(QStringLiteral("many"), std::vector<float>(1000, 10.0f), 0.5f));
    root.addChild(surface(QStringLiteral("one"), {20}, 0.5f));
    drawFrame(root);
    EXPECT_EQ(root.sortedVertices().capacity(), 1001 * 45) << "not more than needed";
    root.takeChild(QStringLiteral("many"));
    drawFrame(root);
    EXPECT_EQ(root.sortedVertices().capacity(), 45);
}

TEST(Batch, onlyTheRootBuildsABatch)
{
    const auto batchOf = [](const QString& name, const QString& id) {
        KV3DObject top(name, id);
        top.addChild(surface(QStringLiteral("a"), {10}, 0.5f));
        drawFrame(top);
        return top.sortedVertices().size();
    };
    EXPECT_EQ(batchOf(QStringLiteral("root"), QString()), 45);
    EXPECT_EQ(batchOf(QStringLiteral("root"), QStringLiteral("other")), 45);
    EXPECT_EQ(batchOf(QStringLiteral("root"), QStringLiteral("root")), 0);
    EXPECT_EQ(batchOf(QStringLiteral("Root"), QString()), 0);
    EXPECT_EQ(batchOf(QStringLiteral("other"), QStringLiteral("root")), 0);
}

TEST(Batch, setNamedRootByTheHostIsAnOrdinaryObject)
{
    KV3DObject root(QStringLiteral("root"));
    const auto set = ObjectPtr::create(QStringLiteral("root"), QStringLiteral("root"));
    set->setVertices(trianglesAt({10}));
    set->applyAlpha(0.5f);
    set->addChild(surface(QStringLiteral("below"), {20}, 0.5f));
    root.addChild(set);
    drawFrame(root);
    EXPECT_THAT(sortedDepths(root), ElementsAre(10, 20));
    EXPECT_TRUE(set->sortedVertices().isEmpty());
    EXPECT_EQ(set->sortCount(), 0);
}
