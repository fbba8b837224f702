// SPDX-License-Identifier: Apache-2.0
// What scales, legend and caption add to the cost of a frame.
//
//     xvfb-run bench_annotations [frames]
//
// Two gamuts, one of them translucent, turn in one window; each second frame has annotations. Processor time
// of the whole process, so that the threads of a software renderer count. The exit code is 1 if a frame with
// annotations costs over 5 % more than one without.

#include <KVGamutView.h>

#include <QtCore/QElapsedTimer>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace {

constexpr QSize windowSize(1280, 800);
constexpr double maxShare = 0.05;

double processorMs()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

KVAnnotations annotations()
{
    KVAnnotations all;
    all.scales = true;
    all.caption = QStringLiteral("Relative colorimetric");
    all.legend = {{QStringLiteral("a"), QStringLiteral("Adobe RGB"), QStringLiteral("relative"), Qt::blue},
                  {QStringLiteral("s"), QStringLiteral("sRGB"), QStringLiteral("relative"), Qt::red}};
    return all;
}

/// Processes events until the picture is up to date.
void settle(const KVGamut3DViewer& viewer)
{
    QElapsedTimer clock;
    clock.start();
    do {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    } while (!viewer.isSettled() && clock.elapsed() < 60000);
}

KVCamera cameraAt(int step)
{
    const double angle = 0.05 * step;
    KVCamera camera;
    camera.interestPoint = {50, 0, 0};
    camera.position = {250, static_cast<float>(420 * std::cos(angle)),
                       static_cast<float>(420 * std::sin(angle))};
    return camera;
}

double median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const int frames = argc > 1 ? std::clamp(std::atoi(argv[1]), 4, 10000) : 100;
    KVGamut3DViewer viewer;
    KVGamutView view(&viewer);
    viewer.resize(windowSize);
    viewer.show();
    view.load(QStringLiteral("a"),
              KVLoadRequest::fromFile(QStringLiteral("/usr/share/color/icc/colord/AdobeRGB1998.icc")));
    view.load(QStringLiteral("s"),
              KVLoadRequest::fromFile(QStringLiteral("/usr/share/color/icc/colord/sRGB.icc")));
    KVGamutLook translucent;
    translucent.opacity = KVGamutLook::translucentOpacity;
    view.setLook(QStringLiteral("a"), translucent);
    while (view.isLoading())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    settle(viewer);

    std::vector<double> plain, annotated;
    for (int step = 0; step < frames; ++step) {
        const bool isAnnotated = step % 2 == 1;
        view.setAnnotations(isAnnotated ? annotations() : KVAnnotations());
        settle(viewer);
        const double before = processorMs();
        view.setCamera(cameraAt(step));
        settle(viewer);
        (isAnnotated ? annotated : plain).push_back(processorMs() - before);
    }
    const double with = median(annotated), without = median(plain);
    std::printf("a frame without annotations %.2f ms, with %.2f ms: %+.1f %% (limit %.0f %%)\n", without,
                with, 100.0 * (with / without - 1.0), 100.0 * maxShare);
    return with <= (1.0 + maxShare) * without ? 0 : 1;
}
