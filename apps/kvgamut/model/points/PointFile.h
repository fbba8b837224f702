// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointSet.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

/// The colours at Lab positions in a text file with the content @p content. The content decides the format.
///
/// - CSV: one point on each line, L*, a*, b* and optionally its colour (#40c0ff or a name), separated by
///   semicolons, tabs, commas or spaces. A comma beside semicolons or tabs is a decimal point. Empty lines
///   and lines that begin with # are ignored. A first line may name the columns: L, a, b (LAB_L...) or
///   X, Y, Z (XYZ_X...), and optionally name (SAMPLE_NAME, SAMPLE_ID) and colour, in any order, among others.
/// - CGATS and related formats (.ti3, IT8): the columns of the first table that has Lab or XYZ.
/// - CxF 3: the objects' CIELAB values for D50, else their CIE XYZ values for D50.
///
/// XYZ has Y 100 at white and is taken relative to D50 without adaptation. InputLimits.h has the limits. The
/// time is proportional to the size of the file.
///
/// Problem and note do not name the file.
/// @param task cancels reading; may be null
Result<PointSet> pointsOfText(const QByteArray& content, const KVCompletionProtocolPtr& task = {});

/// The same for the file @p name. Problem and note name the file.
Result<PointSet> readPointFile(const QString& name, const KVCompletionProtocolPtr& task = {});
