// SPDX-License-Identifier: Apache-2.0
// Solids with a known volume: whether the reported uncertainty covers the error of the surface.

#include "MappedDevice.h"
#include "SlowGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

using namespace velmora;

namespace {

using Vectors = std::vector<slow::Point>;

MappedDevice mixer(slow::Point start, const Vectors& vectors)
{
    return MappedDevice(static_cast<int>(vectors.size()), [start, vectors](const float* d) {
        Vec3 lab{start[0], start[1], start[2]};
        for (std::size_t c = 0; c < vectors.size(); ++c)
            lab = lab + double(d[c]) * Vec3{vectors[c][0], vectors[c][1], vectors[c][2]};
        return lab;
    });
}

GamutRecord built(const MappedDevice& device, int gridPoints)
{
    GamutRequest request;
    request.gridPoints = gridPoints;
    return buildGamut(device, request, {}).value();
}

// The uncertainty must cover the error, and must not be too large to be useful.
void expectCovered(const MappedDevice& device, int gridPoints, double truth, double maxShare,
                   const std::string& what)
{
    const GamutRecord record = built(device, gridPoints);
    const double volume = record.volume;
    EXPECT_LE(std::abs(volume - truth), record.volumeUncertainty)
        << what << " at grid " << gridPoints << ": " << volume << " of " << truth;
    EXPECT_LE(record.volumeUncertainty, maxShare * truth) << what << " at grid " << gridPoints;
}

Vectors someInks(int count, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> darkening(1.0, 12.0), hue(-40.0, 40.0);
    Vectors inks;
    for (int i = 0; i < count; ++i)
        inks.push_back({-darkening(random), hue(random), hue(random)});
    return inks;
}

} // namespace

TEST(Uncertainty, coversTheParallelepipedOfAnAffineDevice)
{
    const Vectors vectors{{50, 40, 0}, {20, -60, 20}, {10, 0, -70}};
    for (int grid : {3, 9, 17, 33, 65})
        expectCovered(mixer({10, 5, 20}, vectors), grid, slow::zonotopeVolume(vectors), 1e-5, "affine");
}

TEST(Uncertainty, coversTheParallelepipedOfAMirroringDevice)
{
    const Vectors vectors{{20, -60, 20}, {50, 40, 0}, {10, 0, -70}};
    for (int grid : {3, 9, 17, 33, 65})
        expectCovered(mixer({10, 5, 20}, vectors), grid, slow::zonotopeVolume(vectors), 1e-5, "mirrored");
}

TEST(Uncertainty, coversTheZonotopeOfFourInks)
{
    const Vectors inks{{-20, -30, -30}, {-25, 40, -5}, {-5, -3, 60}, {-35, 2, 3}};
    for (int grid : {9, 17, 33, 65})
        expectCovered(mixer({95, 0, 0}, inks), grid, slow::zonotopeVolume(inks), 0.05, "four inks");
    for (unsigned seed = 1; seed <= 5; ++seed)
        expectCovered(mixer({95, 0, 0}, someInks(4, seed)), -1, slow::zonotopeVolume(someInks(4, seed)), 0.01,
                      "four inks " + std::to_string(seed));
}

TEST(Uncertainty, coversTheZonotopesOfFiveToTenInks)
{
    for (int n = 5; n <= 10; ++n)
        for (unsigned seed = 1; seed <= 3; ++seed) {
            const Vectors inks = someInks(n, seed);
            expectCovered(mixer({97, 0, 0}, inks), -1, slow::zonotopeVolume(inks), 0.01,
                          std::to_string(n) + " inks " + std::to_string(seed));
        }
}

// With so many inks there are fewer samples, and the surface is farther inside.
TEST(Uncertainty, coversTheZonotopesOfElevenToFifteenInks)
{
    for (int n = 11; n <= 15; ++n)
        for (unsigned seed = 1; seed <= 5; ++seed) {
            const Vectors inks = someInks(n, seed);
            expectCovered(mixer({97, 0, 0}, inks), -1, slow::zonotopeVolume(inks), 0.05,
                          std::to_string(n) + " inks " + std::to_string(seed));
        }
}

TEST(Uncertainty, coversABoxOfAFoldedDevice)
{
    const MappedDevice device(3, [](const float* d) {
        const double z = double(d[2]) - 0.5;
        return Vec3{10 + 80 * double(d[0]), -40 + 80 * double(d[1]), 60.0 * (1.0 - 4.0 * z * z)};
    });
    for (int grid : {9, 17, 33, 65})
        expectCovered(device, grid, 80.0 * 80.0 * 60.0, 0.1, "folded");
}

TEST(Uncertainty, coversACrescentOfADeviceWithoutFolds)
{
    const MappedDevice device(3, [](const float* d) {
        const double angle = 1.5 * M_PI * double(d[1]), radius = 20.0 + 30.0 * double(d[2]);
        return Vec3{20 + 60 * double(d[0]), radius * std::cos(angle), radius * std::sin(angle)};
    });
    const double volume = 60.0 * 0.5 * 1.5 * M_PI * (50.0 * 50.0 - 20.0 * 20.0);
    for (int grid : {9, 17, 33, 65})
        expectCovered(device, grid, volume, 0.1, "crescent");
}
