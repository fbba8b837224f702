// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointSet.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

/// The colours in a file with the content @p content. The content decides the format.
///
/// - CSV: one colour on each line, its fields separated by semicolons, tabs, commas or spaces. A comma beside
///   semicolons or tabs is a decimal point. The first line names the columns in any order, see PointColumns;
///   unknown ones are ignored, with a note. Without such a heading a row is L*, a*, b* and optionally a name
///   and a colour (#40c0ff or a name), with a note; L* must be from 0 to 100, a* and b* from -128 to 128.
///   Empty lines and lines that begin with # are ignored, except that "# space: sRGB", "# white: D65" and
///   "# white-y: 1" declare what PointOptions does. The options take precedence.
/// - CGATS and related formats (.ti3, IT8): the columns of the first table that has colours.
/// - ASE and ACB palettes, and those of GIMP, whose colours are sRGB.
/// - CxF 3: the objects' CIELAB values for D50, else their CIE XYZ values for D50, else reflectances.
///
/// A row whose values are missing, no numbers or outside of their range is left out, with a note; the set is
/// then partial. Colours are relative to D50: values for another white are adapted with the Bradford
/// transform, with a note. RGB and CMYK values need their colour space. The text is in UTF-8, in UTF-16 with
/// a byte order mark, or else in Latin-1, with a note. InputLimits.h has the limits. The time is proportional
/// to the size of the file.
///
/// Problem and notes do not name the file.
/// @param task cancels reading; may be null
Result<PointSet> pointsOfText(const QByteArray& content, const KVCompletionProtocolPtr& task = {},
                              const PointOptions& options = {});

/// The same for the file @p name. Problem and notes name the file.
Result<PointSet> readPointFile(const QString& name, const KVCompletionProtocolPtr& task = {},
                               const PointOptions& options = {});
