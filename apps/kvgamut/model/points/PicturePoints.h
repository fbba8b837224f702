// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointSet.h"

#include <QtCore/QByteArray>

/// The colours of a picture as points: its pixels (a regular sample of a big picture) in Lab, converted
/// with the absolute colorimetric intent of its profile, gathered into cells of equal size. Each cell
/// gives a point at the mean of its colours, whose weight is its share of the pixels, 0..1.
///
/// A picture without a profile counts as sRGB. One whose profile is not for its RGB or grey pixels is
/// refused.
PointSet readPicturePoints(const QString& file);

/// Colours gathered into cells of @p edge Lab units; of bigger ones where there would be more than
/// @p most points. The order follows the cells, not the colours' order.
QList<MeasuredPoint> gatherColours(const QList<QVector3D>& colours, float edge, qsizetype most);
