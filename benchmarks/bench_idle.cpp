// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include "support/AllocationCount.h"
#include "support/WindowManager.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QRasterWindow>
#include <QtOpenGL/QOpenGLWindow>

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

// The cost of viewers while nothing changes: shown, covered, hidden, minimised, and two at once. They are
// compared with a Qt window of the same format that paints nothing and swaps in an endless loop. Held
// constant: the scene, the size of the windows (an argument) and the time.
//
//   bench_idle [width height [seconds]]
//
// Needs a window manager (openbox) to minimise windows.

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

/// A viewer inside a window of a host.
struct Host
{
    explicit Host(const QSize& size)
    {
        window.resize(size);
        viewer->load(
            QStringLiteral("g"),
            {{QStringLiteral("ProfilePath"), QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")}},
            nullptr);
        viewer->changeGamutAlpha(QStringLiteral("g"), 0.5f, 0);
        viewer->resize(size);
        viewer->show();
        window.show();
    }

    const QOpenGLWindow& gl() const { return *viewer->findChild<QOpenGLWindow*>(); }

    QWindow window;
    KVGamut3DViewer* viewer = new KVGamut3DViewer(&window);
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

class Bench
{
public:
    explicit Bench(int seconds) : m_seconds(seconds) {}

    void measure(const char* what, const std::vector<const QOpenGLWindow*>& windows) const
    {
        turnFor(1500); // until the first frames are drawn and the window manager has finished
        QObject context;
        int swaps = 0;
        for (const QOpenGLWindow* window : windows)
            QObject::connect(window, &QOpenGLWindow::frameSwapped, &context, [&swaps] { ++swaps; });
        const double processor = processorSeconds();
        const auto allocations = kvtest::allocationsSoFar();
        turnFor(1000 * m_seconds);
        const double used = processorSeconds() - processor;
        const auto allocated = static_cast<double>(kvtest::allocationsSoFar() - allocations);
        std::printf("%-28s %6.2f %% of a core, %6.1f swaps/s, %7.1f allocations/s\n", what,
                    100.0 * used / m_seconds, static_cast<double>(swaps) / m_seconds, allocated / m_seconds);
        std::fflush(stdout);
    }

private:
    int m_seconds;
};

void measureOne(const Bench& bench, const QSize& size)
{
    Host host(size);
    bench.measure("a viewer", {&host.gl()});
    {
        QRasterWindow cover;
        cover.setGeometry(host.window.frameGeometry().adjusted(-50, -50, 50, 50));
        cover.show();
        cover.raise();
        bench.measure("a covered viewer", {&host.gl()});
    }
    host.viewer->hide();
    bench.measure("a hidden viewer", {&host.gl()});
    host.viewer->show();
    host.window.hide();
    bench.measure("in a hidden window", {&host.gl()});
    host.window.show();
    turnFor(500);
    host.window.showMinimized();
    bench.measure("in a minimised window", {&host.gl()});
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QSize size(argc > 2 ? std::atoi(argv[1]) : 800, argc > 2 ? std::atoi(argv[2]) : 600);
    const int seconds = argc > 3 ? std::atoi(argv[3]) : 5;
    kvtest::WindowManager manager;
    if (!manager.start()) {
        std::fprintf(stderr, "openbox does not start\n");
        return 1;
    }
    const Bench bench(seconds);
    std::printf("%d x %d, %d s each\n", size.width(), size.height(), seconds);
    {
        QWindow parent; // like that of the window in the viewer
        EmptyWindow empty(KVGamut3DViewer().findChild<QOpenGLWindow*>()->requestedFormat(), &parent);
        parent.resize(size);
        empty.resize(size);
        empty.show();
        parent.show();
        bench.measure("an empty GL window", {&empty});
    }
    measureOne(bench, size);
    const Host first(size), second(size);
    bench.measure("two viewers", {&first.gl(), &second.gl()});
}
