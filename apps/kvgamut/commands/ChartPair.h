// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutInputs.h"
#include "model/reports/Table.h"

/// What `compare` says about a chart and a profile: where the profile claims more or less than was measured.
namespace ChartPair {

/// The columns, which are not shown in text.
void addColumns(Table& table);

/// Their values, and sentences about the pair; invalid values and no sentence if not exactly one is a chart.
struct Answer
{
    QVariantList values;
    QStringList sentences;
};
Answer of(const GamutInputs::Input& a, const GamutInputs::Input& b, double intersection);

} // namespace ChartPair
