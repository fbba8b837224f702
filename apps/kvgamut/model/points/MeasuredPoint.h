// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>
#include <QtGui/QColor>

#include <array>

/// A colour at a position in Lab: measured, or the mean of a part of a picture.
struct MeasuredPoint
{
    KVGamut::LabPoint lab; ///< D50
    QColor color;          ///< from the file; invalid if the file has none
    QString name;          ///< may be empty
    double weight = 1.0;   ///< relative to the other points of its set

    /// Its RGB values, 0..1, or CMYK values, 0..100, in the file.
    std::array<float, 4> device{};
    int deviceChannels = 0; ///< 3 or 4; 0 if the file has no device values

    /// The colour in which the point is shown: @ref color if valid, else screenColor() of its position.
    QColor shownColor() const;
};

/// The sRGB colour for @p lab on screen.
QColor screenColor(const KVGamut::LabPoint& lab);
/// Whether an sRGB screen can show @p lab (D50), within half a step of its 256 levels.
bool isScreenColor(const KVGamut::LabPoint& lab);

/// The side of a gamut's surface on which a colour lies.
enum class Side
{
    Inside,
    Edge, ///< within the tolerance of the surface
    Outside,
};

/// @param distance from the surface as in KVGamut::Nearest: negative inside
Side sideOf(float distance, float tolerance);

/// The colour of points on this side. The three differ for every kind of colour vision.
QColor sideColor(Side side);
