// SPDX-License-Identifier: Apache-2.0
#include "InkModel.h"

#include <lcms2.h>

namespace kvdevices {
namespace {

// XYZ of solid inks relative to paper.
constexpr Point solidInks[7] = {{0.17, 0.24, 0.68}, {0.36, 0.19, 0.20}, {0.76, 0.82, 0.09},
                                {0.03, 0.03, 0.03}, {0.60, 0.42, 0.06}, {0.16, 0.34, 0.20},
                                {0.14, 0.09, 0.42}};

} // namespace

InkModel::InkModel(std::size_t inks, Random& random) : m_exponent(random.between(1.0, 2.2))
{
    std::vector<Point> solids;
    for (std::size_t ink = 0; ink < inks; ++ink) {
        Point solid = solidInks[ink];
        for (double& v : solid)
            v = std::pow(v, random.between(0.75, 1.2));
        solids.push_back(solid);
        m_gains.push_back(random.between(0.03, 0.2));
    }
    // Small enough that one more ink always darkens.
    std::vector<double> trapping(inks * inks);
    for (double& factor : trapping)
        factor = random.between(0.98, 1.02);
    for (std::size_t printed = 0; printed < std::size_t(1) << inks; ++printed) {
        Point colour{1, 1, 1};
        for (std::size_t ink = 0; ink < inks; ++ink) {
            if ((printed >> ink & 1u) == 0)
                continue;
            for (std::size_t i = 0; i < 3; ++i)
                colour[i] *= solids[ink][i];
            for (std::size_t below = 0; below < ink; ++below)
                if (printed >> below & 1u)
                    colour = trapping[ink * inks + below] * colour;
        }
        for (double& v : colour)
            v = std::pow(std::clamp(0.004 + 0.996 * v, 0.0, 1.0), 1.0 / m_exponent);
        m_overprints.push_back(colour);
    }
}

void InkModel::invert(double peak, double fall)
{
    m_peak = peak;
    m_fall = fall;
}

double InkModel::coverage(std::size_t ink, double amount) const
{
    double area = amount <= m_peak ? amount / m_peak : 1.0 - m_fall * (amount - m_peak) / (1.0 - m_peak);
    return area + 4.0 * m_gains[ink] * area * (1.0 - area);
}

Point InkModel::lab(const std::vector<double>& amounts) const
{
    std::vector<double> weights{1.0};
    for (std::size_t ink = 0; ink < amounts.size(); ++ink) {
        const double covered = coverage(ink, amounts[ink]);
        const std::size_t count = weights.size();
        for (std::size_t i = 0; i < count; ++i) {
            weights.push_back(weights[i] * covered);
            weights[i] *= 1.0 - covered;
        }
    }
    Point mean{};
    for (std::size_t i = 0; i < weights.size(); ++i)
        mean = mean + weights[i] * m_overprints[i];
    for (double& v : mean)
        v = std::pow(v, m_exponent);
    const cmsCIEXYZ white = *cmsD50_XYZ(), xyz{mean[0] * white.X, mean[1] * white.Y, mean[2] * white.Z};
    cmsCIELab lab;
    cmsXYZ2Lab(nullptr, &lab, &xyz);
    return {lab.L, lab.a, lab.b};
}

} // namespace kvdevices
