// SPDX-License-Identifier: Apache-2.0
#include "SurfaceColours.h"

#include "model/points/PointWhite.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace {

using Row = std::array<std::uint8_t, SurfaceColours::lightnessCount>;

// A row for each hue. Two copies of the table with the same numbers: "pointer_gamut.py" in the repositories
// colour-science/colour and facelessuser/coloraide on GitHub; both name the Munsell Color Science Laboratory
// (PointerData.xls) as their source.
constexpr std::array<Row, SurfaceColours::hueCount> table{{
    {10, 30, 43, 56, 68, 77, 79, 77, 72, 65, 57, 50, 40, 30, 19, 8},
    {15, 30, 45, 56, 64, 70, 73, 73, 71, 65, 57, 48, 39, 30, 18, 7},
    {14, 34, 49, 61, 69, 74, 76, 76, 74, 68, 61, 51, 40, 30, 19, 9},
    {35, 48, 59, 68, 75, 82, 84, 83, 80, 75, 67, 56, 45, 33, 21, 10},
    {27, 40, 53, 66, 79, 90, 94, 93, 88, 82, 72, 60, 47, 35, 22, 10},
    {10, 21, 34, 45, 60, 75, 90, 100, 102, 99, 88, 75, 59, 45, 30, 15},
    {4, 15, 26, 37, 48, 59, 70, 82, 93, 103, 106, 98, 85, 66, 45, 23},
    {5, 15, 25, 36, 46, 56, 67, 76, 85, 94, 102, 108, 103, 82, 58, 34},
    {6, 15, 24, 32, 40, 48, 55, 64, 72, 82, 94, 105, 115, 115, 83, 48},
    {4, 12, 20, 28, 36, 44, 53, 60, 68, 75, 83, 90, 98, 106, 111, 90},
    {9, 16, 23, 30, 37, 45, 51, 58, 65, 72, 80, 86, 94, 100, 106, 108},
    {9, 18, 27, 35, 44, 52, 59, 66, 74, 82, 87, 92, 95, 100, 96, 84},
    {4, 14, 23, 32, 41, 49, 57, 64, 71, 78, 84, 90, 94, 95, 83, 50},
    {5, 18, 30, 40, 48, 56, 64, 70, 77, 82, 85, 88, 89, 84, 64, 35},
    {7, 20, 32, 42, 52, 60, 69, 76, 82, 87, 89, 90, 83, 71, 54, 30},
    {7, 21, 34, 45, 57, 68, 75, 81, 84, 84, 83, 80, 72, 58, 44, 20},
    {8, 24, 36, 48, 58, 68, 76, 82, 85, 83, 78, 69, 59, 49, 34, 15},
    {13, 25, 36, 47, 57, 65, 70, 75, 76, 75, 71, 65, 57, 45, 30, 15},
    {10, 25, 38, 48, 57, 64, 69, 71, 72, 69, 64, 60, 51, 41, 29, 16},
    {7, 19, 30, 40, 48, 55, 59, 62, 62, 60, 55, 49, 41, 32, 23, 13},
    {5, 19, 29, 37, 42, 45, 46, 46, 45, 43, 39, 35, 30, 22, 14, 7},
    {0, 12, 17, 26, 34, 43, 49, 51, 54, 50, 46, 40, 32, 24, 14, 4},
    {2, 12, 20, 28, 35, 40, 45, 48, 51, 49, 45, 38, 32, 23, 15, 6},
    {10, 20, 29, 36, 42, 46, 49, 51, 52, 50, 45, 39, 32, 24, 15, 7},
    {8, 16, 26, 34, 41, 47, 49, 50, 50, 47, 42, 36, 29, 21, 12, 4},
    {9, 21, 32, 40, 49, 54, 55, 55, 52, 48, 43, 36, 29, 21, 13, 4},
    {12, 24, 34, 41, 46, 51, 55, 56, 51, 46, 40, 33, 27, 20, 13, 6},
    {14, 31, 42, 50, 55, 60, 60, 57, 50, 45, 39, 33, 26, 20, 13, 6},
    {10, 29, 45, 55, 60, 61, 60, 57, 53, 46, 40, 34, 25, 18, 11, 4},
    {20, 40, 60, 69, 71, 69, 65, 58, 50, 43, 36, 29, 24, 18, 12, 5},
    {30, 55, 72, 81, 79, 72, 64, 57, 50, 42, 35, 30, 24, 17, 12, 5},
    {62, 76, 85, 88, 85, 80, 71, 62, 55, 47, 41, 34, 27, 20, 14, 6},
    {60, 71, 79, 84, 85, 86, 82, 74, 66, 57, 48, 40, 31, 24, 16, 8},
    {20, 50, 72, 86, 89, 89, 86, 80, 72, 63, 54, 45, 36, 27, 18, 9},
    {26, 49, 63, 73, 82, 87, 87, 83, 78, 71, 62, 51, 40, 28, 18, 4},
    {15, 37, 52, 65, 73, 79, 82, 84, 79, 73, 63, 53, 40, 30, 17, 6},
}};

constexpr int firstLightness = 15, lightnessStep = 5;

KVGamut::LabPoint labOf(double L, double chroma, int hue)
{
    const double angle = hue * 2.0 * M_PI / SurfaceColours::hueCount;
    const KVGamut::LabPoint published{static_cast<float>(L), static_cast<float>(chroma * std::cos(angle)),
                                      static_cast<float>(chroma * std::sin(angle))};
    return PointWhite::fromLab(published, QStringLiteral("C"));
}

double volumeOf(const KVGamut::Mesh& mesh)
{
    KVGamut::GamutObject gamut;
    gamut.initWithSurface(mesh);
    return gamut.report().volume;
}

} // namespace

int SurfaceColours::chroma(int hue, int lightness)
{
    return table.at(static_cast<std::size_t>(hue)).at(static_cast<std::size_t>(lightness));
}

KVGamut::Mesh SurfaceColours::surface(double added)
{
    constexpr int top = lightnessCount - 1;
    KVGamut::Mesh mesh;
    for (int hue = 0; hue < hueCount; ++hue)
        for (int i = 0; i < lightnessCount; ++i) {
            const int published = chroma(hue, i);
            mesh.lab.push_back(
                labOf(firstLightness + i * lightnessStep, published > 0 ? published + added : 0.0, hue));
        }
    const int lowest = static_cast<int>(mesh.lab.size()), highest = lowest + 1;
    mesh.lab.push_back(labOf(firstLightness, 0.0, 0));
    mesh.lab.push_back(labOf(firstLightness + top * lightnessStep, 0.0, 0));
    for (int hue = 0; hue < hueCount; ++hue) {
        const int here = hue * lightnessCount, next = (hue + 1) % hueCount * lightnessCount;
        mesh.triangles.push_back({lowest, next, here});
        mesh.triangles.push_back({highest, here + top, next + top});
        for (int i = 0; i < top; ++i) {
            mesh.triangles.push_back({here + i, next + i, next + i + 1});
            mesh.triangles.push_back({here + i, next + i + 1, here + i + 1});
        }
    }
    return mesh;
}

double SurfaceColours::volumeUncertainty()
{
    constexpr double rounding = 0.5;
    return volumeOf(surface(rounding)) - volumeOf(surface());
}
