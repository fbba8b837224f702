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
QVariantList of(const KVGamut::Report& report);

} // namespace ConversionColumns
