// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

/// The colours of all lights that are not lighter than white: those of one wavelength, and their mixtures.
///
/// For D50 and the CIE 1931 2 degree observer. A light has a place in Lab if its luminance is given relative
/// to that of white. At each lightness L* from 0 to 100 the limit is the line of the chromaticities of the
/// wavelengths from 380 to 780 nm, in steps of 5 nm, and the purple line between its ends. The chromaticities
/// are those of SpectralWeights.
namespace SpectralLimit {

/// The solid, flat at L* 100. a* reaches from about -410 to 1160, b* from -980 to 170.
KVGamut::Mesh surface();

/// How sure its volume is, dE76 cubed. With steps of 1 nm, interpolated with the polynomial of Lagrange, it
/// is 33,000 more; with more rings and points 10,000 less.
constexpr double volumeUncertainty = 40000.0;

} // namespace SpectralLimit
