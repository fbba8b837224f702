// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>

/// The colours of real surfaces: M. R. Pointer, "The gamut of real surface colours", Color Research and
/// Application 5(3), 145-155 (1980), from 4,089 samples. The published table has the largest chroma for 16
/// lightnesses, 15 to 90, and 36 hues, for the illuminant C and the 2 degree observer, in whole numbers.
namespace SurfaceColours {

constexpr int hueCount = 36;       ///< 0, 10, ... 350 degrees
constexpr int lightnessCount = 16; ///< 15, 20, ... 90

/// The published chroma.
int chroma(int hue, int lightness);

/// The solid, flat at its lowest and highest lightness and between the values of the table, adapted to D50
/// with the Bradford transform. @param added to each chroma of the table that is not 0
KVGamut::Mesh surface(double added = 0.0);

/// How sure its volume is, because the chroma is rounded to whole numbers: if all were half a unit more.
double volumeUncertainty();

} // namespace SurfaceColours
