// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>
#include <annotation/AxisScale.h>
#include <annotation/Overlay.h>

#include <QtCore/QSize>
#include <QtGui/QMatrix4x4>

/// What annotations refer to.
struct AnnotatedScene
{
    LabBox box;        ///< around the gamuts
    QMatrix4x4 toClip; ///< from scene coordinates to clip coordinates
    QColor background;
};

/// Pixel size of the text in a picture: 2 % of its shorter side, but at least 10 pixels.
[[nodiscard]] int kvAnnotationTextHeight(const QSize& size, float textScale);

/// The annotations of a picture of @p size pixels: legend at the top left, caption at the bottom, scales
/// around the gamuts. Empty for an empty size.
[[nodiscard]] Overlay kvAnnotationOverlay(const KVAnnotations& annotations, const AnnotatedScene& scene,
                                          const QSize& size);

/// Where the legend, the caption and the scale bar are in a picture of @p size, with some space around them:
/// one rectangle for each text, and one for the boxes of each of them.
[[nodiscard]] QList<QRectF> kvFixedAnnotations(const KVAnnotations& annotations, const QSize& size);

/// An overlay without content, in the font and colours of annotations.
[[nodiscard]] Overlay kvAnnotationStyle(const KVAnnotations& annotations, const QColor& background,
                                        const QSize& size);
