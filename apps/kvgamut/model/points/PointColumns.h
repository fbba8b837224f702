// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MeasuredPoint.h"

#include <QtCore/QStringList>

#include <array>
#include <optional>

/// The columns of a table that hold the values of a point.
struct PointColumns
{
    std::array<qsizetype, 3> values{0, 1, 2}; ///< L*, a*, b*, or X, Y, Z
    bool areXyz = false;
    qsizetype color = 3; ///< optional, as is the name: -1 or past the end if missing
    qsizetype name = -1;

    /// Finds the columns by their @p names, ignoring case. nullopt if neither Lab nor XYZ is among them.
    static std::optional<PointColumns> named(const QStringList& names);

    /// The point of one row. nullopt if a field is missing, is not a finite number or is not a colour, or if
    /// the Lab of its XYZ is not finite.
    std::optional<MeasuredPoint> pointOf(const QStringList& row) const;
};

bool isFinite(const KVGamut::LabPoint& lab);
/// Lab (D50) of X, Y and Z, where white has Y 100. Not finite if they are enormous.
KVGamut::LabPoint labOfXyz(const std::array<float, 3>& xyz);
