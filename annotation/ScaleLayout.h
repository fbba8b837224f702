// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <annotation/AxisScale.h>
#include <annotation/Overlay.h>

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
