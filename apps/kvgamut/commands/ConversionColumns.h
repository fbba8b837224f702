// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/reports/Table.h"

/// The columns of reports that say how colours were obtained from a profile: the table, the whites, the
/// black.
namespace ConversionColumns {

/// Whether the columns with details are shown in text, too.
enum class Details
{
    Shown,
    Hidden
};
void add(Table& table, Details details);

/// The values of these columns; unknown values are invalid.
/// @param inputNotes about the input; they come before those about the conversion
QVariantList of(const KVGamut::Report& report, const QStringList& inputNotes = {});

} // namespace ConversionColumns
