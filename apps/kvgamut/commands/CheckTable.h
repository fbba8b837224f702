// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutInputs.h"
#include "model/checks/ColorCheck.h"
#include "model/checks/PhotoCheck.h"
#include "model/reports/Table.h"

/// The report of checks: a row for each photo and each colour, for each profile.
namespace CheckTable {

/// The columns. All keys are in every row, so that scripts find them; titles only for what was asked.
Table empty(bool photos, bool colors);

Table::Row rowOf(const MeasuredPoint& point, const ColorCheck& check, const GamutInputs::Input& input);
/// @param pass whether at most as much is outside as is allowed
Table::Row rowOf(const QString& name, bool pass, const PhotoColors& colors, const PhotoCheck& check,
                 const GamutInputs::Input& input);

} // namespace CheckTable
