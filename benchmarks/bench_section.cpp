// SPDX-License-Identifier: Apache-2.0
// Cost of a step of the section's slider: sections with outlines alone, and with lids. No display is needed:
// the vertices are made, but not drawn.

#include <KVGamutView.h>

#include <gamut/SectionLid.h>

#include <QtGui/QGuiApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

double millisecondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The median and the longest of all steps from L* 2 to 98.
std::pair<double, double> stepsOf(const std::function<void(float)>& step)
{
    std::vector<double> times;
    for (int L = 2; L <= 98; L += 2)
        times.push_back(millisecondsOf([&] { step(float(L)); }));
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back()};
}

void measure(const char* name, const char* file)
{
    KVGamut3DViewer viewer;
    KVGamutView view(&viewer);
    viewer.load(QStringLiteral("a"), {{QStringLiteral("ProfilePath"), QString::fromLatin1(file)}}, nullptr);
    const KVGamut::GamutObject gamut = view.gamut(QStringLiteral("a"));
    const auto clip = [&](float L) { view.setClipping(L); };
    const auto outline = stepsOf(clip);
    view.setSection({true, {}});
    const auto lid = stepsOf(clip);
    qsizetype floats = 0;
    const auto geometry =
        stepsOf([&](float L) { floats = std::max(floats, kvSectionLid(gamut.mesh(), L).records.size()); });
    std::printf(
        "%-14s outline %6.2f (%6.2f) ms, with lid %6.2f (%6.2f) ms; the lid alone %6.2f (%6.2f) ms, at most "
        "%lld triangles\n",
        name, outline.first, outline.second, lid.first, lid.second, geometry.first, geometry.second,
        static_cast<long long>(floats / (3 * kvVertexFloats)));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    std::printf("A step of the slider: median (longest)\n");
    measure("sRGB", "/usr/share/color/icc/colord/sRGB.icc");
    measure("ProPhoto", "/usr/share/color/icc/colord/ProPhotoRGB.icc");
    measure("default_cmyk", "/usr/share/color/icc/ghostscript/default_cmyk.icc");
    return 0;
}
