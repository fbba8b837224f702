// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

/// Computes a picture with a transparent background from the same scene drawn on black and on white.
///
/// The difference of the two pixels is the transparency (1 - alpha), and the pixel on black is the colour
/// multiplied by alpha. This is exact for antialiased edges and translucent objects, except for rounding to
/// 256 steps: composited over any colour, the result is within 2 steps of the scene drawn on that colour.
///
/// @param onBlack opaque; reused for the result to save memory
/// @param onWhite opaque, of the same size; otherwise the result is a null picture
/// @return with straight (not premultiplied) alpha
QImage withoutBackground(QImage onBlack, const QImage& onWhite);
