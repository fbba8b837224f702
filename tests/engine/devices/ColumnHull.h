// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ColumnUnion.h"

#include <span>

namespace kvdevices {

/// The part of the column at (x, y) along the third axis that is inside the convex hull of @p points; nullopt
/// if it is empty.
///
/// The upper end is the largest third coordinate of all convex combinations of the points at (x, y). The
/// simplex method finds it: it exchanges one of three points as long as another one is above their plane.
std::optional<Interval> columnOfHull(std::span<const Point> points, double x, double y);

} // namespace kvdevices
