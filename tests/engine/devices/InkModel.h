// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Random.h"

#include <vector>

namespace kvdevices {

/// A press after Neugebauer with the correction of Yule and Nielsen: the colour of a halftone is the mean of
/// the colours of all overprints, weighted with the areas that they cover. Random inks, overprints and dot
/// gain.
class InkModel
{
public:
    /// @param inks 4..7: cyan, magenta, yellow and black, then orange, green and violet
    InkModel(std::size_t inks, Random& random);

    /// From here on the colours of all inks turn back: @p peak is the amount at which an ink is darkest; its
    /// coverage is @p fall smaller at the amount 1. Without this call the darkest amount is 1.
    void invert(double peak, double fall);
    /// Lab of amounts from 0 to 1.
    Point lab(const std::vector<double>& amounts) const;

private:
    double coverage(std::size_t ink, double amount) const;

    std::vector<Point> m_overprints; // XYZ relative to the paper, to the power of 1 / m_exponent
    std::vector<double> m_gains;
    double m_exponent;
    double m_peak = 1.0;
    double m_fall = 0.0;
};

} // namespace kvdevices
