// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ConversionColumns.h"
#include "model/charts/ChartFacts.h"

#include <optional>

/// The columns of reports that say how sure the gamut of a chart is.
namespace ChartColumns {

void add(Table& table, ConversionColumns::Details details);

/// The values of these columns, invalid if the input is not a chart.
QVariantList of(const std::optional<ChartFacts>& chart);

} // namespace ChartColumns
