// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>
#include <QtGui/QColor>

/// A colour at a position in Lab: measured, or the mean of a part of a picture.
struct MeasuredPoint
{
    KVGamut::LabPoint lab; ///< D50
    QColor color;          ///< as the file gives it; invalid: not given
    QString name;          ///< may be empty
    double weight = 1.0;   ///< its share among the points of its set, relative to theirs

    /// The colour in which it is shown: the given one, else that of its position.
    QColor shownColor() const;
};

/// The colour in which a screen shows @p lab.
QColor screenColor(const KVGamut::LabPoint& lab);

/// On which side of a gamut's surface a colour lies.
enum class Side
{
    Inside,
    Edge, ///< no farther from the surface than the tolerance
    Outside,
};

/// @param distance from the surface as in KVGamut::Nearest: negative inside
Side sideOf(float distance, float tolerance);
