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

// What a shown viewer costs while nothing changes: its frame loop turns all the same, as it must. The rival
// is a window of Qt's own, in the same format, that turns the same loop and paints nothing; the third line
// is the viewer hidden. Held constant: the scene, the window's size (in the arguments) and the time.
//
//   bench_idle [width height [seconds]]

namespace {

/// A GL window that does nothing, again and again.
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

/// A host's event loop, which sleeps while there is nothing to do.
void turnFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void measure(const char* what, const QOpenGLWindow& window, int seconds)
{
    turnFor(1000); // come to rest
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
        QWindow parent; // as the viewer has one
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
