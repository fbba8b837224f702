// SPDX-License-Identifier: Apache-2.0
// A million colours in the window: the time until they are read, until each is on its side of the gamut, and
// until the table of colours has every result; and how long the thread of the window is busy at a time.
//     bench_window_points [points [gamut ...]]

#include "desktop/models/ColorTable.h"
#include "desktop/models/GamutQueue.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtGui/QGuiApplication>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>

namespace {

bool writePoints(const QString& name, int count)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    std::mt19937 random(1);
    std::uniform_real_distribution lightness(0.0, 100.0), chromatic(-80.0, 80.0);
    QByteArray text = "name,L,a,b\n";
    for (int i = 0; i < count; ++i) {
        text += 'c' + QByteArray::number(i);
        for (const double value : {lightness(random), chromatic(random), chromatic(random)})
            text += ',' + QByteArray::number(value, 'f', 2);
        text += '\n';
    }
    return file.write(text) == text.size();
}

/// Runs the event loop until @p done. @return the longest time between two looks, in ms
qint64 spinUntil(const std::function<bool()>& done)
{
    qint64 longest = 0;
    QElapsedTimer clock;
    while (!done()) {
        clock.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        longest = std::max(longest, clock.elapsed());
        QThread::msleep(1);
    }
    return longest;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const int count = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("points.csv"));
    if (!writePoints(file, count))
        return 1;

    GamutListModel gamuts;
    GamutQueue loader(gamuts);
    KVGamut3DViewer viewer; // never shown
    PointLayer points(gamuts, viewer);
    ColorChecks checks(gamuts, points, [&loader](const QString& id) {
        const auto source = loader.source(id);
        return source ? source->profile() : KVProfilePtr();
    });
    const ColorTable table(checks, gamuts, points);
    for (int i = 2; i < argc; ++i)
        gamuts.add(QString::fromLocal8Bit(argv[i]), {}, {});
    if (argc <= 2)
        gamuts.add(QStringLiteral("sRGB"), {}, {});
    spinUntil([&] { return !loader.isBusy(); });

    QElapsedTimer clock;
    clock.start();
    const auto seconds = [&clock] { return double(clock.elapsed()) * 1e-3; };
    points.open(file);
    qint64 longest = spinUntil([&] { return checks.count() == count; });
    std::printf("%d colours: read after %.1f s", count, seconds());
    longest = std::max(longest, spinUntil([&] { return points.isComplete(); }));
    std::printf(", on their side after %.1f s", seconds());
    longest = std::max(longest, spinUntil([&] { return checks.isComplete(); }));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf(", checked after %.1f s; window busy for %lld ms at most; %.0f MB\n", seconds(),
                static_cast<long long>(longest), double(usage.ru_maxrss) * 1024.0 / 1e6);
    return table.rowCount() == count ? 0 : 1;
}
