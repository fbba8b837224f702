// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include "support/AllocationCount.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtOpenGL/QOpenGLWindow>

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>

// The cost of a shown viewer while nothing changes; its frame loop keeps running. It is compared with a Qt
// window of the same format and with the same frame loop that paints nothing, and with a hidden viewer. Held
// constant: the scene, the size of the window (an argument) and the time.
//
//   bench_idle [width height [seconds]]

namespace {

/// A GL window with a frame loop that paints nothing.
class EmptyWindow : public QOpenGLWindow
{
public:
    EmptyWindow(const QSurfaceFormat& format, QWindow* parent)
        : QOpenGLWindow(QOpenGLWindow::PartialUpdateBlit, parent)
    {
        setFormat(format);
        connect(this, &QOpenGLWindow::frameSwapped, this, [this] { update(); });
    }
};

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// An event loop that sleeps while there are no events, like that of a host.
void turnFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void measure(const char* what, const QOpenGLWindow& window, int seconds)
{
    turnFor(1000); // until the first frames are drawn
    int turns = 0;
    const auto connection =
        QObject::connect(&window, &QOpenGLWindow::frameSwapped, &window, [&turns] { ++turns; });
    const double processor = processorSeconds();
    const auto allocations = kvtest::allocationsSoFar();
    turnFor(1000 * seconds);
    const double used = processorSeconds() - processor;
    const auto allocated = static_cast<double>(kvtest::allocationsSoFar() - allocations);
    QObject::disconnect(connection);
    std::printf("%-24s %6.1f %% of a core, %6d turns/s, %7.1f us of processor and %6.1f allocations a turn\n",
                what, 100.0 * used / seconds, turns / seconds, turns ? 1e6 * used / turns : 0.0,
                turns ? allocated / turns : 0.0);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const int width = argc > 2 ? std::atoi(argv[1]) : 800, height = argc > 2 ? std::atoi(argv[2]) : 600;
    const int seconds = argc > 3 ? std::atoi(argv[3]) : 5;
    std::printf("%d x %d, %d s each\n", width, height, seconds);

    KVGamut3DViewer viewer;
    viewer.load(QStringLiteral("g"),
                {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}},
                nullptr);
    viewer.changeGamutAlpha(QStringLiteral("g"), 0.5f, 0);
    const auto& window = *viewer.findChild<QOpenGLWindow*>();
    {
        QWindow parent; // like that of the window in the viewer
        EmptyWindow empty(window.requestedFormat(), &parent);
        parent.resize(width, height);
        empty.resize(width, height);
        empty.show();
        parent.show();
        measure("an empty GL window", empty, seconds);
    }
    viewer.resize(width, height);
    viewer.show();
    measure("an idle viewer", window, seconds);
    viewer.hide();
    measure("a hidden viewer", window, seconds);
}
