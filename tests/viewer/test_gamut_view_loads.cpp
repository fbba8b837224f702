// SPDX-License-Identifier: Apache-2.0
#include "GamutViewCase.h"

#include "support/Watchdog.h"

#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>

#include <atomic>
#include <stdexcept>

namespace {

using fakevelmora::InitCall;
using fakevelmora::tetrahedron;
using kvtest::Watchdog;

using kvtest::id;
using kvtest::other;

class GamutViewLoads : public GamutViewCase
{
protected:
    static KVLoadRequest request(const QByteArray& profile = "profile A")
    {
        return KVLoadRequest::fromData(profile);
    }

    /// A function that logs the end of a load.
    KVGamutView::Done report(const QString& word = QStringLiteral("done"))
    {
        return [this, word](const std::optional<KVProblem>& problem) {
            EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
            log.append(word);
            problems.append(
                problem.value_or(KVProblem{KVProblemCode::Cancelled, {}, QStringLiteral("none")}));
        };
    }

    bool lastSucceeded() const
    {
        return !problems.isEmpty() && problems.last().subject == QLatin1String("none");
    }

    /// Computations block until they are cancelled.
    void computeUntilCancelled()
    {
        fakevelmora::onInit([this](const InitCall& call) {
            ++started;
            call.waitForCancel();
            return std::nullopt;
        });
    }

    void loadUntilStarted()
    {
        computeUntilCancelled();
        view->load(id, request(), view.get(), report());
        ASSERT_TRUE(eventually([this] { return started == 1; }));
    }

    QStringList log;
    QList<KVProblem> problems;
    std::atomic<int> started{0};
};

} // namespace

TEST_F(GamutViewLoads, aComputedGamutIsShownWithoutASecondComputation)
{
    const KVGamut::GamutObject gamut = computed(77.0f);
    const auto calls = fakevelmora::initCalls().size();
    QSignalSpy loaded(view.get(), &KVGamutView::loaded);
    view->show(id, gamut, view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_TRUE(lastSucceeded());
    EXPECT_EQ(fakevelmora::initCalls().size(), calls);
    EXPECT_TRUE(fakevelmora::deserialized().isEmpty());
    EXPECT_EQ(viewer->gamuts(), QStringList{id});
    EXPECT_EQ(viewer->volume(id), 77.0f);
    EXPECT_FALSE(item("Profiles", id)
                     ->childAt({QStringLiteral("Gamut"), QStringLiteral("Front")})
                     ->vertices()
                     .isEmpty());
    EXPECT_EQ(&view->gamut(id).mesh(), &gamut.mesh()) << "the data is shared";
    ASSERT_EQ(loaded.size(), 1);
    EXPECT_EQ(loaded[0][0].toString(), id);
}

TEST_F(GamutViewLoads, anEmptyGamutFailsWithItsProblem)
{
    QSignalSpy failed(view.get(), &KVGamutView::failed);
    view->show(id, KVGamut::GamutObject(), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_EQ(problems.last(), *KVGamut::GamutObject().problem());
    ASSERT_EQ(failed.size(), 1);
    EXPECT_EQ(failed[0][1].value<KVProblem>(), problems.last());
}

TEST_F(GamutViewLoads, aRequestIsComputedOnAWorkerWithItsSettings)
{
    KVGamut::Settings settings;
    settings.intent = KVVMRenderPerceptual;
    settings.blackPointCompensation = true;
    settings.gridPoints = 9;
    settings.adaptation = KVGamut::Adaptation::None;
    view->load(id, KVLoadRequest::fromData("profile A", settings), view.get(), report());
    EXPECT_TRUE(view->isLoading());
    EXPECT_TRUE(view->isLoading(id));
    EXPECT_FALSE(view->isLoading(other));
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_TRUE(lastSucceeded());
    EXPECT_FALSE(view->isLoading());
    ASSERT_EQ(fakevelmora::initCalls().size(), 1);
    const InitCall call = fakevelmora::initCalls().first();
    EXPECT_EQ(call.intent, 0);
    EXPECT_TRUE(call.blackPointCompensation);
    EXPECT_EQ(call.gridPoints, 9);
    EXPECT_EQ(call.adaptation, KVGamut::Adaptation::None);
    EXPECT_NE(call.thread, QThread::currentThread());
}

TEST_F(GamutViewLoads, paramsAnswersAHashThatLoadsTheSameGamut)
{
    KVGamut::Settings settings;
    settings.gridPoints = 9;
    view->load(id, KVLoadRequest::fromData("profile A", settings), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    const auto again = KVLoadRequest::fromParams(viewer->params(id));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->profileData, QByteArray("profile A"));
    EXPECT_EQ(again->settings, settings);
}

TEST_F(GamutViewLoads, anUnreadableProfileFailsWithTheProblemOfTheEngine)
{
    view->load(id, request("text"), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_EQ(problems.last().code, KVProblemCode::NotAProfile);
}

TEST_F(GamutViewLoads, aRequestWithoutASourceFails)
{
    view->load(id, KVLoadRequest(), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_EQ(problems.last().code, KVProblemCode::NoSource);
}

TEST_F(GamutViewLoads, aFailedLoadKeepsWhatWasShown)
{
    view->show(id, computed(77.0f), view.get(), report());
    ASSERT_TRUE(eventually([this] { return log.size() == 1; }));
    view->load(id, request("text"), view.get(), report());
    ASSERT_TRUE(eventually([this] { return log.size() == 2; }));
    EXPECT_FALSE(lastSucceeded());
    EXPECT_EQ(viewer->volume(id), 77.0f);
}

TEST_F(GamutViewLoads, anEngineThatThrowsFailsWithOutOfMemory)
{
    fakevelmora::onInit([](const InitCall&) -> std::optional<fakevelmora::Gamut> { throw std::bad_alloc(); });
    view->load(id, request(), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_EQ(problems.last().code, KVProblemCode::OutOfMemory);
    EXPECT_FALSE(view->isLoading());
}

TEST_F(GamutViewLoads, anEngineWithADefectFailsWithACodeOfItsOwn)
{
    fakevelmora::onInit(
        [](const InitCall&) -> std::optional<fakevelmora::Gamut> { throw std::runtime_error("a defect"); });
    view->load(id, request(), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_EQ(problems.last().code, KVProblemCode::EngineFailed);
    EXPECT_FALSE(view->isLoading());
}

TEST_F(GamutViewLoads, aCancelledLoadEndsWithTheCodeCancelled)
{
    const Watchdog watchdog(60);
    QSignalSpy failed(view.get(), &KVGamutView::failed);
    loadUntilStarted();
    view->cancel(id);
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    settle();
    EXPECT_EQ(log.size(), 1);
    EXPECT_EQ(problems.last().code, KVProblemCode::Cancelled);
    EXPECT_FALSE(lastSucceeded());
    ASSERT_EQ(failed.size(), 1);
    EXPECT_EQ(failed[0][1].value<KVProblem>().code, KVProblemCode::Cancelled);
    EXPECT_FALSE(view->isLoading());
}

TEST_F(GamutViewLoads, aLoadCancelledInTheSameTurnShowsNothing)
{
    view->show(id, computed(), view.get(), report());
    view->cancel(id);
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_FALSE(lastSucceeded());
    EXPECT_EQ(viewer->volume(id), 0.0f);
}

TEST_F(GamutViewLoads, aReplacedLoadReportsCancelledOnceAndNoSignal)
{
    const Watchdog watchdog(60);
    QSignalSpy failed(view.get(), &KVGamutView::failed);
    loadUntilStarted();
    view->show(id, computed(), view.get(), report(QStringLiteral("second")));
    EXPECT_TRUE(log.isEmpty()) << "not from inside the call";
    ASSERT_TRUE(eventually([this] { return log.size() == 2; }));
    settle();
    EXPECT_EQ(log, (QStringList{QStringLiteral("done"), QStringLiteral("second")}));
    EXPECT_EQ(problems[0], (KVProblem{KVProblemCode::Cancelled, {}, {}}));
    EXPECT_TRUE(lastSucceeded());
    EXPECT_TRUE(failed.isEmpty());
}

TEST_F(GamutViewLoads, aRemovedGamutSaysNothing)
{
    const Watchdog watchdog(60);
    QSignalSpy failed(view.get(), &KVGamutView::failed);
    loadUntilStarted();
    view->remove(id);
    settle();
    EXPECT_TRUE(log.isEmpty());
    EXPECT_TRUE(failed.isEmpty());
    EXPECT_FALSE(viewer->exists(id));
    EXPECT_FALSE(view->isLoading());
}

TEST_F(GamutViewLoads, nothingIsCalledOnceTheContextIsGone)
{
    QSignalSpy loaded(view.get(), &KVGamutView::loaded);
    auto context = std::make_unique<QObject>();
    view->show(id, computed(), context.get(), report());
    context.reset();
    ASSERT_TRUE(eventually([&] { return !loaded.isEmpty(); }));
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(GamutViewLoads, nothingIsCalledOnceTheViewIsGone)
{
    QObject context;
    view->show(id, computed(), &context, report());
    view.reset();
    ASSERT_TRUE(eventually([this] { return viewer->volume(id) > 0.0f; }));
    settle();
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(GamutViewLoads, theFunctionIsDestroyedOnTheGuiThread)
{
    struct Token
    {
        ~Token() { EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread()); }
    };
    auto token = std::make_shared<Token>();
    const std::weak_ptr<Token> watch = token;
    view->show(id, computed(), view.get(), [token](const std::optional<KVProblem>&) {});
    token.reset();
    EXPECT_TRUE(eventually([&] { return watch.expired(); }));
}

TEST_F(GamutViewLoads, theFunctionMayDestroyViewerAndView)
{
    view->show(id, computed(), view.get(), [this](const std::optional<KVProblem>&) {
        viewer.reset();
        view.reset();
        log.append(QStringLiteral("done"));
    });
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    settle();
}

TEST_F(GamutViewLoads, aSlotMayDestroyTheViewer)
{
    for (const bool ok : {true, false}) {
        QObject::connect(view.get(), &KVGamutView::loaded, view.get(), [this] { viewer.reset(); });
        QObject::connect(view.get(), &KVGamutView::failed, view.get(), [this] { viewer.reset(); });
        QObject::connect(view.get(), &KVGamutView::progressChanged, view.get(), [this] { log.append(id); });
        view->show(id, ok ? computed() : KVGamut::GamutObject());
        ASSERT_TRUE(eventually([this] { return !viewer; }));
        settle();
        EXPECT_EQ(view->viewer(), nullptr);
        viewer = std::make_unique<KVGamut3DViewer>();
        view = std::make_unique<KVGamutView>(viewer.get());
    }
}

TEST_F(GamutViewLoads, aSlotOfTheProgressMayDestroyTheViewer)
{
    QObject::connect(view.get(), &KVGamutView::progressChanged, view.get(), [this] { viewer.reset(); });
    view->show(id, computed(), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !viewer; }));
    settle();
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(GamutViewLoads, progressNeverDecreasesAndEndsAtOne)
{
    const Watchdog watchdog(60);
    QSemaphore seen;
    fakevelmora::onInit([&](const InitCall& call) {
        call.protocol->setProgress(0.25f);
        seen.acquire();
        return tetrahedron(QStringLiteral("A"));
    });
    QList<float> values;
    QObject::connect(view.get(), &KVGamutView::progressChanged, view.get(),
                     [&](const QString& of, float value) {
                         EXPECT_EQ(of, id);
                         values.append(value);
                         if (value == 0.25f)
                             seen.release();
                     });
    view->load(id, request(), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    ASSERT_GE(values.size(), 2);
    EXPECT_EQ(values.first(), 0.25f);
    EXPECT_EQ(values.last(), 1.0f);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    EXPECT_EQ(view->progress(id), 1.0f);
}

TEST_F(GamutViewLoads, loadingChangedComesAtTheFirstStartAndTheLastEnd)
{
    QList<bool> states;
    QObject::connect(view.get(), &KVGamutView::loadingChanged, view.get(),
                     [&] { states.append(view->isLoading()); });
    view->show(id, computed(), view.get(), report());
    view->show(other, computed(), view.get(), report());
    ASSERT_TRUE(eventually([this] { return log.size() == 2; }));
    EXPECT_EQ(states, (QList<bool>{true, false}));
}

TEST_F(GamutViewLoads, loadsOfTheViewerAreReportedToo)
{
    QSignalSpy loaded(view.get(), &KVGamutView::loaded);
    viewer->load(id, {{QStringLiteral("ProfileData"), QByteArray("profile A")}}, [](const QString&, bool) {});
    EXPECT_TRUE(view->isLoading(id));
    ASSERT_TRUE(eventually([&] { return !loaded.isEmpty(); }));
    EXPECT_EQ(view->gamut(id).volume(), 1234.5f);
}

TEST_F(GamutViewLoads, aLoadOfTheViewerReplacesOneOfTheView)
{
    const Watchdog watchdog(60);
    loadUntilStarted();
    fakevelmora::onInit({});
    viewer->load(id, {{QStringLiteral("ProfileData"), QByteArray("profile B")}},
                 [this](const QString&, bool) { log.append(QStringLiteral("viewer")); });
    ASSERT_TRUE(eventually([this] { return log.size() == 2; }));
    EXPECT_EQ(log, (QStringList{QStringLiteral("done"), QStringLiteral("viewer")}));
    EXPECT_EQ(problems.last(), (KVProblem{KVProblemCode::Cancelled, {}, {}}));
}

TEST_F(GamutViewLoads, aLoadOfTheViewReplacesOneOfTheViewerSilently)
{
    const Watchdog watchdog(60);
    computeUntilCancelled();
    viewer->load(id, {{QStringLiteral("ProfileData"), QByteArray("profile A")}},
                 [this](const QString&, bool) { log.append(QStringLiteral("viewer")); });
    ASSERT_TRUE(eventually([this] { return started == 1; }));
    view->show(id, computed(), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    settle();
    EXPECT_EQ(log, QStringList{QStringLiteral("done")});
}

TEST_F(GamutViewLoads, twoViewsOfOneViewerReportTheSameLoads)
{
    KVGamutView second(viewer.get());
    QSignalSpy loaded(&second, &KVGamutView::loaded);
    view->show(id, computed(), view.get(), report());
    EXPECT_TRUE(second.isLoading(id));
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_EQ(loaded.size(), 1);
    EXPECT_EQ(second.gamut(id).volume(), 1234.5f);
}

TEST_F(GamutViewLoads, aViewFindsGamutsLoadedBeforeIt)
{
    viewer->load(id, {{QStringLiteral("ProfileData"), QByteArray("profile A")}}, {});
    const KVGamutView late(viewer.get());
    EXPECT_EQ(late.gamut(id).volume(), 1234.5f);
    EXPECT_EQ(late.look(id).ambientStrength, 1.0f);
}

TEST_F(GamutViewLoads, withoutItsViewerAViewDoesNothing)
{
    view->show(id, computed(), view.get(), report());
    viewer.reset();
    settle();
    EXPECT_TRUE(log.isEmpty());
    view->show(id, computed(), view.get(), report());
    view->load(id, request(), view.get(), report());
    view->cancel(id);
    view->remove(id);
    view->setLook(id, {});
    view->setTheme({});
    view->setState({});
    view->setCamera({});
    view->frame();
    settle();
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(view->viewer(), nullptr);
    EXPECT_FALSE(view->isLoading());
    EXPECT_EQ(view->progress(id), 1.0f);
    EXPECT_EQ(view->gamut(id).volume(), 0.0f);
    EXPECT_EQ(view->look(id), KVGamutLook());
    EXPECT_EQ(view->state(), KVViewState());
    EXPECT_EQ(view->hitAt({}).kind, KVHit::Kind::Nothing);
}

TEST_F(GamutViewLoads, aMisspeltKeyOfTheHashIsRefused)
{
    KVProblem problem;
    EXPECT_FALSE(KVLoadRequest::fromParams({{QStringLiteral("AdditionalParam"), QVariantHash()}}, &problem));
    EXPECT_EQ(problem, (KVProblem{KVProblemCode::UnknownSetting, {QStringLiteral("AdditionalParam")}, {}}));
    const QVariantHash settings{{QStringLiteral("Link_GridPoints"), 9}};
    EXPECT_FALSE(KVLoadRequest::fromParams({{QStringLiteral("AdditionnalParam"), settings}}, &problem));
    EXPECT_EQ(problem.arguments, QStringList{QStringLiteral("Link_GridPoints")});
    EXPECT_FALSE(KVLoadRequest::fromParams({{QStringLiteral("profilepath"), QString()}}))
        << "without a problem";
}

TEST_F(GamutViewLoads, theHashBecomesATypedRequest)
{
    const QVariantHash settings{{QStringLiteral("Link_GridPointNumber"), 9},
                                {QStringLiteral("Link_ICCRendering"), 1},
                                {QStringLiteral("Link_blackPointCompensation"), true},
                                {QStringLiteral("Link_adaptation"), 2}};
    const auto read = KVLoadRequest::fromParams({{QStringLiteral("ProfilePath"), QStringLiteral("a.icc")},
                                                 {QStringLiteral("ProfileData"), QByteArray("data")},
                                                 {QStringLiteral("AdditionnalParam"), settings}});
    ASSERT_TRUE(read);
    EXPECT_EQ(read->profilePath, QStringLiteral("a.icc"));
    EXPECT_EQ(read->profileData, QByteArray("data"));
    EXPECT_EQ(read->settings.gridPoints, 9);
    EXPECT_EQ(read->settings.intent, KVVMRenderRelativeColorimetric);
    EXPECT_TRUE(read->settings.blackPointCompensation);
    EXPECT_EQ(read->settings.adaptation, KVGamut::Adaptation::NoneD65);
    const QVariantHash saved{{QStringLiteral("Gamut"), 1}, {QStringLiteral("More"), 2}};
    EXPECT_EQ(KVLoadRequest::fromParams(saved)->savedGamut, saved);
}

TEST_F(GamutViewLoads, theAdaptationIsAmongTheParametersOnlyIfItIsUndone)
{
    const auto adaptation = [this](KVGamut::Adaptation value) {
        KVGamut::Settings settings;
        settings.adaptation = value;
        log.clear();
        view->load(id, KVLoadRequest::fromData("profile A", settings), view.get(), report());
        EXPECT_TRUE(eventually([this] { return !log.isEmpty(); }));
        const QVariantHash used = viewer->params(id).value(QStringLiteral("AdditionnalParam")).toHash();
        return used.value(QStringLiteral("Link_adaptation"));
    };
    EXPECT_FALSE(adaptation(KVGamut::Adaptation::Full).isValid());
    EXPECT_EQ(adaptation(KVGamut::Adaptation::None), QVariant(1));
}

TEST_F(GamutViewLoads, aSavedGamutIsRestored)
{
    const QVariantHash saved = computed(55.0f).serialize();
    view->load(id, KVLoadRequest::fromSaved(saved), view.get(), report());
    ASSERT_TRUE(eventually([this] { return !log.isEmpty(); }));
    EXPECT_TRUE(lastSucceeded());
    EXPECT_EQ(viewer->volume(id), 55.0f);
    EXPECT_EQ(viewer->params(id), saved);
}
