// SPDX-License-Identifier: Apache-2.0
#include "ViewerCase.h"

#include <gamut/KV3DGamutObject.h>

#include "support/Watchdog.h"

#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>

#include <array>
#include <atomic>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace {

using fakevelmora::Gamut;
using fakevelmora::InitCall;
using fakevelmora::node;
using fakevelmora::tetrahedron;
using kvtest::sorted;
using kvtest::Vertex;
using kvtest::verticesOf;
using kvtest::Watchdog;
using Params = QHash<QString, QVariant>;

using kvtest::id;
using kvtest::other;
using kvtest::unknown;

Params paramsOf(const QByteArray& profile)
{
    return {{QStringLiteral("ProfileData"), profile}};
}

class ViewerGamuts : public ViewerCase
{
protected:
    /// Loads inside the call.
    void loadNow(const QString& gamutId, const QByteArray& profile = "profile A")
    {
        viewer->load(gamutId, paramsOf(profile), {});
    }

    /// A callback that logs its arguments.
    std::function<void(QString, bool)> report(const QString& word = QStringLiteral("loaded"))
    {
        return [this, word](const QString& loadedId, bool ok) {
            EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
            log.append(QStringLiteral("%1 %2 %3").arg(word, loadedId).arg(ok));
        };
    }

    QSharedPointer<KV3DObject> part(const char* name, const QString& gamutId = id) const
    {
        return viewer->getGamut(gamutId)->child(QLatin1String(name));
    }

    /// The engine's computations count how many were started, then wait until they are cancelled.
    void computeUntilCancelled(std::optional<Gamut> answer = std::nullopt)
    {
        fakevelmora::onInit([this, answer](const InitCall& call) {
            ++started;
            call.waitForCancel();
            ++returned;
            return answer;
        });
    }

    QStringList log;
    std::atomic<int> started{0};
    std::atomic<int> returned{0};
};

const QString succeeded = QStringLiteral("loaded sRGB 1");
const QString failed = QStringLiteral("loaded sRGB 0");

} // namespace

// --- Unknown ids ---------------------------------------------------------------------------------

TEST_F(ViewerGamuts, queriesOfAnUnknownIdReturnTheDocumentedDefaults)
{
    loadNow(other);
    EXPECT_TRUE(viewer->getGamut(unknown).isNull());
    EXPECT_FALSE(viewer->exists(unknown));
    EXPECT_FALSE(viewer->gamutVisible(unknown));
    EXPECT_FALSE(viewer->displayGamut(unknown));
    EXPECT_FALSE(viewer->displayProjection(unknown));
    EXPECT_FALSE(viewer->displayPrimaries(unknown));
    EXPECT_EQ(static_cast<int>(viewer->displayMode(unknown)), 1);
    EXPECT_EQ(viewer->gamutAlpha(unknown), 1.0f);
    EXPECT_FALSE(viewer->gamutColor(unknown).isValid());
    EXPECT_EQ(viewer->gamutAmbientStrength(unknown), 1.0f);
    EXPECT_EQ(viewer->volume(unknown), 0.0f);
    EXPECT_TRUE(viewer->params(unknown).isEmpty());
    EXPECT_TRUE(viewer->save(unknown).isEmpty());
    EXPECT_FALSE(viewer->isInsideGamut(unknown, QVector3D(50, 0, 0)));
    EXPECT_TRUE(viewer->faceList(unknown).isEmpty());
    EXPECT_TRUE(fakevelmora::insidePoints().isEmpty());
}

TEST_F(ViewerGamuts, settersOfAnUnknownIdDoNothing)
{
    loadNow(id);
    const QList<float> front = part("Gamut")->child(QStringLiteral("Front"))->vertices();
    viewer->removeGamut(unknown);
    viewer->setGamutVisible(unknown, false);
    viewer->setDisplayGamut(unknown, false);
    viewer->setDisplayProjection(unknown, false);
    viewer->setDisplayPrimaries(unknown, true);
    viewer->setDisplayMode(unknown, KVGamut3DViewer::Wireframe);
    viewer->changeGamutAlpha(unknown, 0.5f, 0);
    viewer->changeGamutColor(unknown, Qt::red);
    viewer->setGamutAmbientStrength(unknown, 0.5f);
    EXPECT_EQ(viewer->gamuts(), QStringList{id});
    EXPECT_TRUE(viewer->gamutVisible(id));
    EXPECT_TRUE(viewer->displayGamut(id));
    EXPECT_TRUE(viewer->displayProjection(id));
    EXPECT_FALSE(viewer->displayPrimaries(id));
    EXPECT_EQ(static_cast<int>(viewer->displayMode(id)), 1);
    EXPECT_EQ(viewer->gamutAlpha(id), 1.0f);
    EXPECT_FALSE(viewer->gamutColor(id).isValid());
    EXPECT_EQ(viewer->gamutAmbientStrength(id), 1.0f);
    EXPECT_EQ(part("Gamut")->child(QStringLiteral("Front"))->vertices(), front);
}

TEST_F(ViewerGamuts, idsAreCaseSensitiveAndSpecificToTheGroupOfGamuts)
{
    loadNow(id);
    viewer->addPointSet(other, {{Qt::red, QVector3D()}});
    EXPECT_FALSE(viewer->exists(QStringLiteral("SRGB")));
    EXPECT_FALSE(viewer->exists(other));
    viewer->removeGamut(other);
    EXPECT_EQ(viewer->pointSet(), QStringList{other});
}

// --- Making and finding a gamut ------------------------------------------------------------------

TEST_F(ViewerGamuts, theFirstLoadAddsGroupAndGamutAtTheEnd)
{
    viewer->addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Sphere, {}, 1, 0);
    loadNow(id);
    loadNow(other);
    EXPECT_EQ(root().childOrder().last(), QStringLiteral("Profiles"));
    EXPECT_EQ(group("Profiles")->name(), QStringLiteral("Profiles"));
    EXPECT_TRUE(group("Profiles")->isVisible());
    EXPECT_EQ(group("Profiles")->childOrder(), (QStringList{id, other}));
    EXPECT_EQ(viewer->getGamut(id), item("Profiles", id));
    EXPECT_EQ(viewer->getGamut(id)->name(), id);
    EXPECT_EQ(viewer->getGamut(id)->id(), id);
    EXPECT_TRUE(viewer->getGamut(id).dynamicCast<KV3DGamutObject>());
    EXPECT_TRUE(viewer->gamutVisible(id));
    EXPECT_EQ(sorted(viewer->gamuts()), sorted({id, other}));
    EXPECT_EQ(viewer->gamuts(), kvtest::idsOf(group("Profiles")->children()));
}

TEST_F(ViewerGamuts, aGamutExistsFromTheCallOfLoadOn)
{
    viewer->load(id, paramsOf("profile A"), report());
    EXPECT_TRUE(viewer->exists(id));
    EXPECT_EQ(viewer->gamuts(), QStringList{id});
    EXPECT_TRUE(viewer->gamutVisible(id));
    EXPECT_TRUE(viewer->getGamut(id)->children().isEmpty());
    EXPECT_EQ(viewer->volume(id), 0.0f);
    EXPECT_TRUE(log.isEmpty());
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
}

TEST_F(ViewerGamuts, removingAGamutLeavesTheGroup)
{
    loadNow(id);
    loadNow(other);
    const QWeakPointer<KV3DObject> watch = viewer->getGamut(id);
    viewer->removeGamut(id);
    EXPECT_FALSE(viewer->exists(id));
    EXPECT_EQ(viewer->gamuts(), QStringList{other});
    EXPECT_TRUE(watch.isNull());
    viewer->removeGamut(other);
    EXPECT_TRUE(viewer->gamuts().isEmpty());
    EXPECT_TRUE(group("Profiles"));
    loadNow(id);
    EXPECT_TRUE(viewer->exists(id));
}

TEST_F(ViewerGamuts, anEmptyIdIsNotTheRoot)
{
    EXPECT_TRUE(viewer->getGamut(QString()).isNull());
    loadNow(id);
    EXPECT_TRUE(viewer->getGamut(QString()).isNull());
}

// --- Loading -------------------------------------------------------------------------------------

TEST_F(ViewerGamuts, withACallbackTheLoadRunsInTheBackground)
{
    QSemaphore mayEnd;
    fakevelmora::onInit([&](const InitCall& call) {
        EXPECT_NE(call.thread, QCoreApplication::instance()->thread());
        ++started;
        mayEnd.acquire();
        return std::optional(tetrahedron(QString::fromUtf8(call.profile)));
    });
    QSignalSpy loadingFinished(viewer.get(), SIGNAL(loadingFinished(QString)));
    viewer->load(id, paramsOf("profile A"), report());
    ASSERT_TRUE(eventually([&] { return started == 1; }));
    EXPECT_TRUE(log.isEmpty());
    mayEnd.release();
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    settle();
    EXPECT_EQ(log, QStringList{succeeded});
    EXPECT_EQ(viewer->volume(id), 1234.5f);
    EXPECT_TRUE(viewer->displayGamut(id));
    EXPECT_EQ(loadingFinished.count(), 0) << "the callback alone reports the end of a load";
}

TEST_F(ViewerGamuts, theGamutCanBeQueriedInTheCallback)
{
    float volume = 0;
    Params params;
    QSharedPointer<KV3DObject> gamut;
    viewer->load(id, paramsOf("profile A"), [&](const QString& loadedId, bool ok) {
        EXPECT_TRUE(ok);
        volume = viewer->volume(loadedId);
        params = viewer->params(loadedId);
        gamut = viewer->getGamut(loadedId);
    });
    ASSERT_TRUE(eventually([&] { return !gamut.isNull(); }));
    EXPECT_EQ(volume, 1234.5f);
    EXPECT_EQ(params, paramsOf("profile A"));
    EXPECT_EQ(gamut, viewer->getGamut(id));
}

TEST_F(ViewerGamuts, withoutACallbackTheLoadIsSynchronous)
{
    viewer->load(id, paramsOf("profile A"), {});
    EXPECT_EQ(viewer->volume(id), 1234.5f);
    EXPECT_EQ(viewer->getGamut(id)->childOrder().size(), 4) << "no section: the clipping is not applied";
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    EXPECT_EQ(fakevelmora::initCalls().first().thread, QThread::currentThread());
}

TEST_F(ViewerGamuts, aFailedLoadIsReportedAndKeepsTheGamut)
{
    fakevelmora::onInit([](const InitCall&) { return std::nullopt; });
    viewer->load(id, paramsOf("profile A"), report());
    ASSERT_TRUE(eventually([&] { return log.size() == 1; }));
    viewer->load(id, {}, report());
    ASSERT_TRUE(eventually([&] { return log.size() == 2; }));
    EXPECT_EQ(log, (QStringList{failed, failed}));
    EXPECT_TRUE(viewer->exists(id));
    EXPECT_EQ(viewer->gamuts(), QStringList{id});
    EXPECT_EQ(viewer->volume(id), 0.0f);

    fakevelmora::onInit({});
    viewer->load(id, paramsOf("profile A"), report());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    fakevelmora::onInit([](const InitCall&) { return std::nullopt; });
    viewer->load(id, paramsOf("profile B"), report());
    ASSERT_TRUE(eventually([&] { return log.size() == 4; }));
    EXPECT_EQ(log.last(), failed);
    EXPECT_EQ(viewer->volume(id), 1234.5f);
    EXPECT_EQ(viewer->params(id), paramsOf("profile A"));
}

TEST_F(ViewerGamuts, aReloadKeepsTheSettingsOfTheHost)
{
    loadNow(id);
    loadNow(other);
    const auto gamut = viewer->getGamut(id);
    viewer->setGamutVisible(id, false);
    viewer->setDisplayProjection(id, false);
    viewer->setDisplayPrimaries(id, true);
    viewer->setDisplayMode(id, KVGamut3DViewer::Wireframe);
    viewer->changeGamutAlpha(id, 0.5f, 0);
    viewer->changeGamutColor(id, Qt::red);
    viewer->setGamutAmbientStrength(id, 0.25f);

    fakevelmora::onInit([](const InitCall&) { return std::optional(tetrahedron(QStringLiteral("B"), 99)); });
    viewer->load(id, paramsOf("profile B"), report());
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_EQ(viewer->getGamut(id), gamut);
    EXPECT_EQ(group("Profiles")->childOrder(), (QStringList{id, other}));
    EXPECT_EQ(viewer->volume(id), 99.0f);
    EXPECT_EQ(viewer->params(id), paramsOf("profile B"));
    EXPECT_FALSE(viewer->gamutVisible(id));
    EXPECT_FALSE(viewer->displayProjection(id));
    EXPECT_TRUE(viewer->displayPrimaries(id));
    EXPECT_EQ(viewer->displayMode(id), KVGamut3DViewer::Wireframe);
    EXPECT_TRUE(part("Gamut")->child(QStringLiteral("Wireframe"))->isVisible());
    EXPECT_FALSE(part("Gamut")->child(QStringLiteral("Front"))->isVisible());
    EXPECT_EQ(viewer->gamutAlpha(id), 0.5f);
    EXPECT_EQ(viewer->gamutColor(id), QColor(Qt::red));
    EXPECT_EQ(viewer->gamutAmbientStrength(id), 0.25f);
}

TEST_F(ViewerGamuts, anItemThatIsNotAGamutIsNotChanged)
{
    loadNow(other);
    const auto plain = QSharedPointer<KV3DObject>::create(id, id);
    group("Profiles")->addChild(plain);
    viewer->load(id, paramsOf("profile A"), report());
    viewer->load(id, paramsOf("profile A"), {});
    settle();
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(fakevelmora::initCalls().size(), 1) << "the other's";
    EXPECT_EQ(viewer->getGamut(id), plain);
    EXPECT_TRUE(plain->children().isEmpty());
    EXPECT_FALSE(viewer->exists(id));
    EXPECT_EQ(sorted(viewer->gamuts()), sorted({id, other}));

    // Functions of every scene object work. Functions of gamuts return the value for an unknown id.
    viewer->setGamutVisible(id, false);
    EXPECT_FALSE(plain->isVisible());
    viewer->changeGamutAlpha(id, 0.5f, 0);
    EXPECT_EQ(viewer->gamutAlpha(id), 0.5f);
    viewer->setClipping(30);
    EXPECT_EQ(plain->clip(), 30.0f);
    EXPECT_EQ(viewer->volume(id), 0.0f);
    plain->setProperty(QStringLiteral("volume"), 3.5f);
    EXPECT_EQ(viewer->volume(id), 3.5f);
    EXPECT_TRUE(viewer->params(id).isEmpty());
    EXPECT_TRUE(viewer->save(id).isEmpty());
    EXPECT_TRUE(viewer->faceList(id).isEmpty());
    EXPECT_FALSE(viewer->isInsideGamut(id, QVector3D()));
    EXPECT_TRUE(fakevelmora::insidePoints().isEmpty());
    float f[6] = {1, 2, 3, 4, 5, 6};
    EXPECT_FALSE(viewer->gamutSetProperties(id, other, f[0], f[1], f[2], f[3], f[4], f[5]));
    EXPECT_FALSE(viewer->gamutSetProperties(other, id, f[0], f[1], f[2], f[3], f[4], f[5]));
    EXPECT_EQ(f[0], 1.0f);
    viewer->removeGamut(id);
    EXPECT_EQ(viewer->gamuts(), QStringList{other});
}

TEST_F(ViewerGamuts, anExceptionOfTheEngineIsReportedAsAFailure)
{
    fakevelmora::onInit(
        [](const InitCall&) -> std::optional<Gamut> { throw std::runtime_error("a defect"); });
    viewer->load(id, paramsOf("profile A"), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    settle();
    EXPECT_EQ(log, QStringList{failed});
    EXPECT_TRUE(viewer->exists(id));
    EXPECT_EQ(viewer->volume(id), 0.0f);
    EXPECT_EQ(fakevelmora::openProfiles(), 0);
}

TEST_F(ViewerGamuts, anExceptionOfTheEngineDoesNotReachTheHost)
{
    fakevelmora::onInit([](const InitCall&) -> std::optional<Gamut> { throw std::bad_alloc(); });
    EXPECT_NO_THROW(viewer->load(id, paramsOf("profile A"), {}));
    EXPECT_TRUE(viewer->exists(id));
    EXPECT_EQ(viewer->volume(id), 0.0f);
}

TEST_F(ViewerGamuts, aProfileHandleIsReadByItsRegisteredName)
{
    KVProfilePtr opened(KVProfileCreateWithData("profile C", 9), KVProfileRelease);
    const QVariant byName(QMetaType::fromName("KVProfilePtr"), &opened);
    viewer->load(id, {{QStringLiteral("Profile"), byName}}, {});
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    EXPECT_EQ(fakevelmora::initCalls().first().profile, QByteArray("profile C"));
    EXPECT_TRUE(viewer->params(id).contains(QStringLiteral("Profile")));
    viewer->removeGamut(id); // its parameters hold the handle as well
}

// --- Replaced, removed and destroyed while loading -----------------------------------------------

TEST_F(ViewerGamuts, aReloadCancelsTheLoadInProgress)
{
    const Watchdog watchdog(300);
    computeUntilCancelled(tetrahedron(QStringLiteral("late")));
    viewer->load(id, paramsOf("profile A"), report(QStringLiteral("first")));
    ASSERT_TRUE(eventually([&] { return started == 1; }));
    fakevelmora::onInit({});
    viewer->load(id, paramsOf("profile B"), report());
    EXPECT_EQ(returned, 1) << "a reload waits until the computation in progress has stopped";
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    settle();
    EXPECT_EQ(log, QStringList{succeeded});
    EXPECT_EQ(viewer->params(id), paramsOf("profile B"));
    EXPECT_EQ(viewer->gamuts(), QStringList{id});
}

TEST_F(ViewerGamuts, gamutsLoadInParallel)
{
    const Watchdog watchdog(300);
    fakevelmora::onInit([this](const InitCall& call) {
        ++started;
        while (started < 3) // each load waits until all have started
            QThread::yieldCurrentThread();
        return std::optional(tetrahedron(QString::fromUtf8(call.profile)));
    });
    for (const char* name : {"a", "b", "c"})
        viewer->load(QLatin1String(name), paramsOf(QByteArray("profile ") + name), report());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_EQ(sorted(log), (QStringList{QStringLiteral("loaded a 1"), QStringLiteral("loaded b 1"),
                                        QStringLiteral("loaded c 1")}));
}

TEST_F(ViewerGamuts, removingAGamutCancelsItsLoad)
{
    const Watchdog watchdog(300);
    computeUntilCancelled(tetrahedron(QStringLiteral("late")));
    viewer->load(id, paramsOf("profile A"), report());
    ASSERT_TRUE(eventually([&] { return started == 1; }));
    const QWeakPointer<KV3DObject> watch = viewer->getGamut(id);
    viewer->removeGamut(id);
    EXPECT_TRUE(watch.isNull()) << "nothing but the scene keeps a gamut";
    EXPECT_EQ(returned, 1);
    settle();
    EXPECT_TRUE(log.isEmpty());
    EXPECT_FALSE(viewer->exists(id));
}

TEST_F(ViewerGamuts, removingCancelsTheLoadOfAGamutThatTheHostHolds)
{
    const Watchdog watchdog(300);
    computeUntilCancelled(tetrahedron(QStringLiteral("late")));
    viewer->load(id, paramsOf("profile A"), report());
    ASSERT_TRUE(eventually([&] { return started == 1; }));
    const auto held = viewer->getGamut(id);
    viewer->removeGamut(id);
    EXPECT_EQ(returned, 1);
    settle();
    EXPECT_TRUE(log.isEmpty());
    EXPECT_FALSE(held->property(QStringLiteral("volume")).isValid()) << "nothing is installed";
}

TEST_F(ViewerGamuts, aRemovedGamutMayBeLoadedAgainAtOnce)
{
    const Watchdog watchdog(300);
    computeUntilCancelled();
    viewer->load(id, paramsOf("profile A"), report(QStringLiteral("first")));
    ASSERT_TRUE(eventually([&] { return started == 1; }));
    viewer->removeGamut(id);
    fakevelmora::onInit({});
    viewer->load(id, paramsOf("profile B"), report());
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    settle();
    EXPECT_EQ(log, QStringList{succeeded});
}

TEST_F(ViewerGamuts, nothingKeepsAGamutAliveAfterItsLoad)
{
    viewer->load(id, paramsOf("profile A"), report());
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    const QWeakPointer<KV3DObject> watch = viewer->getGamut(id);
    viewer->removeGamut(id);
    EXPECT_TRUE(watch.isNull());
}

TEST_F(ViewerGamuts, destroyingTheViewerCancelsItsLoads)
{
    const Watchdog watchdog(300);
    computeUntilCancelled(tetrahedron(QStringLiteral("late")));
    viewer->load(id, paramsOf("profile A"), report());
    viewer->load(other, paramsOf("profile B"), report());
    ASSERT_TRUE(eventually([&] { return started == 2; }));
    viewer.reset();
    EXPECT_EQ(returned, 2);
    settle();
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(ViewerGamuts, aGamutMayOutliveItsViewer)
{
    const Watchdog watchdog(300);
    QSemaphore mayEnd;
    fakevelmora::onInit([&](const InitCall&) {
        ++started;
        mayEnd.acquire();
        return std::optional(tetrahedron(QStringLiteral("A")));
    });
    viewer->load(id, paramsOf("profile A"), report());
    auto held = viewer->getGamut(id);
    ASSERT_TRUE(eventually([&] { return started == 1; }));
    viewer.reset();
    mayEnd.release();
    ASSERT_TRUE(eventually([&] { return held->property(QStringLiteral("volume")).isValid(); }));
    settle();
    EXPECT_TRUE(log.isEmpty()) << "no callback after the end of the viewer";
    held.reset();
}

TEST_F(ViewerGamuts, theCallbackMayRemoveItsGamut)
{
    viewer->load(id, paramsOf("profile A"), [this](const QString& loadedId, bool ok) {
        viewer->removeGamut(loadedId);
        report()(loadedId, ok);
    });
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    settle();
    EXPECT_EQ(log, QStringList{succeeded});
    EXPECT_FALSE(viewer->exists(id));
}

TEST_F(ViewerGamuts, theCallbackMayReloadItsGamut)
{
    viewer->load(id, paramsOf("profile A"), [this](const QString& loadedId, bool ok) {
        report(QStringLiteral("first"))(loadedId, ok);
        viewer->load(loadedId, paramsOf("profile B"), report());
    });
    ASSERT_TRUE(eventually([&] { return log.size() == 2; }));
    settle();
    EXPECT_EQ(log, (QStringList{QStringLiteral("first sRGB 1"), succeeded}));
    EXPECT_EQ(viewer->params(id), paramsOf("profile B"));
}

TEST_F(ViewerGamuts, theCallbackMayLoadInsideTheCall)
{
    viewer->load(id, paramsOf("profile A"), [this](const QString& loadedId, bool ok) {
        viewer->load(loadedId, paramsOf("profile B"), {});
        viewer->load(other, paramsOf("profile C"), {});
        report()(loadedId, ok);
    });
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_EQ(viewer->params(id), paramsOf("profile B"));
    EXPECT_EQ(viewer->params(other), paramsOf("profile C"));
}

TEST_F(ViewerGamuts, theCallbackMayDestroyTheViewer)
{
    viewer->load(other, paramsOf("profile B"), {});
    viewer->load(id, paramsOf("profile A"), [this](const QString& loadedId, bool ok) {
        viewer.reset();
        report()(loadedId, ok);
    });
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    settle();
    EXPECT_EQ(log, QStringList{succeeded});
}

TEST_F(ViewerGamuts, theCallbackIsDestroyedAfterItsLoad)
{
    auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = token;
    viewer->load(id, paramsOf("profile A"),
                 [this, token](const QString& loadedId, bool ok) { report()(loadedId, ok); });
    token.reset();
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_TRUE(eventually([&] { return watch.expired(); }));
}

// --- Controls ------------------------------------------------------------------------------------

TEST_F(ViewerGamuts, theGamutAndItsPartsHaveTheirOwnVisibility)
{
    loadNow(id);
    EXPECT_TRUE(viewer->gamutVisible(id));
    EXPECT_TRUE(viewer->displayGamut(id));
    EXPECT_TRUE(viewer->displayProjection(id));
    EXPECT_FALSE(viewer->displayPrimaries(id));

    viewer->setGamutVisible(id, false);
    EXPECT_FALSE(viewer->gamutVisible(id));
    EXPECT_FALSE(viewer->getGamut(id)->isVisible());
    EXPECT_TRUE(viewer->displayGamut(id)) << "its own flag";

    viewer->setDisplayGamut(id, false);
    EXPECT_FALSE(viewer->displayGamut(id));
    EXPECT_FALSE(part("Gamut")->isVisible());
    EXPECT_TRUE(viewer->displayProjection(id));

    viewer->setDisplayProjection(id, false);
    EXPECT_FALSE(viewer->displayProjection(id));
    EXPECT_FALSE(part("Projection")->isVisible());

    viewer->setDisplayPrimaries(id, true);
    EXPECT_TRUE(viewer->displayPrimaries(id));
    EXPECT_TRUE(part("Primaries")->isVisible());
    EXPECT_TRUE(part("PrimariesPoints")->isVisible());
    viewer->setDisplayPrimaries(id, false);
    EXPECT_FALSE(part("Primaries")->isVisible());
    EXPECT_FALSE(part("PrimariesPoints")->isVisible());

    viewer->setGamutVisible(id, true);
    viewer->setDisplayGamut(id, true);
    viewer->setDisplayProjection(id, true);
    EXPECT_TRUE(viewer->gamutVisible(id) && viewer->displayGamut(id) && viewer->displayProjection(id));
}

TEST_F(ViewerGamuts, missingPartsAreNotShown)
{
    viewer->load(id, {}, {}); // a gamut that was never loaded has no parts
    ASSERT_TRUE(viewer->exists(id));
    viewer->setDisplayGamut(id, true);
    viewer->setDisplayProjection(id, true);
    viewer->setDisplayPrimaries(id, true);
    EXPECT_FALSE(viewer->displayGamut(id));
    EXPECT_FALSE(viewer->displayProjection(id));
    EXPECT_FALSE(viewer->displayPrimaries(id));
    EXPECT_TRUE(viewer->getGamut(id)->children().isEmpty());

    loadNow(id);
    viewer->getGamut(id)->takeChild(QStringLiteral("Primaries"));
    viewer->setDisplayPrimaries(id, true);
    EXPECT_TRUE(part("PrimariesPoints")->isVisible());
    EXPECT_FALSE(viewer->displayPrimaries(id)) << "the query reads the lines";
}

TEST_F(ViewerGamuts, displayModesArePassedToTheGamut)
{
    loadNow(id);
    for (const auto mode : {KVGamut3DViewer::Wireframe, KVGamut3DViewer::Solid, KVGamut3DViewer::Flat,
                            KVGamut3DViewer::Smooth}) {
        viewer->setDisplayMode(id, mode);
        EXPECT_EQ(viewer->displayMode(id), mode);
        const bool wire = static_cast<int>(mode) == 3;
        EXPECT_EQ(part("Gamut")->child(QStringLiteral("Wireframe"))->isVisible(), wire);
        EXPECT_EQ(part("Gamut")->child(QStringLiteral("Front"))->isVisible(), !wire);
    }
}

TEST_F(ViewerGamuts, opacityChangesAtOnceOrInTime)
{
    loadNow(id);
    for (const int atOnce : {0, -5}) {
        viewer->changeGamutAlpha(id, 0.25f, atOnce);
        EXPECT_EQ(viewer->gamutAlpha(id), 0.25f);
        viewer->changeGamutAlpha(id, 1.0f, atOnce);
    }
    viewer->changeGamutAlpha(id, 0.5f, 400);
    EXPECT_TRUE(part("Gamut")->hasTransition());
    EXPECT_EQ(viewer->gamutAlpha(id), 1.0f);
    viewer->changeGamutAlpha(id, 0.75f, 0);
    EXPECT_FALSE(part("Gamut")->hasTransition());
    EXPECT_EQ(viewer->gamutAlpha(id), 0.75f);
    EXPECT_EQ(part("Projection")->alpha(), 1.0f);
}

TEST_F(ViewerGamuts, colourAndAmbientStrengthArePassedToTheGamut)
{
    loadNow(id);
    viewer->changeGamutColor(id, QColor(10, 20, 30));
    EXPECT_EQ(viewer->gamutColor(id), QColor(10, 20, 30));
    EXPECT_EQ(part("Projection")->color(), QColor(10, 20, 30));
    viewer->changeGamutColor(id, QColor());
    EXPECT_FALSE(viewer->gamutColor(id).isValid());

    viewer->setGamutAmbientStrength(id, 0.3f);
    EXPECT_EQ(viewer->gamutAmbientStrength(id), 0.3f);
    EXPECT_EQ(part("Gamut")->ambientStrength(), 0.3f);
    EXPECT_EQ(part("Projection")->ambientStrength(), 1.0f);
}

TEST_F(ViewerGamuts, controlsReachOneGamutOnly)
{
    loadNow(id);
    loadNow(other);
    viewer->setGamutVisible(id, false);
    viewer->changeGamutAlpha(id, 0.5f, 0);
    viewer->changeGamutColor(id, Qt::red);
    viewer->setDisplayMode(id, KVGamut3DViewer::Wireframe);
    viewer->setDisplayPrimaries(id, true);
    EXPECT_TRUE(viewer->gamutVisible(other));
    EXPECT_EQ(viewer->gamutAlpha(other), 1.0f);
    EXPECT_FALSE(viewer->gamutColor(other).isValid());
    EXPECT_EQ(static_cast<int>(viewer->displayMode(other)), 1);
    EXPECT_FALSE(viewer->displayPrimaries(other));
}

TEST_F(ViewerGamuts, aColourGivenBeforeTheLoadEndsShowsWithIt)
{
    viewer->load(id, paramsOf("profile A"), report());
    viewer->changeGamutColor(id, QColor(200, 100, 50));
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_EQ(viewer->gamutColor(id), QColor(200, 100, 50));
    for (const Vertex& vertex : verticesOf(*part("Projection"))) {
        ASSERT_NEAR(vertex.color[0], 200 / 255.0, 1e-4);
        ASSERT_NEAR(vertex.color[2], 50 / 255.0, 1e-4);
    }
}

// --- Clipping ------------------------------------------------------------------------------------

TEST_F(ViewerGamuts, clippingIsKeptBeforeAnythingIsLoaded)
{
    viewer->setClipping(50);
    EXPECT_EQ(viewer->clipping(), 50.0f);
    EXPECT_FALSE(root().hasChild(QStringLiteral("Profiles")));
    EXPECT_TRUE(fakevelmora::planes().isEmpty());
}

TEST_F(ViewerGamuts, clippingAtNaNCutsNothingOff)
{
    loadNow(id);
    viewer->setClipping(std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(std::isnan(viewer->clipping()));
    EXPECT_EQ(part("Gamut", id)->clip(), 1000000.0f);
    EXPECT_EQ(fakevelmora::planes(), (QList<QList<float>>{{1, 0, 0, -1000000.0f}}));
}

TEST_F(ViewerGamuts, clippingReachesAllGamutsAtOnce)
{
    loadNow(id);
    loadNow(other);
    viewer->setClipping(62.5f);
    EXPECT_EQ(viewer->clipping(), 62.5f);
    EXPECT_EQ(fakevelmora::planes(), (QList<QList<float>>{{1, 0, 0, -62.5f}, {1, 0, 0, -62.5f}}));
    for (const QString& each : {id, other}) {
        EXPECT_EQ(part("Gamut", each)->clip(), 62.5f);
        EXPECT_TRUE(part("Section", each));
        EXPECT_EQ(part("Projection", each)->clip(), 1000000.0f);
        EXPECT_EQ(viewer->getGamut(each)->clip(), 1000000.0f);
    }
    EXPECT_EQ(group("Profiles")->clip(), 1000000.0f);
    EXPECT_EQ(group("Axes")->clip(), 1000000.0f);
}

TEST_F(ViewerGamuts, aGamutLoadedLaterIsClippedBeforeItIsReported)
{
    viewer->setClipping(50);
    float clipInCallback = 0;
    bool sectionInCallback = false;
    viewer->load(id, paramsOf("profile A"), [&](const QString& loadedId, bool ok) {
        clipInCallback = part("Gamut")->clip();
        sectionInCallback = !part("Section").isNull();
        report()(loadedId, ok);
    });
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_EQ(clipInCallback, 50.0f);
    EXPECT_TRUE(sectionInCallback);
    EXPECT_EQ(fakevelmora::planes(), (QList<QList<float>>{{1, 0, 0, -50}}));
}

TEST_F(ViewerGamuts, theClippingAtTheEndOfTheLoadIsApplied)
{
    QSemaphore mayEnd;
    fakevelmora::onInit([&](const InitCall&) {
        ++started;
        mayEnd.acquire();
        return std::optional(tetrahedron(QStringLiteral("A")));
    });
    viewer->setClipping(50);
    viewer->load(id, paramsOf("profile A"), report());
    ASSERT_TRUE(eventually([&] { return started == 1; }));
    viewer->setClipping(70);
    mayEnd.release();
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_EQ(part("Gamut")->clip(), 70.0f);
}

TEST_F(ViewerGamuts, withoutAClippingALoadedGamutIsNotCut)
{
    viewer->load(id, paramsOf("profile A"), report());
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_EQ(fakevelmora::planes(), (QList<QList<float>>{{1, 0, 0, -1000000}}));
    EXPECT_TRUE(part("Section")->vertices().isEmpty());
    EXPECT_EQ(part("Gamut")->clip(), 1000000.0f);
}

TEST_F(ViewerGamuts, aFailedLoadAppliesTheClippingToo)
{
    viewer->setClipping(40);
    viewer->load(id, {}, report());
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_EQ(log, QStringList{failed});
    EXPECT_EQ(fakevelmora::planes(), (QList<QList<float>>{{1, 0, 0, -40}}));
    EXPECT_EQ(viewer->getGamut(id)->childOrder(), QStringList{QStringLiteral("Section")});
}

TEST_F(ViewerGamuts, aSynchronousLoadIsNotClippedUntilTheNextChange)
{
    viewer->setClipping(50);
    loadNow(id);
    EXPECT_EQ(part("Gamut")->clip(), 1000000.0f);
    EXPECT_TRUE(part("Section").isNull());
    viewer->setClipping(50);
    EXPECT_EQ(part("Gamut")->clip(), 50.0f);
}

// --- Queries -------------------------------------------------------------------------------------

TEST_F(ViewerGamuts, parametersAreThoseOfTheLastLoadThatSucceeded)
{
    Params params = paramsOf("profile A");
    params.insert(QStringLiteral("Note"), QStringLiteral("the host's own"));
    viewer->load(id, params, {});
    EXPECT_EQ(viewer->params(id), params);
    viewer->load(id, {}, {});
    EXPECT_EQ(viewer->params(id), params);
}

TEST_F(ViewerGamuts, aSavedGamutIsRestored)
{
    loadNow(id);
    const Params saved = viewer->save(id);
    ASSERT_TRUE(saved.contains(QStringLiteral("Gamut")));
    viewer->load(other, saved, report());
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_EQ(log, QStringList{QStringLiteral("loaded Display P3 1")});
    EXPECT_EQ(fakevelmora::deserialized(), QList<Params>{saved});
    EXPECT_EQ(viewer->volume(other), viewer->volume(id));
    EXPECT_EQ(viewer->faceList(other), viewer->faceList(id));
    EXPECT_EQ(viewer->params(other), saved);
    EXPECT_EQ(fakevelmora::initCalls().size(), 1);
}

TEST_F(ViewerGamuts, isInsideGamutPassesTheValuesInTheirOrder)
{
    loadNow(id);
    fakevelmora::onIsInside([](const QList<float>& p) { return p[0] == 50.0f; });
    EXPECT_TRUE(viewer->isInsideGamut(id, QVector3D(50, -20, 30)));
    EXPECT_FALSE(viewer->isInsideGamut(id, QVector3D(20, 50, 30)));
    EXPECT_EQ(fakevelmora::insidePoints(), (QList<QList<float>>{{50, -20, 30}, {20, 50, 30}}));
}

TEST_F(ViewerGamuts, facesAreListedWithMissingValuesAsZero)
{
    Gamut gamut = tetrahedron(QStringLiteral("A"));
    gamut.faces = {{node({1, 2, 3}), node({4, 5, 6}), node({7, 8, 9})},
                   {node({}), node({10}), node({11, 12}), node({13, 14, 15, 16})},
                   {}};
    fakevelmora::onInit([&](const InitCall&) { return std::optional(gamut); });
    loadNow(id);
    const QList<QList<QVector3D>> expected{
        {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, {{0, 0, 0}, {10, 0, 0}, {11, 12, 0}, {13, 14, 15}}, {}};
    EXPECT_EQ(viewer->faceList(id), expected);
}

TEST_F(ViewerGamuts, theLastSixFloatsOfTheComparisonAreReturned)
{
    fakevelmora::onInit(
        [](const InitCall& call) { return std::optional(tetrahedron(QString::fromUtf8(call.profile))); });
    loadNow(id, "profile first");
    loadNow(other, "profile second");
    fakevelmora::setComparison({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 101, 102, 103, 104, 105, 106});
    std::array<float, 6> f{};
    EXPECT_TRUE(viewer->gamutSetProperties(id, other, f[0], f[1], f[2], f[3], f[4], f[5]));
    EXPECT_EQ(f, (std::array<float, 6>{101, 102, 103, 104, 105, 106}));
    EXPECT_EQ(fakevelmora::comparisons(), QStringList{QStringLiteral("profile first/profile second")});
    EXPECT_TRUE(viewer->gamutSetProperties(other, id, f[0], f[1], f[2], f[3], f[4], f[5]));
    EXPECT_EQ(fakevelmora::comparisons().last(), QStringLiteral("profile second/profile first"));
    EXPECT_TRUE(viewer->gamutSetProperties(id, id, f[0], f[1], f[2], f[3], f[4], f[5]));
}

TEST_F(ViewerGamuts, aComparisonWithAnUnknownGamutLeavesTheOutputsUntouched)
{
    loadNow(id);
    std::array<float, 6> f{1, 2, 3, 4, 5, 6};
    EXPECT_FALSE(viewer->gamutSetProperties(id, unknown, f[0], f[1], f[2], f[3], f[4], f[5]));
    EXPECT_FALSE(viewer->gamutSetProperties(unknown, id, f[0], f[1], f[2], f[3], f[4], f[5]));
    EXPECT_FALSE(viewer->gamutSetProperties(unknown, unknown, f[0], f[1], f[2], f[3], f[4], f[5]));
    EXPECT_EQ(f, (std::array<float, 6>{1, 2, 3, 4, 5, 6}));
    EXPECT_TRUE(fakevelmora::comparisons().isEmpty());
}

TEST_F(ViewerGamuts, aGamutThatWasNeverLoadedCanBeQueried)
{
    viewer->load(id, {}, {});
    loadNow(other);
    ASSERT_TRUE(viewer->exists(id));
    EXPECT_EQ(viewer->volume(id), 0.0f);
    EXPECT_TRUE(viewer->params(id).isEmpty());
    EXPECT_TRUE(viewer->faceList(id).isEmpty());
    viewer->setDisplayMode(id, KVGamut3DViewer::Flat);
    EXPECT_EQ(viewer->displayMode(id), KVGamut3DViewer::Flat);
    viewer->changeGamutAlpha(id, 0.5f, 0);
    EXPECT_EQ(viewer->gamutAlpha(id), 1.0f);
    std::array<float, 6> f{};
    EXPECT_TRUE(viewer->gamutSetProperties(id, other, f[0], f[1], f[2], f[3], f[4], f[5]));
}
