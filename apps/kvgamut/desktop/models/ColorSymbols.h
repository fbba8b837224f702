// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/points/MeasuredPoint.h"

#include <QtGui/QPixmap>

/// Small pictures for tables of colours.
namespace ColorSymbols {

/// A patch of the colour on screen; with a corner cut off if the screen cannot show it.
QPixmap swatch(const KVGamut::LabPoint& lab, int height);

/// A circle inside, a diamond on the edge, a cross outside, in the colour of the zone.
QPixmap zone(Side side, int height);

} // namespace ColorSymbols
