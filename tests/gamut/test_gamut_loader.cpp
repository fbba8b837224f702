// SPDX-License-Identifier: Apache-2.0
#include <gamut/GamutLoader.h>
#include <gamut/KV3DGamutObject.h>

#include "support/FakeVelmora.h"
#include "support/Watchdog.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <atomic>
#include <memory>
#include <stdexcept>

namespace {

using fakevelmora::InitCall;
using fakevelmora::tetrahedron;
using kvtest::Watchdog;
using Params = QHash<QString, QVariant>;

const QString pathKey = QStringLiteral("ProfilePath");
const QString dataKey = QStringLiteral("ProfileData");
const QString profileKey = QStringLiteral("Profile");
const QString gamutKey = QStringLiteral("Gamut");
const QString settingsKey = QStringLiteral("AdditionnalParam");

Params dataParams(const QByteArray& bytes)
{
    return {{dataKey, bytes}};
}

/// Runs the event loop until @p condition holds; false after a timeout that only a defect exceeds.
template <typename Condition>
bool eventually(Condition condition)
{
    return QTest::qWaitFor(condition, 120000);
}

/// Delivers all pending events. After it, a test can check that something did not happen.
void settle()
{
    for (int turn = 0; turn < 5; ++turn) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

/// The result of a load and of its steps.
struct Loaded : LoadedGamut
{
    bool profileFound = false;
    bool ok = false;
    KVProblem problem;
};

class Loader : public fakevelmora::Case
{
protected:
    static Loaded load(const Params& params, KVCompletionProtocolPtr protocol = {})
    {
        Loaded loaded;
        auto opened = kvOpenRequest(kvGamutRequest(params));
        loaded.profileFound = opened.has_value();
        if (!opened) {
            loaded.problem = opened.error();
            return loaded;
        }
        auto result = kvLoadGamut(*std::move(opened), &protocol);
        loaded.ok = result.has_value();
        if (result)
            static_cast<LoadedGamut&>(loaded) = *result;
        else
            loaded.problem = result.error();
        return loaded;
    }

    QString file(const QString& name, const QByteArray& bytes)
    {
        const QString path = m_dir.filePath(name);
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return path;
    }

    QString missingFile() const { return m_dir.filePath(QStringLiteral("missing.icc")); }

private:
    QTemporaryDir m_dir;
};

/// Loads through a gamut object, with a log of its callbacks.
class ObjectLoad : public Loader
{
protected:
    ObjectLoad() : gamut(QSharedPointer<KV3DGamutObject>::create(QStringLiteral("sRGB"))) {}

    KV3DGamutObject::LoadedFunction report(const QString& word = QStringLiteral("loaded"))
    {
        return [this, word](const QString& name, const QString& id, bool ok) {
            EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
            log.append(QStringLiteral("%1 %2 %3 %4").arg(word, name, id).arg(ok));
        };
    }

    KV3DGamutObject::ContextGuard guard()
    {
        return [this](bool acquire) {
            EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
            log.append(QStringLiteral("guard %1").arg(acquire));
            if (acquire)
                childrenAtAcquire = gamut ? gamut->childOrder() : QStringList();
            else
                childrenAtRelease = gamut ? gamut->childOrder() : QStringList();
        };
    }

    QString nameOfLoaded() const
    {
        gamut->compare(*gamut);
        return fakevelmora::comparisons().last().section(QLatin1Char('/'), 0, 0);
    }

    QSharedPointer<KV3DGamutObject> gamut;
    QStringList log;
    QStringList childrenAtAcquire;
    QStringList childrenAtRelease;
};

const QStringList succeeded{QStringLiteral("guard 1"), QStringLiteral("loaded sRGB sRGB 1"),
                            QStringLiteral("guard 0")};
const QStringList failed{QStringLiteral("guard 1"), QStringLiteral("loaded sRGB sRGB 0"),
                         QStringLiteral("guard 0")};
const QStringList notOpened{QStringLiteral("loaded sRGB sRGB 0")};

} // namespace

// --- Where the profile comes from ----------------------------------------------------------------

TEST_F(Loader, opensThePathAsUtf8)
{
    const QString path = file(QStringLiteral("Gr\u00fcn \u8272.icc"), "profile A");
    const Loaded loaded = load({{pathKey, path}, {dataKey, QByteArray("profile B")}});
    EXPECT_TRUE(loaded.profileFound);
    EXPECT_TRUE(loaded.ok);
    EXPECT_EQ(fakevelmora::profileCalls(),
              (QStringList{QLatin1String("path:") + path, QStringLiteral("release:profile A")}));
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    EXPECT_EQ(fakevelmora::initCalls().first().profile, QByteArray("profile A"));
}

TEST_F(Loader, opensTheDataIfThePathDoesNotExist)
{
    const Loaded loaded = load({{pathKey, missingFile()}, {dataKey, QByteArray("profile B")}});
    EXPECT_TRUE(loaded.ok);
    EXPECT_EQ(fakevelmora::profileCalls(),
              (QStringList{QLatin1String("path:") + missingFile(), QStringLiteral("data:9"),
                           QStringLiteral("release:profile B")}));
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    EXPECT_EQ(fakevelmora::initCalls().first().profile, QByteArray("profile B"));
}

TEST_F(Loader, doesNotTryAnEmptyPath)
{
    const Loaded loaded = load({{pathKey, QString()}, {dataKey, QByteArray("profile B")}});
    EXPECT_TRUE(loaded.ok);
    EXPECT_EQ(fakevelmora::profileCalls(),
              (QStringList{QStringLiteral("data:9"), QStringLiteral("release:profile B")}));
}

TEST_F(Loader, usesTheOpenProfileIfPathAndDataFail)
{
    const KVProfilePtr opened(KVProfileCreateWithData("profile C", 9), KVProfileRelease);
    const Loaded loaded = load({{pathKey, file(QStringLiteral("text.icc"), "no such thing")},
                                {dataKey, QByteArray("nor this")},
                                {profileKey, QVariant::fromValue(opened)}});
    EXPECT_TRUE(loaded.ok);
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    EXPECT_EQ(fakevelmora::initCalls().first().profile, QByteArray("profile C"));
    EXPECT_EQ(fakevelmora::openProfiles(), 1) << "what the host opened stays the host's";
}

TEST_F(Loader, passesAbsentDataToTheEngine)
{
    const KVProfilePtr opened(KVProfileCreateWithData("profile C", 9), KVProfileRelease);
    EXPECT_TRUE(load({{profileKey, QVariant::fromValue(opened)}}).ok);
    EXPECT_EQ(fakevelmora::profileCalls(), (QStringList{QStringLiteral("data:9"), QStringLiteral("data:0")}));
}

TEST_F(Loader, findsNoProfileInAHashWithoutAny)
{
    const Loaded loaded = load({});
    EXPECT_FALSE(loaded.profileFound);
    EXPECT_FALSE(loaded.ok);
    EXPECT_TRUE(loaded.meshes.isEmpty());
    EXPECT_TRUE(fakevelmora::initCalls().isEmpty());
}

TEST_F(Loader, findsNoProfileIfEverySourceFails)
{
    const Loaded loaded = load({{pathKey, missingFile()},
                                {dataKey, QByteArray("text")},
                                {profileKey, QVariant::fromValue(KVProfilePtr())},
                                {settingsKey, Params{{QStringLiteral("Link_ICCRendering"), 1}}}});
    EXPECT_FALSE(loaded.profileFound);
    EXPECT_FALSE(loaded.ok);
    EXPECT_TRUE(fakevelmora::initCalls().isEmpty());
}

TEST_F(Loader, readsItsKeysCaseSensitively)
{
    EXPECT_FALSE(load({{QStringLiteral("profiledata"), QByteArray("profile A")}}).profileFound);
    EXPECT_TRUE(load({{QStringLiteral("gamut"), 1}, {dataKey, QByteArray("profile A")}}).ok);
    EXPECT_TRUE(fakevelmora::deserialized().isEmpty());
}

TEST_F(Loader, keepsTheProfileOpenDuringTheComputation)
{
    int openDuringInit = -1;
    fakevelmora::onInit([&](const InitCall&) {
        openDuringInit = fakevelmora::openProfiles();
        return std::optional(tetrahedron(QStringLiteral("A")));
    });
    load(dataParams("profile A"));
    EXPECT_EQ(openDuringInit, 1);
    EXPECT_EQ(fakevelmora::openProfiles(), 0);
}

// --- Parameters of the engine --------------------------------------------------------------------

TEST_F(Loader, defaultsToTheAbsoluteIntentAndTheGridOfTheEngine)
{
    load(dataParams("profile A"));
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    const InitCall call = fakevelmora::initCalls().first();
    EXPECT_EQ(call.intent, 3);
    EXPECT_FALSE(call.blackPointCompensation);
    EXPECT_TRUE(call.withDecoration);
    EXPECT_EQ(call.maxEdge, 40.0f);
    EXPECT_EQ(call.gridPoints, -1);
    EXPECT_EQ(call.refinements, 2);
}

TEST_F(Loader, passesTheThreeSettingsToTheEngine)
{
    Params params = dataParams("profile A");
    params.insert(settingsKey, Params{{QStringLiteral("Link_GridPointNumber"), 21},
                                      {QStringLiteral("Link_ICCRendering"), 0},
                                      {QStringLiteral("Link_blackPointCompensation"), true}});
    load(params);
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    const InitCall call = fakevelmora::initCalls().first();
    EXPECT_EQ(call.intent, 0);
    EXPECT_TRUE(call.blackPointCompensation);
    EXPECT_TRUE(call.withDecoration);
    EXPECT_EQ(call.maxEdge, 40.0f);
    EXPECT_EQ(call.gridPoints, 21);
    EXPECT_EQ(call.refinements, 2);
}

TEST_F(Loader, passesTheAdaptationToTheEngine)
{
    Params params = dataParams("profile A");
    load(params);
    params.insert(settingsKey, Params{{QStringLiteral("Link_adaptation"), 1}});
    load(params);
    params.insert(settingsKey, Params{{QStringLiteral("Link_adaptation"), QStringLiteral("2")}});
    load(params);
    ASSERT_EQ(fakevelmora::initCalls().size(), 3);
    EXPECT_EQ(fakevelmora::initCalls()[0].adaptation, KVGamut::Adaptation::Full);
    EXPECT_EQ(fakevelmora::initCalls()[1].adaptation, KVGamut::Adaptation::None);
    EXPECT_EQ(fakevelmora::initCalls()[2].adaptation, KVGamut::Adaptation::NoneD65);
}

TEST_F(Loader, eachSettingHasItsOwnDefault)
{
    Params params = dataParams("profile A");
    params.insert(settingsKey, Params{{QStringLiteral("Link_ICCRendering"), 2},
                                      {QStringLiteral("link_gridpointnumber"), 5}});
    load(params);
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    EXPECT_EQ(fakevelmora::initCalls().first().intent, 2);
    EXPECT_FALSE(fakevelmora::initCalls().first().blackPointCompensation);
    EXPECT_EQ(fakevelmora::initCalls().first().gridPoints, -1);
}

TEST_F(Loader, convertsSettingsOfOtherTypes)
{
    Params params = dataParams("profile A");
    params.insert(settingsKey,
                  Params{{QStringLiteral("Link_GridPointNumber"), QStringLiteral("many")},
                         {QStringLiteral("Link_ICCRendering"), QStringLiteral("perceptual")},
                         {QStringLiteral("Link_blackPointCompensation"), QStringLiteral("false")}});
    load(params);
    params.insert(settingsKey, Params{{QStringLiteral("Link_GridPointNumber"), QStringLiteral("17")},
                                      {QStringLiteral("Link_ICCRendering"), QStringLiteral("1")},
                                      {QStringLiteral("Link_blackPointCompensation"), 1}});
    load(params);
    ASSERT_EQ(fakevelmora::initCalls().size(), 2);
    EXPECT_EQ(fakevelmora::initCalls()[0].gridPoints, 0);
    EXPECT_EQ(fakevelmora::initCalls()[0].intent, 0);
    EXPECT_FALSE(fakevelmora::initCalls()[0].blackPointCompensation);
    EXPECT_EQ(fakevelmora::initCalls()[1].gridPoints, 17);
    EXPECT_EQ(fakevelmora::initCalls()[1].intent, 1);
    EXPECT_TRUE(fakevelmora::initCalls()[1].blackPointCompensation);
}

TEST_F(Loader, passesTheProtocolToTheEngine)
{
    KVCompletionProtocolPtr watched = KVCompletionProtocol::createTask(QStringLiteral("watched"));
    bool same = false;
    fakevelmora::onInit([&](const InitCall& call) {
        same = call.protocol == watched;
        return std::optional(tetrahedron(QStringLiteral("A")));
    });
    load(dataParams("profile A"), watched);
    EXPECT_TRUE(same);
}

TEST_F(Loader, buildsNoMeshesForAGamutThatCouldNotBeComputed)
{
    fakevelmora::onInit([](const InitCall&) { return std::nullopt; });
    const Loaded loaded = load(dataParams("profile A"));
    EXPECT_TRUE(loaded.profileFound);
    EXPECT_FALSE(loaded.ok);
    EXPECT_TRUE(loaded.meshes.isEmpty());
    EXPECT_EQ(fakevelmora::openProfiles(), 0);
}

TEST_F(Loader, buildsTheFiveMeshesOfAGamut)
{
    const Loaded loaded = load(dataParams("profile A"));
    ASSERT_TRUE(loaded.ok);
    QStringList names = loaded.meshes.keys();
    names.sort();
    EXPECT_EQ(names, (QStringList{QStringLiteral("Front"), QStringLiteral("Primaries"),
                                  QStringLiteral("PrimariesPoints"), QStringLiteral("Projection"),
                                  QStringLiteral("Wireframe")}));
    EXPECT_EQ(loaded.gamut.volume(), 1234.5f);
}

// --- Saved gamuts --------------------------------------------------------------------------------

TEST_F(Loader, restoresASavedGamutAndReadsNoProfileKey)
{
    fakevelmora::onDeserialize([](const Params&) { return tetrahedron(QStringLiteral("saved"), 77.0f); });
    const Params params{{gamutKey, QStringLiteral("anything")},
                        {pathKey, file(QStringLiteral("a.icc"), "profile A")},
                        {dataKey, QByteArray("profile B")},
                        {QStringLiteral("More"), 5}};
    const Loaded loaded = load(params);
    EXPECT_TRUE(loaded.ok);
    EXPECT_EQ(loaded.gamut.volume(), 77.0f);
    EXPECT_EQ(loaded.meshes.size(), 5);
    EXPECT_TRUE(fakevelmora::profileCalls().isEmpty());
    EXPECT_TRUE(fakevelmora::initCalls().isEmpty());
    ASSERT_EQ(fakevelmora::deserialized().size(), 1);
    EXPECT_EQ(fakevelmora::deserialized().first(), params);
}

TEST_F(Loader, theKeyGamutMarksASavedGamut)
{
    EXPECT_FALSE(load({{gamutKey, QVariant()}, {dataKey, QByteArray("profile B")}}).ok);
    EXPECT_EQ(fakevelmora::deserialized().size(), 1);
    EXPECT_TRUE(fakevelmora::profileCalls().isEmpty());
}

TEST_F(Loader, acceptsASavedGamutIfItsReferenceHasThreeValues)
{
    for (int values = 0; values <= 5; ++values) {
        fakevelmora::onDeserialize([values](const Params&) {
            fakevelmora::Gamut gamut = tetrahedron(QStringLiteral("saved"));
            gamut.reference = QList<float>(values, 1.0f);
            return gamut;
        });
        const Loaded loaded = load({{gamutKey, 1}});
        EXPECT_EQ(loaded.ok, values == 3) << values;
        EXPECT_EQ(loaded.meshes.size(), values == 3 ? 5 : 0) << values;
        EXPECT_TRUE(loaded.profileFound) << "a saved gamut that is damaged is no missing profile";
    }
}

// --- Into the object, inside the call ------------------------------------------------------------

TEST_F(ObjectLoad, withoutACallbackTheLoadIsSynchronous)
{
    gamut->load(dataParams("profile A"), {}, guard());
    EXPECT_EQ(log, (QStringList{QStringLiteral("guard 1"), QStringLiteral("guard 0")}));
    EXPECT_TRUE(childrenAtAcquire.isEmpty());
    EXPECT_EQ(childrenAtRelease.size(), 4);
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile A"));
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    EXPECT_EQ(fakevelmora::initCalls().first().thread, QThread::currentThread());
    EXPECT_TRUE(fakevelmora::initCalls().first().hasProtocolPointer) << "a pointer to a null handle";
    EXPECT_TRUE(fakevelmora::initCalls().first().taskName.isNull());
    settle();
    EXPECT_EQ(log.size(), 2);
}

TEST_F(ObjectLoad, aSynchronousLoadNeedsNoGuard)
{
    gamut->load(dataParams("profile A"), {}, {});
    EXPECT_EQ(gamut->childOrder().size(), 4);
    EXPECT_EQ(gamut->params(), dataParams("profile A"));
}

TEST_F(ObjectLoad, withoutACallbackAFailureIsSilent)
{
    gamut->load({{pathKey, missingFile()}}, {}, guard());
    fakevelmora::onInit([](const InitCall&) { return std::nullopt; });
    gamut->load(dataParams("profile A"), {}, guard());
    gamut->load({{gamutKey, 1}}, {}, guard());
    settle();
    EXPECT_TRUE(log.isEmpty());
    EXPECT_TRUE(gamut->childOrder().isEmpty());
    EXPECT_TRUE(gamut->params().isEmpty());
}

// --- Into the object, in the background ----------------------------------------------------------

TEST_F(ObjectLoad, computesOnAWorkerAndReportsBetweenTheGuards)
{
    gamut->load(dataParams("profile A"), report(), guard());
    EXPECT_TRUE(log.isEmpty());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    settle();
    EXPECT_EQ(log, succeeded);
    EXPECT_TRUE(childrenAtAcquire.isEmpty());
    EXPECT_EQ(childrenAtRelease.size(), 4);
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile A"));
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    EXPECT_NE(fakevelmora::initCalls().first().thread, QThread::currentThread());
    EXPECT_EQ(fakevelmora::initCalls().first().taskName, QStringLiteral("GamutLoader"));
}

TEST_F(ObjectLoad, installsTheGamutBeforeItReports)
{
    Params paramsInReport;
    QVariant volumeInReport;
    bool reported = false;
    gamut->load(dataParams("profile A"),
                [&](const QString&, const QString&, bool) {
                    paramsInReport = gamut->params();
                    volumeInReport = gamut->property(QStringLiteral("volume"));
                    reported = true;
                },
                {});
    ASSERT_TRUE(eventually([&] { return reported; }));
    EXPECT_EQ(paramsInReport, dataParams("profile A"));
    EXPECT_EQ(volumeInReport.toFloat(), 1234.5f);
}

TEST_F(ObjectLoad, reportsTheNameAndTheId)
{
    struct Named : KV3DGamutObject
    {
        using KV3DGamutObject::KV3DGamutObject;
    };
    gamut = QSharedPointer<Named>::create(QStringLiteral("as named"));
    gamut->setId(QStringLiteral("as keyed"));
    gamut->load(dataParams("profile A"), report(), {});
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    EXPECT_EQ(log, QStringList{QStringLiteral("loaded as named as keyed 1")});
}

TEST_F(ObjectLoad, returnsWhileTheEngineIsStillComputing)
{
    QSemaphore mayEnd;
    std::atomic<bool> started{false};
    fakevelmora::onInit([&](const InitCall&) {
        started = true;
        mayEnd.acquire();
        return std::optional(tetrahedron(QStringLiteral("A")));
    });
    gamut->load(dataParams("profile A"), report(), guard());
    ASSERT_TRUE(eventually([&] { return started.load(); }));
    settle();
    EXPECT_TRUE(log.isEmpty());
    EXPECT_TRUE(gamut->childOrder().isEmpty());
    {
        const auto running = KVCompletionProtocol::runningTasks();
        ASSERT_EQ(running.size(), 1);
        EXPECT_EQ(running.first()->name(), QStringLiteral("GamutLoader"));
        EXPECT_FALSE(running.first()->isCancelled());
    }
    mayEnd.release();
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_EQ(log, succeeded);
}

TEST_F(ObjectLoad, worksOnACopyOfTheParameters)
{
    Params params = dataParams("profile A");
    gamut->load(params, report(), guard());
    params.clear();
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_EQ(gamut->params(), dataParams("profile A"));
}

TEST_F(ObjectLoad, restoresASavedGamutInTheBackgroundToo)
{
    fakevelmora::onDeserialize([](const Params&) { return tetrahedron(QStringLiteral("saved")); });
    gamut->load({{gamutKey, 1}}, report(), guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_EQ(log, succeeded);
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("saved"));
}

TEST_F(ObjectLoad, aFailedComputationKeepsThePreviousGamut)
{
    gamut->load(dataParams("profile A"), {}, {});
    const auto front = gamut->childAt({QStringLiteral("Gamut"), QStringLiteral("Front")});
    const QList<float> before = front->vertices();

    fakevelmora::onInit([](const InitCall&) { return std::nullopt; });
    gamut->load(dataParams("profile B"), report(), guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_EQ(log, failed);
    EXPECT_EQ(gamut->params(), dataParams("profile A"));
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile A"));
    EXPECT_EQ(gamut->childAt({QStringLiteral("Gamut"), QStringLiteral("Front")}), front);
    EXPECT_EQ(front->vertices(), before);
    EXPECT_EQ(gamut->property(QStringLiteral("volume")).toFloat(), 1234.5f);
}

TEST_F(ObjectLoad, reportsADamagedSavedGamutLikeAFailedComputation)
{
    gamut->load({{gamutKey, 1}}, report(), guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_EQ(log, failed);
    EXPECT_TRUE(gamut->childOrder().isEmpty());
}

TEST_F(ObjectLoad, reportsAMissingProfileWithoutTheGuard)
{
    gamut->load({}, report(), guard());
    EXPECT_TRUE(log.isEmpty()) << "never from inside load()";
    ASSERT_TRUE(eventually([&] { return !log.isEmpty(); }));
    settle();
    EXPECT_EQ(log, notOpened);
    gamut->load({{pathKey, missingFile()}}, report(), guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 2; }));
    settle();
    EXPECT_EQ(log, notOpened + notOpened);
    EXPECT_TRUE(gamut->childOrder().isEmpty());
}

TEST_F(ObjectLoad, anExceptionOfTheEngineIsAFailure)
{
    fakevelmora::onInit(
        [](const InitCall&) -> std::optional<fakevelmora::Gamut> { throw std::runtime_error("a defect"); });
    gamut->load(dataParams("profile A"), report(), guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    settle();
    EXPECT_EQ(log, failed);
    fakevelmora::onInit({});
    gamut->load(dataParams("profile B"), report(), guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 6; }));
    EXPECT_EQ(log, failed + succeeded);
}

TEST_F(ObjectLoad, aSynchronousLoadThrowsNothing)
{
    gamut->load(dataParams("profile A"), {}, {});
    fakevelmora::onInit([](const InitCall&) -> std::optional<fakevelmora::Gamut> { throw std::bad_alloc(); });
    EXPECT_NO_THROW(gamut->load(dataParams("profile B"), {}, {}));
    fakevelmora::onInit([](const InitCall&) -> std::optional<fakevelmora::Gamut> { throw 1; });
    EXPECT_NO_THROW(gamut->load(dataParams("profile B"), {}, {}));
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile A"));
    EXPECT_EQ(gamut->params(), dataParams("profile A"));
}

TEST_F(ObjectLoad, aCancelledLoadIsNotReported)
{
    const Watchdog watchdog(300);
    std::atomic<bool> started{false};
    fakevelmora::onInit([&](const InitCall& call) -> std::optional<fakevelmora::Gamut> {
        started = true;
        call.waitForCancel();
        return std::nullopt;
    });
    gamut->load(dataParams("profile A"), report(), guard());
    ASSERT_TRUE(eventually([&] { return started.load(); }));
    gamut->cancelLoad();
    settle();
    EXPECT_TRUE(log.isEmpty());
}

// --- Replaced, removed, destroyed ----------------------------------------------------------------

TEST_F(ObjectLoad, aSecondLoadCancelsTheFirst)
{
    const Watchdog watchdog(300);
    std::atomic<bool> started{false};
    std::atomic<bool> firstReturned{false};
    fakevelmora::onInit([&](const InitCall& call) -> std::optional<fakevelmora::Gamut> {
        if (call.profile == "profile A") {
            started = true;
            call.waitForCancel();
            firstReturned = true;
            return std::nullopt;
        }
        return tetrahedron(QString::fromUtf8(call.profile));
    });
    gamut->load(dataParams("profile A"), report(QStringLiteral("first")), guard());
    ASSERT_TRUE(eventually([&] { return started.load(); }));
    gamut->load(dataParams("profile B"), report(), guard());
    EXPECT_TRUE(firstReturned) << "the computation that is replaced is waited for";
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    settle();
    EXPECT_EQ(log, succeeded);
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile B"));
}

TEST_F(ObjectLoad, aResultAfterCancellingIsDropped)
{
    const Watchdog watchdog(300);
    std::atomic<bool> started{false};
    fakevelmora::onInit([&](const InitCall& call) {
        if (call.profile == "profile A") {
            started = true;
            call.waitForCancel(); // and then succeeds although it was cancelled
        }
        return std::optional(tetrahedron(QString::fromUtf8(call.profile)));
    });
    gamut->load(dataParams("profile A"), report(QStringLiteral("first")), guard());
    ASSERT_TRUE(eventually([&] { return started.load(); }));
    gamut->load(dataParams("profile B"), report(), guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    settle();
    EXPECT_EQ(log, succeeded);
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile B"));
    EXPECT_EQ(gamut->params(), dataParams("profile B"));
}

TEST_F(ObjectLoad, aLoadReplacedBeforeItBeganIsNotComputed)
{
    gamut->load(dataParams("profile A"), report(QStringLiteral("first")), guard());
    gamut->load(dataParams("profile B"), report(), guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    settle();
    EXPECT_EQ(log, succeeded);
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    EXPECT_EQ(fakevelmora::initCalls().first().profile, QByteArray("profile B"));
}

TEST_F(ObjectLoad, onlyTheSecondOfTwoCoincidingLoadsReports)
{
    const Watchdog watchdog(300);
    for (int round = 0; round < 150; ++round) {
        log.clear();
        std::atomic<bool> started{false};
        fakevelmora::onInit([&](const InitCall& call) {
            started = true;
            return std::optional(tetrahedron(QString::fromUtf8(call.profile)));
        });
        gamut->load(dataParams("profile A"), report(QStringLiteral("first")), guard());
        while (!started)
            QCoreApplication::processEvents();
        if (!log.isEmpty())
            continue; // it ended in the same iteration of the event loop
        // No event is delivered here while the first load ends and posts its result.
        QElapsedTimer spin;
        for (spin.start(); spin.nsecsElapsed() < round * 2000;) {
        }
        gamut->load(dataParams("profile B"), report(), guard());
        ASSERT_TRUE(eventually([&] { return log.size() >= 3; }));
        settle();
        ASSERT_EQ(log, succeeded) << "round " << round;
        ASSERT_EQ(gamut->params(), dataParams("profile B"));
    }
}

TEST_F(ObjectLoad, aSynchronousLoadDoesNotCancelTheOneInTheBackground)
{
    QSemaphore mayEnd;
    std::atomic<bool> started{false};
    std::atomic<bool> wasCancelled{false};
    fakevelmora::onInit([&](const InitCall& call) {
        if (call.profile == "profile A") {
            started = true;
            mayEnd.acquire();
            wasCancelled = call.isCancelled();
        }
        return std::optional(tetrahedron(QString::fromUtf8(call.profile)));
    });
    gamut->load(dataParams("profile A"), report(), guard());
    ASSERT_TRUE(eventually([&] { return started.load(); }));
    gamut->load(dataParams("profile B"), {}, {});
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile B"));
    mayEnd.release();
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_FALSE(wasCancelled);
    EXPECT_EQ(log, succeeded);
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile A"));
    EXPECT_EQ(gamut->params(), dataParams("profile A"));
}

TEST_F(ObjectLoad, theDestructorCancelsTheLoadAndWaits)
{
    const Watchdog watchdog(300);
    std::atomic<bool> started{false};
    std::atomic<bool> returned{false};
    fakevelmora::onInit([&](const InitCall& call) -> std::optional<fakevelmora::Gamut> {
        started = true;
        call.waitForCancel();
        returned = true;
        return tetrahedron(QStringLiteral("A"));
    });
    gamut->load(dataParams("profile A"), report(), guard());
    ASSERT_TRUE(eventually([&] { return started.load(); }));
    gamut.reset();
    EXPECT_TRUE(returned);
    settle();
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(ObjectLoad, nothingIsReportedAfterTheDestructor)
{
    const Watchdog watchdog(300);
    for (int round = 0; round < 150; ++round) {
        gamut = QSharedPointer<KV3DGamutObject>::create(QStringLiteral("sRGB"));
        log.clear();
        std::atomic<bool> started{false};
        fakevelmora::onInit([&](const InitCall&) {
            started = true;
            return std::optional(tetrahedron(QStringLiteral("A")));
        });
        gamut->load(dataParams("profile A"), report(), guard());
        while (!started)
            QCoreApplication::processEvents();
        const qsizetype before = log.size();
        QElapsedTimer spin;
        for (spin.start(); spin.nsecsElapsed() < round * 2000;) {
        }
        gamut.reset();
        settle();
        EXPECT_EQ(log.size(), before) << "round " << round;
    }
}

TEST_F(ObjectLoad, theCallbackMayDestroyTheObject)
{
    gamut->load(
        dataParams("profile A"),
        [this](const QString& name, const QString& id, bool ok) {
            gamut.reset();
            report()(name, id, ok);
        },
        guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_EQ(log, succeeded);
    EXPECT_TRUE(gamut.isNull());
}

TEST_F(ObjectLoad, theCallbackMayLoadAgain)
{
    gamut->load(
        dataParams("profile A"),
        [this](const QString& name, const QString& id, bool ok) {
            report(QStringLiteral("first"))(name, id, ok);
            gamut->load(dataParams("profile B"), report(), guard());
        },
        guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 6; }));
    settle();
    EXPECT_EQ(log, (QStringList{QStringLiteral("guard 1"), QStringLiteral("first sRGB sRGB 1"),
                                QStringLiteral("guard 0")} +
                    succeeded));
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile B"));
}

TEST_F(ObjectLoad, theCallbackMayLoadSynchronously)
{
    gamut->load(
        dataParams("profile A"),
        [this](const QString& name, const QString& id, bool ok) {
            gamut->load(dataParams("profile B"), {}, {});
            report()(name, id, ok);
        },
        guard());
    ASSERT_TRUE(eventually([&] { return log.size() == 3; }));
    EXPECT_EQ(log, succeeded);
    EXPECT_EQ(nameOfLoaded(), QStringLiteral("profile B"));
    EXPECT_EQ(gamut->params(), dataParams("profile B"));
}

TEST_F(ObjectLoad, twoObjectsLoadInParallel)
{
    const Watchdog watchdog(300);
    std::atomic<int> running{0};
    fakevelmora::onInit([&](const InitCall& call) {
        ++running;
        while (running < 2) // each waits for the other
            QThread::yieldCurrentThread();
        return std::optional(tetrahedron(QString::fromUtf8(call.profile)));
    });
    const auto other = QSharedPointer<KV3DGamutObject>::create(QStringLiteral("other"));
    QStringList otherLog;
    gamut->load(dataParams("profile A"), report(), guard());
    other->load(dataParams("profile B"),
                [&](const QString&, const QString& id, bool) { otherLog.append(id); }, {});
    ASSERT_TRUE(eventually([&] { return log.size() == 3 && !otherLog.isEmpty(); }));
    EXPECT_EQ(log, succeeded);
    EXPECT_EQ(otherLog, QStringList{QStringLiteral("other")});
}
