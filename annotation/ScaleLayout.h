// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <annotation/AxisScale.h>
#include <annotation/Overlay.h>

#include <QtCore/QRectF>
#include <QtCore/QSize>
#include <QtGui/QMatrix4x4>

/// Adds scales along L*, a* and b* to an overlay: lines with tick marks, numbers and the titles "L*", "a*"
/// and "b*".
///
/// They lie on edges of a box around the gamuts. The scale of L* takes the edge that is farthest left or
/// right in the picture, those of a* and b* take edges at the bottom of the box. Texts are upright, on the
/// side of the edge that faces away from the centre of the box, do not overlap each other, and lie inside the
/// picture. An axis that is seen nearly end-on has no scale.
/// @param toClip from scene coordinates to clip coordinates
/// @param size of the picture, pixels
void kvAddScales(Overlay& overlay, const LabBox& box, const QMatrix4x4& toClip, const QSize& size);

/// What scales take up, so that a camera can be found that shows all of them.
struct ScaleExtent
{
    struct Text
    {
        QVector3D position; ///< (L*, a*, b*) beside which the text is
        QRectF rect;        ///< pixels, relative to the projected position
    };
    QList<QVector3D> positions; ///< ends of the lines
    QList<Text> texts;          ///< also those that are not in the picture
};

/// The extent of the scales that kvAddScales() adds to an overlay of the font and text height of @p style.
[[nodiscard]] ScaleExtent kvScaleExtent(const Overlay& style, const LabBox& box, const QMatrix4x4& toClip,
                                        const QSize& size);
