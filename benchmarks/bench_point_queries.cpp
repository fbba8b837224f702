// SPDX-License-Identifier: Apache-2.0
// A million colours against the gamut of sRGB in C++, for bench_python.py to compare with. Prints one line
// for each question: its name, and the shortest time and processor time of the repeats in seconds.
//
// The file of the colours is the argument: float triples L*, a*, b*.

#include "model/checks/PointQueries.h"
#include "model/inputs/GamutSource.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <limits>
#include <vector>

namespace {

constexpr int repeats = 5;

void measure(const char* name, const std::function<void()>& work)
{
    double best = std::numeric_limits<double>::infinity(), bestCpu = best;
    for (int i = 0; i < repeats; ++i) {
        QElapsedTimer clock;
        clock.start();
        const std::clock_t cpu = std::clock();
        work();
        bestCpu = std::min(bestCpu, static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC);
        best = std::min(best, static_cast<double>(clock.nsecsElapsed()) * 1e-9);
    }
    std::printf("%s %.4f %.4f\n", name, best, bestCpu);
}

} // namespace

int main(int argc, char** argv)
{
    QFile file(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    const auto source = GamutSource::open(QStringLiteral("sRGB"));
    KVGamut::Settings settings;
    settings.intent = KVVMRenderRelativeColorimetric;
    const auto gamut = source.and_then([&](const GamutSource& opened) { return opened.compute(settings); });
    if (!gamut || !file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "usage: bench_point_queries FILE\n");
        return 2;
    }
    const QByteArray bytes = file.readAll();
    std::vector<KVGamut::LabPoint> lab(static_cast<std::size_t>(bytes.size()) / sizeof(KVGamut::LabPoint));
    for (std::size_t i = 0; i < lab.size(); ++i) {
        float values[3];
        std::memcpy(values, bytes.constData() + i * sizeof(values), sizeof(values));
        lab[i] = {values[0], values[1], values[2]};
    }
    std::size_t sum = 0; // keeps the results alive
    measure("inside", [&] { sum += PointQueries::inside(*gamut, lab).back(); });
    measure("distance",
            [&] { sum += PointQueries::nearest(*gamut, lab, PointQueries::Metric::De76).size(); });
    return sum == 0;
}
