// SPDX-License-Identifier: Apache-2.0
// Loads with one allocation that fails, for each allocation in turn: in the viewer, the geometry and the
// engine.
//
// Most of the 1,400 allocations of a computed gamut are the same for each source. Of the cases that repeat
// them only each eleventh allocation fails, unless KV_EVERY_ALLOCATION is set, as in the test
// every_failed_allocation, which has the label "slow".

#include <KVGamutView.h>

#include "support/AllocationFailure.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtGui/QColorSpace>

#include <functional>
#include <new>
#include <ostream>
#include <string>
#include <thread>
#include <tuple>

namespace {

const QString id = QStringLiteral("gamut");

KVGamut::Settings fewPoints()
{
    KVGamut::Settings settings;
    settings.gridPoints = 2;
    return settings;
}

KVGamut::GamutObject computed(const QByteArray& profile)
{
    const KVProfilePtr opened(KVProfileCreateWithData(profile.constData(), static_cast<int>(profile.size())),
                              KVProfileRelease);
    KVGamut::GamutObject gamut;
    EXPECT_TRUE(gamut.init(opened, fewPoints()));
    return gamut;
}

/// What a host sees of a gamut.
struct Shown
{
    float volume = 0.0f;
    qsizetype faces = 0;
    bool hasProjection = false;
    bool saves = false;

    bool operator==(const Shown&) const = default;
};

void PrintTo(const Shown& shown, std::ostream* out)
{
    *out << shown.volume << " in " << shown.faces << " faces" << (shown.hasProjection ? ", outline" : "")
         << (shown.saves ? ", can be saved" : "");
}

enum class Source
{
    Hash,
    HashWithoutCallback,
    Data,
    File,
    Saved,
    Computed,
};

enum class Before
{
    Nothing,
    Surface,
    Wireframe,
    Recoloured, ///< a surface whose look is changed during the load
};

/// How far apart the allocations are that fail.
enum class Step : std::uint64_t
{
    Every = 1,
    Eleventh = 11,
};

using Case = std::tuple<Source, Before, Step>;

class ExhaustedMemory : public testing::TestWithParam<Case>
{
protected:
    using Report = std::function<void(bool)>;

    void SetUp() override
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(profile);
        before = computed(QColorSpace(QColorSpace::SRgb).iccProfile());
        after = computed(profile);
        saved = after.serialize();
    }

    Shown shown()
    {
        return {viewer.volume(id), viewer.faceList(id).size(), viewer.displayProjection(id),
                !viewer.save(id).isEmpty()};
    }

    static Shown shownOf(const KVGamut::GamutObject& gamut)
    {
        return {gamut.volume(), gamut.faceCount(), true, true};
    }

    /// Starts a load of the gamut and reports its end.
    void load(const Report& report)
    {
        const auto done = [&report](const std::optional<KVProblem>& problem) { report(!problem); };
        switch (std::get<Source>(GetParam())) {
        case Source::Hash:
            viewer.load(id, params, [&report](const QString&, bool ok) { report(ok); });
            return;
        case Source::HashWithoutCallback:
            viewer.load(id, params, {});
            report(viewer.volume(id) == after.volume());
            return;
        case Source::Data:
            view.load(id, KVLoadRequest::fromData(profile, settings), &view, done);
            return;
        case Source::File:
            view.load(id, KVLoadRequest::fromFile(path, settings), &view, done);
            return;
        case Source::Saved:
            view.load(id, KVLoadRequest::fromSaved(saved), &view, done);
            return;
        case Source::Computed:
            view.show(id, after, &view, done);
            return;
        }
    }

    /// QTest::qWaitFor() would sleep ten milliseconds in each of thousands of loads.
    template <typename Condition>
    static bool waitFor(const Condition& isTrue)
    {
        const QDeadlineTimer deadline(60000);
        QTimer wake;
        wake.start(1000);
        while (!isTrue() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return isTrue();
    }

    /// Whether a load succeeded that was reported once.
    bool succeeds()
    {
        int reports = 0;
        bool succeeded = false;
        EXPECT_NO_THROW(load([&](bool ok) {
            ++reports;
            succeeded = ok;
        }));
        if (std::get<Before>(GetParam()) == Before::Recoloured)
            changeLook();
        EXPECT_TRUE(waitFor([&] { return reports > 0; }));
        QCoreApplication::processEvents();
        EXPECT_EQ(reports, 1);
        EXPECT_FALSE(view.isLoading());
        return succeeded;
    }

    void changeLook()
    {
        const kvtest::AllocationsWork now;
        viewer.changeGamutColor(id, Qt::red);
        viewer.changeGamutAlpha(id, 0.5f, 0);
    }

    void prepare()
    {
        viewer.removeGamut(id);
        if (std::get<Before>(GetParam()) == Before::Nothing)
            return;
        bool done = false;
        view.show(id, before, &view, [&done](const std::optional<KVProblem>& problem) {
            EXPECT_FALSE(problem);
            done = true;
        });
        ASSERT_TRUE(waitFor([&done] { return done; }));
        if (std::get<Before>(GetParam()) == Before::Wireframe)
            viewer.setDisplayMode(id, KVGamut3DViewer::Wireframe);
    }

    const QByteArray profile = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    const QHash<QString, QVariant> params{
        {QStringLiteral("ProfileData"), profile},
        {QStringLiteral("AdditionnalParam"), QVariantHash{{QStringLiteral("Link_GridPointNumber"), 2}}}};
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("profile.icc"));
    const KVGamut::Settings settings = fewPoints();
    KVGamut::GamutObject before, after;
    QVariantHash saved;
    KVGamut3DViewer viewer;
    KVGamutView view{&viewer};
};

std::string nameOf(const testing::TestParamInfo<Case>& info)
{
    const char* sources[] = {"Hash", "HashWithoutCallback", "Data", "File", "Saved", "Computed"};
    const char* states[] = {"OnNothing", "OnASurface", "OnAWireframe", "WhileTheLookChanges"};
    return std::string(sources[static_cast<std::size_t>(std::get<Source>(info.param))]) +
           states[static_cast<std::size_t>(std::get<Before>(info.param))];
}

} // namespace

// The first load that needs fewer allocations ends the test.
TEST_P(ExhaustedMemory, letsALoadFailWholeAndTheNextSucceed)
{
    const Shown old = std::get<Before>(GetParam()) == Before::Nothing ? Shown{} : shownOf(before);
    const Shown fresh = shownOf(after);
    const auto step =
        qEnvironmentVariableIsSet("KV_EVERY_ALLOCATION") ? Step::Every : std::get<Step>(GetParam());
    int failed = 0;
    bool reached = true;
    std::uint64_t n = 0;
    for (; reached && !HasFailure(); n += static_cast<std::uint64_t>(step)) {
        SCOPED_TRACE("allocation " + std::to_string(n));
        prepare();
        bool succeeded = false;
        {
            const kvtest::AllocationFailure failure(n);
            succeeded = succeeds();
            reached = failure.wasReached();
            failed += failure.hasFailed();
        }
        EXPECT_EQ(shown(), succeeded ? fresh : old);
        EXPECT_TRUE(succeeded || succeeds());
        EXPECT_EQ(shown(), fresh);
    }
    if (HasFailure())
        kvtest::AllocationFailure::printOrigin();
    EXPECT_GT(failed, 20);
    RecordProperty("failedAllocations", failed);
}

// Each allocation of a thread that opens its first profile, the registration of thread-local objects
// included.
TEST(ExhaustedMemoryInAProfile, isReportedOnANewThread)
{
    bool reached = true;
    int failed = 0;
    for (std::uint64_t n = 0; reached && !HasFailure(); ++n) {
        std::thread([&] {
            const char noProfile[] = "no profile";
            KVProfile* opened = nullptr;
            {
                const kvtest::AllocationFailure failure(n);
                opened = KVProfileCreateWithData(noProfile, sizeof noProfile);
                reached = failure.wasReached();
                failed += failure.hasFailed();
            }
            EXPECT_EQ(opened, nullptr);
            EXPECT_TRUE(KVProfileProblem().has_value()) << n;
        }).join();
    }
    EXPECT_GT(failed, 0);
}

TEST(ExhaustedMemoryInAGamut, leavesNoPartOfItsLists)
{
    const KVGamut::GamutObject whole = computed(QColorSpace(QColorSpace::SRgb).iccProfile());
    const QVariantHash saved = whole.serialize();
    bool reached = true;
    int failed = 0;
    for (std::uint64_t n = 0; reached && !HasFailure(); ++n) {
        KVGamut::GamutObject gamut;
        gamut.deserialize(saved);
        try {
            const kvtest::AllocationFailure failure(n);
            const auto faces = gamut.faces();
            const auto outline = gamut.outline();
            reached = failure.wasReached();
        } catch (const std::bad_alloc&) {
            ++failed;
        }
        EXPECT_EQ(gamut.faces().size(), whole.faceCount()) << "allocation " << n;
        EXPECT_EQ(gamut.outline().size(), whole.outline().size()) << "allocation " << n;
    }
    EXPECT_GT(failed, 20);
}

using testing::Combine;
using testing::Values;

INSTANTIATE_TEST_SUITE_P(Saved, ExhaustedMemory,
                         Combine(Values(Source::Saved, Source::Computed),
                                 Values(Before::Nothing, Before::Surface, Before::Recoloured),
                                 Values(Step::Every)),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Whole, ExhaustedMemory,
                         Values(Case{Source::Data, Before::Surface, Step::Every},
                                Case{Source::HashWithoutCallback, Before::Nothing, Step::Every}),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Sampled, ExhaustedMemory,
                         Values(Case{Source::Data, Before::Nothing, Step::Eleventh},
                                Case{Source::Data, Before::Wireframe, Step::Eleventh},
                                Case{Source::File, Before::Nothing, Step::Eleventh},
                                Case{Source::File, Before::Surface, Step::Eleventh},
                                Case{Source::Hash, Before::Nothing, Step::Eleventh},
                                Case{Source::Hash, Before::Surface, Step::Eleventh},
                                Case{Source::HashWithoutCallback, Before::Surface, Step::Eleventh}),
                         nameOf);
