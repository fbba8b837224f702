// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <QtCore/QList>

#include <array>
#include <span>
#include <vector>

/// Computes the XYZ of reflectances for the CIE 1931 2 degree observer and illuminant D50.
///
/// The method is that of tables of weights for the interval of the measurement (ASTM E308): the reflectances
/// are interpolated to steps of 5 nm with the polynomial of Lagrange through the four nearest ones, and
/// through three at the ends (ASTM E2022); there they are multiplied with illuminant and observer (CIE
/// 15:2004, tables T.1 and T.4) and added up from 380 to 780 nm. Before the first and after the last
/// reflectance these are repeated. The weights are scaled such that the perfect diffuser has the D50 of ICC
/// profiles, X 96.42, Y 100, Z 82.49; without that its Z would be 82.51.
class SpectralWeights
{
public:
    static constexpr double maxStep = 20.0;
    static constexpr double maxFirst = 400.0, minLast = 700.0;

    /// @param wavelengths of the reflectances, in nm, ascending
    /// @return fails with SpectrumUnusable if they are not at equal steps of at most maxStep, or do not cover
    /// maxFirst to minLast
    static Result<SpectralWeights> of(const QList<double>& wavelengths);

    /// X, Y and Z, 100 at white, of reflectances from 0 to 1: one for each wavelength.
    std::array<float, 3> xyzOf(std::span<const float> reflectances) const;

private:
    std::vector<std::array<double, 3>> m_weights; ///< one for each reflectance
};
