// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

/// The picture without its background, of the same scene drawn on black and on white.
///
/// What a pixel shows of its background is the share by which the two differ; the rest is opacity, and
/// what is seen on black is the scene's own light. That is exact for antialiased edges and translucent
/// things alike, but for the rounding to 256 steps: put on a background of any colour the result is
/// within 2 steps of the scene drawn on it.
///
/// @param onBlack is taken over, so that only one more picture of that size is needed. Opaque, as
///        @p onWhite, and of its size; a null picture where they are not.
/// @return with straight (not premultiplied) alpha
QImage withoutBackground(QImage onBlack, const QImage& onWhite);
