// SPDX-License-Identifier: Apache-2.0
// A report about a million points: the time of `kvgamut inside` from start to end, and its memory.
//     bench_points [runs [points]]

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

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

double secondsOf(const QStringList& arguments)
{
    QElapsedTimer clock;
    clock.start();
    if (QProcess::execute(QStringLiteral(KVGAMUT_BINARY), arguments) != 0)
        return -1.0;
    return double(clock.nsecsElapsed()) * 1e-9;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    const int count = argc > 2 ? std::atoi(argv[2]) : 1'000'000;
    const QTemporaryDir folder;
    const QString points = folder.filePath(QStringLiteral("points.csv"));
    if (!writePoints(points, count))
        return 1;
    for (const char* format : {"csv", "jsonl", "json", "text"}) {
        for (const char* jobs : {"1", "2"}) {
            const QStringList arguments{QStringLiteral("inside"),   QStringLiteral("sRGB"),
                                        QStringLiteral("--points"), points,
                                        QStringLiteral("--format"), QLatin1String(format),
                                        QStringLiteral("--jobs"),   QLatin1String(jobs),
                                        QStringLiteral("--output"), folder.filePath(QStringLiteral("out"))};
            std::vector<double> seconds;
            for (int run = 0; run < runs; ++run)
                seconds.push_back(secondsOf(arguments));
            if (*std::min_element(seconds.begin(), seconds.end()) < 0.0)
                return 1;
            std::printf("%d points, %s, %s core(s): median %.2f s, fastest %.2f s\n", count, format, jobs,
                        median(seconds), *std::min_element(seconds.begin(), seconds.end()));
        }
    }
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    std::printf("largest process: %.0f MB (limits for a million points on two cores: 3 s for csv, 500 MB)\n",
                double(usage.ru_maxrss) * 1024.0 / 1e6);
}
