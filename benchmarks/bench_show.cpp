// SPDX-License-Identifier: Apache-2.0
// Time from a computed gamut to its geometry in the viewer, and the longest block of the GUI thread, for the
// two ways in which a host can show a gamut that it has computed: serialize() and KVGamut3DViewer::load(), or
// KVGamutView::show().
//
//     xvfb-run -a bench_show [runs]
//
// Times are medians. The viewer is not shown unless stated otherwise, because drawing is the same for both
// ways.

#include <KVGamutView.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace {

using KVGamut::GamutObject;
using Done = std::function<void()>;

constexpr int gamutCount = 12; // shown one after another
constexpr int maxMs = 60000;   // for one measurement

[[noreturn]] void fail(const char* reason)
{
    std::fprintf(stderr, "bench_show: %s\n", reason);
    std::exit(1);
}

/// Processor time so far, of the process (CLOCK_PROCESS_CPUTIME_ID) or of the calling thread.
double milliseconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

struct Host
{
    KVGamut3DViewer viewer;
    KVGamutView view{&viewer};
};

/// A way to show a gamut. Calls done when its geometry is in the viewer.
using Show = void (*)(Host& host, const QString& id, const GamutObject& gamut, Done done);

void showSerialized(Host& host, const QString& id, const GamutObject& gamut, Done done)
{
    host.viewer.load(id, gamut.serialize(),
                     [done](const QString&, bool ok) { ok ? done() : fail("load failed"); });
}

void showDirectly(Host& host, const QString& id, const GamutObject& gamut, Done done)
{
    host.view.show(id, gamut, &host.view, [done](const std::optional<KVProblem>& problem) {
        problem ? fail("show failed") : done();
    });
}

/// Runs @p start in an event loop until it calls its argument.
void runUntilDone(const std::function<void(Done)>& start)
{
    QEventLoop loop;
    QTimer::singleShot(maxMs, &loop, [] { fail("timeout"); });
    QTimer::singleShot(0, &loop, [&] { start([&loop] { loop.quit(); }); });
    loop.exec();
}

double timeToShow(Show show, const GamutObject& gamut)
{
    Host host;
    double elapsed = 0.0;
    runUntilDone([&](Done quit) {
        const double start = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
        show(host, QStringLiteral("g"), gamut, [&elapsed, start, quit] {
            elapsed = milliseconds(CLOCK_PROCESS_CPUTIME_ID) - start;
            quit();
        });
    });
    return elapsed;
}

/// Measures the longest time between two passes of the event loop.
class LongestBlock
{
public:
    LongestBlock()
    {
        QObject::connect(&m_tick, &QTimer::timeout, [this] {
            const double now = milliseconds(CLOCK_THREAD_CPUTIME_ID);
            m_max = std::max(m_max, now - m_lastTick);
            m_lastTick = now;
        });
        m_tick.start(0);
    }

    double max() const { return m_max; }

private:
    QTimer m_tick;
    double m_lastTick = milliseconds(CLOCK_THREAD_CPUTIME_ID);
    double m_max = 0.0;
};

void showNext(Host& host, Show show, const std::vector<GamutObject>& gamuts, std::size_t i, const Done& done)
{
    if (i == gamuts.size())
        return done();
    show(host, QString::number(i), gamuts[i], [&host, show, &gamuts, i, done] {
        QTimer::singleShot(0, &host.view,
                           [&host, show, &gamuts, i, done] { showNext(host, show, gamuts, i + 1, done); });
    });
}

void waitUntilSettled(const KVGamut3DViewer& viewer)
{
    QElapsedTimer timer;
    timer.start();
    while (!viewer.isSettled()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        if (timer.hasExpired(maxMs))
            fail("the viewer draws nothing");
    }
}

double longestBlock(Show show, const std::vector<GamutObject>& gamuts, bool shown)
{
    Host host;
    host.viewer.resize(200, 150);
    if (shown) {
        host.viewer.show();
        waitUntilSettled(host.viewer);
    }
    double max = 0.0;
    runUntilDone([&](Done quit) {
        const auto block = std::make_shared<LongestBlock>();
        showNext(host, show, gamuts, 0, [&max, block, quit] {
            max = block->max();
            quit();
        });
    });
    return max;
}

GamutObject computed(const QString& path, int gridPoints)
{
    const KVProfilePtr profile(KVProfileCreateWithPath(path.toUtf8().constData()), KVProfileRelease);
    GamutObject gamut;
    if (!gamut.init(profile, KVGamut::Settings{.gridPoints = gridPoints}))
        fail("a gamut cannot be computed");
    return gamut;
}

void print(const char* what, double before, double after)
{
    std::printf("%-44s serialized %8.2f ms, direct %8.2f ms, ratio %5.1f\n", what, before, after,
                before / after);
    std::fflush(stdout);
}

/// Alternates both ways, so that both run under the same load.
void compare(const char* what, int runs, const std::function<double(Show)>& measure)
{
    std::vector<double> before, after;
    for (int i = -1; i < runs; ++i) { // the first run is a warm-up
        const double serialized = measure(showSerialized), direct = measure(showDirectly);
        if (i < 0)
            continue;
        before.push_back(serialized);
        after.push_back(direct);
    }
    print(what, median(before), median(after));
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const int runs = argc > 1 ? std::clamp(std::atoi(argv[1]), 1, 1000) : 5;
    const QString rgb = QStringLiteral("/usr/share/color/icc/colord/sRGB.icc");
    const QString cmyk = QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc");
    const bool hasCmyk = QFile::exists(cmyk);
    if (!QFile::exists(rgb))
        fail("no profile sRGB.icc");

    std::printf("medians of %d runs\n", runs);
    for (const int grid : {33, 65}) {
        const GamutObject gamut = computed(rgb, grid);
        compare(grid == 33 ? "sRGB, grid 33" : "sRGB, grid 65", runs,
                [&](Show show) { return timeToShow(show, gamut); });
    }
    if (hasCmyk) {
        const GamutObject gamut = computed(cmyk, KVGamut::Settings::engineChoosesGrid);
        compare("CMYK, default grid", runs, [&](Show show) { return timeToShow(show, gamut); });
    }

    std::vector<GamutObject> gamuts;
    for (int i = 0; i < gamutCount; ++i)
        gamuts.push_back(computed(hasCmyk && i % 2 ? cmyk : rgb, 33));
    compare("longest block, 12 gamuts, viewer not shown", runs,
            [&](Show show) { return longestBlock(show, gamuts, false); });
    compare("longest block, 12 gamuts, viewer shown", runs,
            [&](Show show) { return longestBlock(show, gamuts, true); });
}
