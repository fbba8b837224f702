// SPDX-License-Identifier: Apache-2.0
// What a load costs in the viewer, beside the computation of the gamut alone, and how long the GUI thread is
// blocked by load, reload, removal, clearing and destruction at the finest grid.
//
//     QT_QPA_PLATFORM=offscreen bench_load [runs]
//
// The viewer is not shown, because frames cost the same however a gamut was loaded. Costs are processor time
// of the whole process; blocks are elapsed time, because the GUI thread may wait for a worker. Costs
// are medians of the runs. A block is the longest one of a run, and of the runs the shortest: what occurs in
// every run comes from the viewer, the rest from other programs. The exit code is 1 if a documented limit is
// exceeded.

#include <KVGamutView.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

#include <malloc.h>
#include <sys/resource.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace {

using Params = QHash<QString, QVariant>;

constexpr double maxCostRatio = 1.3;
constexpr double maxKeptMegabytes = 8.0; // sRGB at grid 33
constexpr double maxBlockMs = 10.0;
constexpr int finestGrid = 129;
constexpr int maxWaitMs = 60000; // for one measurement

bool withinLimits = true;

[[noreturn]] void fail(const char* reason)
{
    std::fprintf(stderr, "bench_load: %s\n", reason);
    std::exit(2);
}

double processMs()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

double elapsedMs(const std::function<void()>& action)
{
    QElapsedTimer clock;
    clock.start();
    action();
    return 1e-6 * static_cast<double>(clock.nsecsElapsed());
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double shortest(const std::vector<double>& values)
{
    return *std::min_element(values.begin(), values.end());
}

double heapMegabytes()
{
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / (1024.0 * 1024.0);
}

const char* verdict(double value, double limit)
{
    withinLimits = withinLimits && value <= limit;
    return value <= limit ? "" : "  OVER THE LIMIT";
}

/// What to load. A grid of -1 is the default one.
struct Source
{
    const char* name;
    QString path;
    int grid;
};

Params paramsOf(const Source& source)
{
    const Params settings{{QStringLiteral("Link_GridPointNumber"), source.grid}};
    return {{QStringLiteral("ProfilePath"), source.path}, {QStringLiteral("AdditionnalParam"), settings}};
}

/// Runs @p start in an event loop until it calls its argument.
void runUntilDone(const std::function<void(std::function<void()>)>& start)
{
    QEventLoop loop;
    QTimer timeout;
    QObject::connect(&timeout, &QTimer::timeout, [] { fail("timeout"); });
    timeout.start(maxWaitMs);
    QTimer::singleShot(0, &loop, [&] { start([&loop] { loop.quit(); }); });
    loop.exec();
}

void load(KVGamut3DViewer& viewer, const Source& source)
{
    runUntilDone([&](const std::function<void()>& done) {
        viewer.load(QStringLiteral("g"), paramsOf(source), [done](const QString&, bool ok) {
            if (!ok)
                fail("a load failed");
            done();
        });
    });
}

void waitUntilIdle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, [&loop] { loop.quit(); });
    loop.exec();
}

// --- Cost and memory ------------------------------------------------------------------------------

double engineMs(const Source& source)
{
    const double start = processMs();
    const KVProfilePtr profile(KVProfileCreateWithPath(source.path.toUtf8().constData()), KVProfileRelease);
    KVGamut::GamutObject gamut;
    if (!gamut.init(profile, KVGamut::Settings{.gridPoints = source.grid}))
        fail("a gamut cannot be computed");
    return processMs() - start;
}

struct LoadCost
{
    double ms = 0.0;
    double keptMegabytes = 0.0;
};

LoadCost loadCost(const Source& source)
{
    KVGamut3DViewer viewer;
    waitUntilIdle(0);
    const double memory = heapMegabytes();
    const double start = processMs();
    load(viewer, source);
    const double ms = processMs() - start;
    waitUntilIdle(0);
    return {ms, heapMegabytes() - memory};
}

/// Alternates both, so that both run under the same load of the machine.
void compareCosts(const Source& source, int runs)
{
    std::vector<double> engine, viewer, kept;
    for (int i = -1; i < runs; ++i) { // the first run is a warm-up
        const double alone = engineMs(source);
        const LoadCost loaded = loadCost(source);
        if (i < 0)
            continue;
        engine.push_back(alone);
        viewer.push_back(loaded.ms);
        kept.push_back(loaded.keptMegabytes);
    }
    const double ratio = median(viewer) / median(engine);
    const double maxKept = source.grid == 33 ? maxKeptMegabytes : 1e9;
    std::printf("%-22s engine %8.1f ms, load %8.1f ms, ratio %5.2f%s, kept %7.1f MB%s\n", source.name,
                median(engine), median(viewer), ratio, verdict(ratio, maxCostRatio), median(kept),
                verdict(median(kept), maxKept));
    std::fflush(stdout);
}

// --- Blocks of the GUI thread ---------------------------------------------------------------------

double threadMs()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

/// How often another program took the processor from this thread.
long preemptions()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nivcsw;
}

/// Measures the longest time between two passes of the event loop: elapsed time, which includes waiting for a
/// worker, or processor time if another program interrupted this thread meanwhile.
class LongestBlock
{
public:
    LongestBlock()
    {
        QObject::connect(&m_tick, &QTimer::timeout, [this] { note(); });
        m_tick.start(0);
        m_clock.start();
    }
    void note()
    {
        const bool preempted = preemptions() != m_preemptions;
        const double elapsed = 1e-6 * static_cast<double>(m_clock.nsecsElapsed());
        m_max = std::max(m_max, preempted ? threadMs() - m_processor : elapsed);
        m_preemptions = preemptions();
        m_processor = threadMs();
        m_clock.restart();
    }
    double max() const { return m_max; }

private:
    QTimer m_tick;
    QElapsedTimer m_clock;
    double m_processor = threadMs();
    long m_preemptions = preemptions();
    double m_max = 0.0;
};

using Viewer = std::unique_ptr<KVGamut3DViewer>;
using Step = std::function<void(Viewer&, const Source&)>;

/// What the host gave the gamut before it is loaded again.
void decorate(KVGamut3DViewer& viewer)
{
    viewer.changeGamutColor(QStringLiteral("g"), Qt::red);
    viewer.changeGamutAlpha(QStringLiteral("g"), 0.5f, 0);
    viewer.setClipping(60.0f);
}

/// The longest block while @p step acts on a viewer that shows a gamut.
double blockOf(const Step& step, const Source& source, KVGamut3DViewer::DisplayMode mode)
{
    Viewer viewer = std::make_unique<KVGamut3DViewer>();
    load(*viewer, source);
    decorate(*viewer);
    viewer->setDisplayMode(QStringLiteral("g"), mode);
    waitUntilIdle(mode == KVGamut3DViewer::Wireframe ? 2000 : 20);
    LongestBlock block;
    waitUntilIdle(0);
    step(viewer, source);
    block.note();
    waitUntilIdle(0);
    block.note();
    return block.max();
}

void printBlock(const char* what, const Step& step, const Source& source, KVGamut3DViewer::DisplayMode mode,
                int runs)
{
    std::vector<double> blocks;
    for (int i = 0; i < runs; ++i)
        blocks.push_back(blockOf(step, source, mode));
    std::printf("%-52s %8.1f ms%s\n", what, shortest(blocks), verdict(shortest(blocks), maxBlockMs));
    std::fflush(stdout);
}

void stepClear(Viewer& viewer, const Source&)
{
    const QStringList ids = viewer->gamuts();
    for (const QString& id : ids)
        viewer->removeGamut(id);
}
void stepRemove(Viewer& viewer, const Source&)
{
    viewer->removeGamut(QStringLiteral("g"));
}
void stepDestroy(Viewer& viewer, const Source&)
{
    viewer.reset();
}
void stepReload(Viewer& viewer, const Source& source)
{
    load(*viewer, source);
}
void stepSync(Viewer& viewer, const Source&)
{
    viewer->setDisplayMode(QStringLiteral("g"), KVGamut3DViewer::Wireframe);
    waitUntilIdle(2000);
}

/// The longest of the calls that stop a load, over moments spread over the whole load.
double longestStop(const Source& source, const Step& stop, double wholeMs, double stepMs)
{
    double longest = 0.0;
    for (double moment = 0.0; moment < wholeMs; moment += stepMs) {
        Viewer viewer = std::make_unique<KVGamut3DViewer>();
        viewer->load(QStringLiteral("g"), paramsOf(source), [](const QString&, bool) {});
        waitUntilIdle(static_cast<int>(moment));
        longest = std::max(longest, elapsedMs([&] { stop(viewer, source); }));
    }
    return longest;
}

void printStop(const char* what, const Source& source, const Step& stop, int runs)
{
    const double whole = 1.2 * elapsedMs([&] {
                             KVGamut3DViewer viewer;
                             load(viewer, source);
                         });
    std::vector<double> longest;
    for (int i = 0; i < runs; ++i)
        longest.push_back(longestStop(source, stop, whole, std::max(1.0, whole / 30.0)));
    std::printf("%-52s %8.1f ms%s\n", what, shortest(longest), verdict(shortest(longest), maxBlockMs));
    std::fflush(stdout);
}

void measureBlocks(const Source& source, int runs)
{
    using Mode = KVGamut3DViewer::DisplayMode;
    std::printf("\nlongest block of the GUI thread, %s\n", source.name);
    printBlock("reload, with colour, opacity and clipping", stepReload, source, Mode::Smooth, runs);
    printBlock("reload as a wireframe", stepReload, source, Mode::Wireframe, runs);
    printBlock("remove", stepRemove, source, Mode::Smooth, runs);
    printBlock("remove a wireframe", stepRemove, source, Mode::Wireframe, runs);
    printBlock("clear", stepClear, source, Mode::Smooth, runs);
    printBlock("destroy", stepDestroy, source, Mode::Smooth, runs);
    printBlock("destroy a wireframe", stepDestroy, source, Mode::Wireframe, runs);
    printBlock("show the wireframe", stepSync, source, Mode::Smooth, runs);
    printStop("remove while it loads", source, stepRemove, runs);
    printStop(
        "load again while it loads", source,
        [](Viewer& viewer, const Source& s) {
            viewer->load(QStringLiteral("g"), paramsOf(s), [](const QString&, bool) {});
        },
        runs);
    printStop("destroy while it loads", source, stepDestroy, runs);
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const int runs = argc > 1 ? std::clamp(std::atoi(argv[1]), 1, 1000) : 5;
    const QString rgb = QStringLiteral("/usr/share/color/icc/colord/sRGB.icc");
    const QString cmyk = QStringLiteral("/usr/share/color/icc/ghostscript/default_cmyk.icc");
    if (!QFile::exists(rgb) || !QFile::exists(cmyk))
        fail("no profiles sRGB.icc and default_cmyk.icc");

    std::printf("medians of %d runs\n", runs);
    for (const Source& source : {Source{"sRGB, grid 33", rgb, 33},
                                 {"sRGB, grid 65", rgb, 65},
                                 {"sRGB, grid 129", rgb, finestGrid},
                                 {"CMYK, default grid", cmyk, -1}})
        compareCosts(source, runs);
    measureBlocks({"sRGB, grid 129", rgb, finestGrid}, runs);
    return withinLimits ? 0 : 1;
}
