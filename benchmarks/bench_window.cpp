// SPDX-License-Identifier: Apache-2.0
#include "desktop/MainWindow.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtOpenGL/QOpenGLWindow>
#include <QtWidgets/QApplication>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <malloc.h>
#include <sys/resource.h>
#include <vector>

// What the window of `kvgamut view` takes: its memory with gamuts and after they were closed, and the
// processor time of a frame while the view turns. Held constant: the size of the window, and the gamuts,
// which are the built-in ones and those of the profiles that are given, with all intents in turn.
//
//   bench_window COUNT [PROFILE ...]
//   KV_ALWAYS_EXACT=1 bench_window COUNT [PROFILE ...]      without coarse surfaces while the view moves
//
// Each number of gamuts needs a process of its own.

namespace {

/// Resident memory of the process and its share of what it has in common with others, in MB.
struct Memory
{
    double rss = 0.0;
    double pss = 0.0;
    double heap = 0.0; ///< what the program has allocated

    static Memory now()
    {
        Memory memory;
        QFile file(QStringLiteral("/proc/self/smaps_rollup"));
        if (file.open(QIODevice::ReadOnly))
            for (const QByteArray& line : file.readAll().split('\n')) {
                const double megabytes = line.simplified().split(' ').value(1).toDouble() / 1024.0;
                if (line.startsWith("Rss:"))
                    memory.rss = megabytes;
                else if (line.startsWith("Pss:"))
                    memory.pss = megabytes;
            }
        const struct mallinfo2 heap = mallinfo2();
        memory.heap = double(heap.uordblks + heap.hblkhd) / 1048576.0;
        return memory;
    }
    void print(const char* when) const { std::printf("%-22s %8.0f %8.0f %8.0f\n", when, rss, pss, heap); }
};

double processorMs()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    const auto ms = [](const timeval& t) { return double(t.tv_sec) * 1e3 + double(t.tv_usec) / 1e3; };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

/// Sleeps while there are no events, so that waiting takes no processor time.
void spin(const std::function<bool()>& isDone)
{
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (isDone())
            loop.quit();
    });
    look.start(5);
    if (!isDone())
        loop.exec();
}

void wait(int ms)
{
    QElapsedTimer timer;
    timer.start();
    spin([&] { return timer.elapsed() >= ms; });
}

void turn(MainWindow& window, int frames)
{
    int drawn = 0; // nothing is swapped unless a frame was drawn
    const auto count = QObject::connect(window.viewer().findChild<QOpenGLWindow*>(),
                                        &QOpenGLWindow::frameSwapped, [&drawn] { ++drawn; });
    KVCamera camera = window.view().camera();
    const auto turnBy = [&](int times) {
        for (int i = 0; i < times; ++i) {
            const int before = drawn;
            camera.position.setY(camera.position.y() + 2.0f);
            window.view().setCamera(camera);
            spin([&] { return drawn > before; });
        }
    };
    turnBy(5); // the first ones are exact
    const double before = processorMs();
    QElapsedTimer timer;
    timer.start();
    turnBy(frames);
    std::printf("frame while turning    %8.0f ms of processor time, %.0f ms\n",
                (processorMs() - before) / frames, double(timer.elapsed()) / frames);
    timer.start();
    spin([&] { return window.viewer().isSettled(); });
    std::printf("exact again after      %8.0f ms\n", double(timer.elapsed()));
    QObject::disconnect(count);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const int count = arguments.value(1, QStringLiteral("1")).toInt();
    const QStringList inputs =
        QStringList{QStringLiteral("sRGB"), QStringLiteral("AdobeRGB"), QStringLiteral("DisplayP3"),
                    QStringLiteral("Rec2020"), QStringLiteral("ProPhoto")} +
        arguments.mid(2);

    MainWindow::ignoreSettings();
    const bool exact = qEnvironmentVariableIsSet("KV_ALWAYS_EXACT");
    MainWindow window;
    window.resize(1280, 800);
    window.show();
    if (exact)
        window.view().setCoarseWhileMoving(false);
    window.addGamut(inputs.first()); // OpenGL is set up, and counts as empty
    spin([&] { return window.isComplete() && window.viewer().isSettled(); });
    window.gamuts().clear();
    wait(1500);
    std::printf("%d gamuts, MB               RSS      PSS     heap\n", count);
    const Memory empty = Memory::now();
    empty.print("empty");
    for (int i = 0; i < count; ++i) {
        KVGamut::Settings settings;
        settings.intent = static_cast<KVVMRenderType>(i / inputs.size() % 4);
        window.addGamut(inputs[i % inputs.size()], settings, {}, true);
    }
    spin([&] { return window.isComplete() && window.viewer().isSettled(); });
    turn(window, 30);
    Memory::now().print("turning");
    wait(1500);
    const Memory full = Memory::now();
    full.print("open, at rest");
    window.findChild<QAction*>(QStringLiteral("closeAll"))->trigger();
    wait(1500);
    const Memory closed = Memory::now();
    closed.print("closed");
    std::printf("over empty: %.0f MB (limit %d); closed: %+.0f %% (limit +20)\n", full.pss - empty.pss,
                60 + 12 * count, 100.0 * (closed.pss / empty.pss - 1.0));
    malloc_trim(0);
    Memory::now().print("and trimmed");
    return EXIT_SUCCESS;
}
