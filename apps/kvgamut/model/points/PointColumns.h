// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointFile.h"

#include <QtCore/QStringList>

#include <array>
#include <optional>

/// Which columns of a table make a point.
struct PointColumns
{
    std::array<qsizetype, 3> values{0, 1, 2}; ///< L*, a*, b*, or X, Y, Z
    bool areXyz = false;
    qsizetype color = 3; ///< the columns that need not be there: -1, or past the end
    qsizetype name = -1;

    /// Finds them by their @p names, in any case. Nothing when there is neither Lab nor XYZ among them.
    static std::optional<PointColumns> named(const QStringList& names);

    /// The point of one row. Nothing when a field is missing, no finite number or no colour.
    std::optional<ColouredPoint> pointOf(const QStringList& row) const;
};

/// @p xyz, of which Y is 100 at white, in Lab (D50).
QVector3D labOfXyz(const QVector3D& xyz);
