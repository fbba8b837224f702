// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>

/// Fewer triangles that look much like those of @p records: for frames in which the exact ones would be too
/// slow.
///
/// Corners are a part of the present ones, with their base colours. Neighbouring triangles are merged by the
/// quadric error metric (Garland and Heckbert 1997, in meshoptimizer) down to @p maxTriangles, or until the
/// next one would move the surface by more than 2 % of its extent. Where colours jump, such as at the borders
/// of bands, the border stays.
///
/// A pure function, for any thread. Takes about 3 ms for 12,000 triangles, and cannot be cancelled.
/// @param records kvVertexFloats floats each, three of them a triangle
/// @return whole vertices of kvGeneratedFloats floats; none if a position is not finite
[[nodiscard]] QList<float> kvCoarseTriangles(const QList<float>& records, qsizetype maxTriangles);
