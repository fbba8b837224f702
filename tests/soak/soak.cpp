// SPDX-License-Identifier: Apache-2.0
#include "RandomHost.h"

#include "support/ShownViewer.h"
#include "support/TestEnvironment.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QElapsedTimer>
#include <QtGui/QGuiApplication>
#include <QtOpenGL/QOpenGLWindow>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int rounds = 10;

// Caches of Qt and the driver grow at first, so the growth is measured from the second round on. It varies by
// some tens of kilobytes. A leak of a hundred bytes in every tenth call exceeds this limit.
constexpr qint64 allocatedSlack = 256 * 1024;
// The allocator does not return pages at once.
constexpr qint64 residentSlack = 32ll * 1024 * 1024;

RandomHost* currentHost = nullptr; // receives the warnings

// Messages that say nothing about the viewer.
bool isOfTheSystem(const QString& text)
{
    // A top level that is shown, hidden and shown again before the X server has reported the first show: Qt
    // notes the late report as "mapped". The window is shown as it should be. It depends on the server's
    // speed.
    return text.contains(
               QLatin1String("QXcbWindow::setNetWmStateOnUnmappedWindow() called on mapped window")) ||
           text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR"));
}

void record(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    const bool isFault =
        type == QtWarningMsg || type == QtCriticalMsg ||
        text.startsWith(QLatin1String("QOpenGLFramebufferObject")); // those are debug messages
    if (isFault && currentHost && !isOfTheSystem(text))
        currentHost->note(QStringLiteral("Qt warns: ") + text);
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "fatal: %s\n", qPrintable(text));
        std::abort();
    }
}

/// An empty window with the surface format of the viewer.
class EmptyWindow : public QOpenGLWindow
{
public:
    explicit EmptyWindow(const QSurfaceFormat& format) : QOpenGLWindow(QOpenGLWindow::PartialUpdateBlit)
    {
        setFormat(format);
    }
};

/// Memory that Qt and the driver keep for each destroyed context (llvmpipe of Mesa 22.3: a megabyte).
qint64 bytesKeptPerContext()
{
    const QSurfaceFormat format = KVGamut3DViewer().findChild<QOpenGLWindow*>()->requestedFormat();
    constexpr int warmUp = 3, counted = 10;
    qint64 before = 0;
    for (int i = 0; i < warmUp + counted; ++i) {
        if (i == warmUp)
            before = MemoryUse::now().allocated;
        EmptyWindow window(format);
        window.resize(160, 120);
        window.show();
        kvtest::spinFor(50);
    }
    return std::max<qint64>(0, (MemoryUse::now().allocated - before) / counted);
}

/// Memory, GL objects and picture of a viewer at rest.
struct Level
{
    MemoryUse memory;
    GLCensus objects;
    QImage picture;
    int viewers = 0; ///< destroyed so far
};

Level levelOf(RandomHost& host)
{
    host.rest();
    return {MemoryUse::now(), host.census(), host.picture(), host.replacedViewers()};
}

void print(int round, int calls, const Level& level)
{
    std::printf("round %2d: %6d calls, %8.1f KiB allocated, %7.1f MiB resident, %s\n", round, calls,
                static_cast<double>(level.memory.allocated) / 1024.0,
                static_cast<double>(level.memory.resident) / 1024.0 / 1024.0,
                qPrintable(level.objects.text()));
    std::fflush(stdout);
}

/// Prints the differences between two levels, and returns their number.
int printDifferences(const Level& first, const Level& last, qint64 keptPerContext)
{
    const qint64 kept = keptPerContext * (last.viewers - first.viewers);
    int faults = 0;
    const auto judge = [&faults](bool holds, const char* what) {
        if (!holds) {
            std::printf("FAULT: %s\n", what);
            ++faults;
        }
    };
    judge(first.objects.programs > 0 && first.objects.buffers > 0, "no GL objects were counted");
    judge(first.objects == last.objects, "the number of GL objects changed");
    judge(last.memory.allocated - first.memory.allocated < allocatedSlack + kept, "allocated memory grew");
    judge(last.memory.resident - first.memory.resident < residentSlack + kept, "resident memory grew");
    judge(!first.picture.isNull() && first.picture == last.picture, "the picture at rest changed");
    return faults;
}

QCommandLineOption option(const char* name, const char* text, const char* value = "", const char* preset = "")
{
    return {QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value),
            QString::fromLatin1(preset)};
}

} // namespace

int main(int argc, char** argv)
{
    kvtest::useTestEnvironment();
    // With threads of its own Mesa's software renderer draws several frames at once, and keeps the triangles
    // of each until it next draws as many at once: up to 15 MB that come and go.
    qputenv("LP_NUM_THREADS", "0");
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Makes random calls to a shown viewer."));
    parser.addHelpOption();
    const auto seed = option("seed", "Seed of the random order of calls.", "number", "20240229");
    const auto calls = option("calls", "Number of calls.", "number", "10000");
    const auto lose = option("lose-contexts", "Also destroy native windows and viewers.");
    const auto list = option("tally", "Print the number of calls of each kind.");
    parser.addOptions({seed, calls, lose, list});
    parser.process(application);

    QElapsedTimer timer;
    timer.start();
    const qint64 keptPerContext = parser.isSet(lose) ? bytesKeptPerContext() : 0;
    if (parser.isSet(lose))
        std::printf("Qt and the driver keep %.1f KiB for each destroyed context\n",
                    static_cast<double>(keptPerContext) / 1024.0);
    RandomHost host(parser.value(seed).toUInt(), parser.isSet(lose));
    currentHost = &host;
    qInstallMessageHandler(record);
    const int perRound = std::max(1, parser.value(calls).toInt() / rounds);

    host.stretch();
    Level first, last;
    for (int round = 1; round <= rounds; ++round) {
        for (int i = 0; i < perRound; ++i)
            host.call();
        last = levelOf(host);
        print(round, round * perRound, last);
        if (round == 2)
            first = last;
    }

    int faults = printDifferences(first, last, keptPerContext);
    for (const QString& fault : host.faults())
        std::printf("FAULT: %s\n", qPrintable(fault));
    faults += static_cast<int>(host.faults().size());
    if (host.reportedLoads() == 0) {
        std::printf("FAULT: no load was reported\n");
        ++faults;
    }
    if (parser.isSet(list)) {
        const auto names = host.tally().keys();
        for (const QString& name : names)
            std::printf("%6d %s\n", host.tally().value(name), qPrintable(name));
    }
    std::printf("%d faults; %d loads reported; %.1f s\n", faults, host.reportedLoads(),
                static_cast<double>(timer.elapsed()) / 1000.0);
    return faults > 0;
}
