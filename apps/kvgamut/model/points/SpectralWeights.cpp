// SPDX-License-Identifier: Apache-2.0
#include "SpectralWeights.h"

#include <algorithm>
#include <cmath>

namespace {

struct Band
{
    double illuminant; ///< D50
    double x, y, z;    ///< CIE 1931
};

constexpr double firstBand = 380.0, bandStep = 5.0;

constexpr Band spectralBands[] = {
    {24.49, 0.001368, 3.9e-05, 0.00645}, // 380 nm
    {27.18, 0.002236, 6.4e-05, 0.01055}, // 385 nm
    {29.87, 0.004243, 0.00012, 0.02005}, // 390 nm
    {39.59, 0.00765, 0.000217, 0.03621}, // 395 nm
    {49.31, 0.01431, 0.000396, 0.06785}, // 400 nm
    {52.91, 0.02319, 0.00064, 0.1102},   // 405 nm
    {56.51, 0.04351, 0.00121, 0.2074},   // 410 nm
    {58.27, 0.07763, 0.00218, 0.3713},   // 415 nm
    {60.03, 0.13438, 0.004, 0.6456},     // 420 nm
    {58.93, 0.21477, 0.0073, 1.03905},   // 425 nm
    {57.82, 0.2839, 0.0116, 1.3856},     // 430 nm
    {66.32, 0.3285, 0.01684, 1.62296},   // 435 nm
    {74.82, 0.34828, 0.023, 1.74706},    // 440 nm
    {81.04, 0.34806, 0.0298, 1.7826},    // 445 nm
    {87.25, 0.3362, 0.038, 1.77211},     // 450 nm
    {88.93, 0.3187, 0.048, 1.7441},      // 455 nm
    {90.61, 0.2908, 0.06, 1.6692},       // 460 nm
    {90.99, 0.2511, 0.0739, 1.5281},     // 465 nm
    {91.37, 0.19536, 0.09098, 1.28764},  // 470 nm
    {93.24, 0.1421, 0.1126, 1.0419},     // 475 nm
    {95.11, 0.09564, 0.13902, 0.81295},  // 480 nm
    {93.54, 0.05795, 0.1693, 0.6162},    // 485 nm
    {91.96, 0.03201, 0.20802, 0.46518},  // 490 nm
    {93.84, 0.0147, 0.2586, 0.3533},     // 495 nm
    {95.72, 0.0049, 0.323, 0.272},       // 500 nm
    {96.17, 0.0024, 0.4073, 0.2123},     // 505 nm
    {96.61, 0.0093, 0.503, 0.1582},      // 510 nm
    {96.87, 0.0291, 0.6082, 0.1117},     // 515 nm
    {97.13, 0.06327, 0.71, 0.07825},     // 520 nm
    {99.61, 0.1096, 0.7932, 0.05725},    // 525 nm
    {102.1, 0.1655, 0.862, 0.04216},     // 530 nm
    {101.43, 0.22575, 0.91485, 0.02984}, // 535 nm
    {100.75, 0.2904, 0.954, 0.0203},     // 540 nm
    {101.54, 0.3597, 0.9803, 0.0134},    // 545 nm
    {102.32, 0.43345, 0.99495, 0.00875}, // 550 nm
    {101.16, 0.51205, 1, 0.00575},       // 555 nm
    {100, 0.5945, 0.995, 0.0039},        // 560 nm
    {98.87, 0.6784, 0.9786, 0.00275},    // 565 nm
    {97.74, 0.7621, 0.952, 0.0021},      // 570 nm
    {98.33, 0.8425, 0.9154, 0.0018},     // 575 nm
    {98.92, 0.9163, 0.87, 0.00165},      // 580 nm
    {96.21, 0.9786, 0.8163, 0.0014},     // 585 nm
    {93.5, 1.0263, 0.757, 0.0011},       // 590 nm
    {95.59, 1.0567, 0.6949, 0.001},      // 595 nm
    {97.69, 1.0622, 0.631, 0.0008},      // 600 nm
    {98.48, 1.0456, 0.5668, 0.0006},     // 605 nm
    {99.27, 1.0026, 0.503, 0.00034},     // 610 nm
    {99.16, 0.9384, 0.4412, 0.00024},    // 615 nm
    {99.04, 0.85445, 0.381, 0.00019},    // 620 nm
    {97.38, 0.7514, 0.321, 0.0001},      // 625 nm
    {95.72, 0.6424, 0.265, 5e-05},       // 630 nm
    {97.29, 0.5419, 0.217, 3e-05},       // 635 nm
    {98.86, 0.4479, 0.175, 2e-05},       // 640 nm
    {97.26, 0.3608, 0.1382, 1e-05},      // 645 nm
    {95.67, 0.2835, 0.107, 0},           // 650 nm
    {96.93, 0.2187, 0.0816, 0},          // 655 nm
    {98.19, 0.1649, 0.061, 0},           // 660 nm
    {100.6, 0.1212, 0.04458, 0},         // 665 nm
    {103, 0.0874, 0.032, 0},             // 670 nm
    {101.07, 0.0636, 0.0232, 0},         // 675 nm
    {99.13, 0.04677, 0.017, 0},          // 680 nm
    {93.26, 0.0329, 0.01192, 0},         // 685 nm
    {87.38, 0.0227, 0.00821, 0},         // 690 nm
    {89.49, 0.01584, 0.005723, 0},       // 695 nm
    {91.6, 0.011359, 0.004102, 0},       // 700 nm
    {92.25, 0.008111, 0.002929, 0},      // 705 nm
    {92.89, 0.00579, 0.002091, 0},       // 710 nm
    {84.87, 0.004109, 0.001484, 0},      // 715 nm
    {76.85, 0.002899, 0.001047, 0},      // 720 nm
    {81.68, 0.002049, 0.00074, 0},       // 725 nm
    {86.51, 0.00144, 0.00052, 0},        // 730 nm
    {89.55, 0.001, 0.000361, 0},         // 735 nm
    {92.58, 0.00069, 0.000249, 0},       // 740 nm
    {85.4, 0.000476, 0.000172, 0},       // 745 nm
    {78.23, 0.000332, 0.00012, 0},       // 750 nm
    {67.96, 0.000235, 8.5e-05, 0},       // 755 nm
    {57.69, 0.000166, 6e-05, 0},         // 760 nm
    {70.31, 0.000117, 4.2e-05, 0},       // 765 nm
    {82.92, 8.3e-05, 3e-05, 0},          // 770 nm
    {80.6, 5.9e-05, 2.1e-05, 0},         // 775 nm
    {78.27, 4.2e-05, 1.5e-05, 0},        // 780 nm
};

/// A reflectance and its part in an interpolated one.
struct Part
{
    std::size_t index;
    double share;
};

/// The parts of @p count reflectances in the one at the place @p at, in steps from the first one.
std::vector<Part> partsAt(double at, std::size_t count)
{
    const auto last = static_cast<double>(count - 1);
    if (at <= 0.0 || at >= last)
        return {{at <= 0.0 ? 0 : count - 1, 1.0}};
    const double before = std::floor(at);
    const double from = std::max(0.0, before - 1.0);
    const double to = std::min(last, before + 2.0);
    std::vector<Part> parts;
    for (double node = from; node <= to; node += 1.0) {
        double share = 1.0;
        for (double other = from; other <= to; other += 1.0)
            if (other != node)
                share *= (at - other) / (node - other);
        parts.push_back({static_cast<std::size_t>(node), share});
    }
    return parts;
}

bool areUsable(const QList<double>& wavelengths)
{
    constexpr double tolerance = 0.05; // of rounded steps, in nm
    if (wavelengths.size() < 2 || wavelengths.first() > SpectralWeights::maxFirst ||
        wavelengths.last() < SpectralWeights::minLast)
        return false;
    const double step =
        (wavelengths.last() - wavelengths.first()) / static_cast<double>(wavelengths.size() - 1);
    for (qsizetype i = 0; i < wavelengths.size(); ++i)
        if (std::fabs(wavelengths.first() + static_cast<double>(i) * step - wavelengths[i]) > tolerance)
            return false;
    return step > 0.0 && step <= SpectralWeights::maxStep;
}

} // namespace

Result<SpectralWeights> SpectralWeights::of(const QList<double>& wavelengths)
{
    if (!areUsable(wavelengths))
        return failure(ProblemCode::SpectrumUnusable,
                       {QString::number(wavelengths.size()), QString::number(wavelengths.value(0)),
                        QString::number(wavelengths.isEmpty() ? 0.0 : wavelengths.last())});
    const auto count = static_cast<std::size_t>(wavelengths.size());
    const double step = (wavelengths.last() - wavelengths.first()) / static_cast<double>(count - 1);
    constexpr std::array<double, 3> white{96.42, 100.0, 82.49};
    SpectralWeights result;
    result.m_weights.resize(count);
    std::array<double, 3> sum{};
    double wavelength = firstBand;
    for (const Band& band : spectralBands) {
        const std::array<double, 3> values{band.illuminant * band.x, band.illuminant * band.y,
                                           band.illuminant * band.z};
        const auto parts = partsAt((wavelength - wavelengths.first()) / step, count);
        for (std::size_t i = 0; i < 3; ++i) {
            sum[i] += values[i];
            for (const Part& part : parts)
                result.m_weights[part.index][i] += values[i] * part.share;
        }
        wavelength += bandStep;
    }
    for (auto& weight : result.m_weights)
        for (std::size_t i = 0; i < 3; ++i)
            weight[i] *= white[i] / sum[i];
    return result;
}

std::array<float, 3> SpectralWeights::xyzOf(std::span<const float> reflectances) const
{
    std::array<double, 3> xyz{};
    for (std::size_t band = 0; band < std::min(reflectances.size(), m_weights.size()); ++band)
        for (std::size_t i = 0; i < 3; ++i)
            xyz[i] += m_weights[band][i] * double(reflectances[band]);
    return {static_cast<float>(xyz[0]), static_cast<float>(xyz[1]), static_cast<float>(xyz[2])};
}
