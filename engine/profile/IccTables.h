// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "IccTags.h"
#include <engine/base/Result.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdint>

namespace velmora {

/// Validates an untrusted ICC profile: header, tag table, and the colour tables of its intents. A profile is
/// refused for a damaged table only if no intent is left that can be used (see colorTable()), or if the
/// profile was cut off before the end of a table.
/// @return fails with NotAProfile, DamagedTagTable or DamagedTag
[[nodiscard]] Result<void> checkIccTables(const QByteArray& profile);

/// Fails with UnknownIntent unless @p intent is one of the four.
[[nodiscard]] Result<void> checkIntent(int intent);

/// Where a profile says how device values become colours.
struct ColorTable
{
    std::uint32_t tag = 0;   ///< signature of the table; 0 for a profile of a matrix and curves
    int intent = 0;          ///< the intent with which Little CMS uses it
    bool isFallback = false; ///< the table belongs to another intent than the one that was asked for
    /// Little CMS gives colours relative to the media white, although absolute ones were asked for.
    bool isMediaRelative = false;
};

/// Chooses the table for a rendering intent (0..3) and checks it, and all other tags of which Little CMS does
/// not check the size. Tags that the transform does not use may be damaged.
///
/// The order is that of ICC.1, which Little CMS follows: the table of the intent with floating-point numbers
/// (D2Bx), then the one with integers (A2Bx; A2B1 for the absolute intent), then A2B0, then the matrix. If
/// there is none of these, the tables of other intents, relative colorimetric first.
///
/// A table of a few hundred bytes can declare 90^4 nodes; a reader that allocates before it reads would use
/// hundreds of megabytes. A megabyte can also contain ten thousand matrices through which each colour must
/// pass, or a table of fifteen channels; the cost of a colour is therefore limited, too.
/// @param blackPointCompensation whether Little CMS will look for the black point, with tables of its own
/// @return fails with DamagedTag
[[nodiscard]] Result<ColorTable> colorTable(const IccTags& tags, int intent, bool blackPointCompensation);

/// "A2B0", "D2B1", ..., or "matrix".
[[nodiscard]] QString tableName(const ColorTable& table);

} // namespace velmora
