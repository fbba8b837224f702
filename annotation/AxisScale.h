// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QVector3D>

#include <span>
#include <vector>

/// The part of CIELAB that scales surround.
struct LabBox
{
    QVector3D low{0.0f, -100.0f, -100.0f};
    QVector3D high{100.0f, 100.0f, 100.0f};

    bool operator==(const LabBox&) const = default;
};

/// A box with round numbers around gamuts from @p low to @p high: L* at least from 0 to 100, and a* and b* at
/// least from -20 to 20. The gamuts may extend beyond it by half a unit.
[[nodiscard]] LabBox kvScaleBox(const QVector3D& low, const QVector3D& high);

/// Distances between the numbers of a scale that can be chosen, ascending.
[[nodiscard]] std::span<const int> kvScaleSteps();

/// The multiples of @p step from @p low to @p high, ascending.
[[nodiscard]] std::vector<int> kvScaleNumbers(float low, float high, int step);

/// A number as it is printed at a scale, with a minus sign instead of a hyphen.
[[nodiscard]] QString kvScaleText(int number);
