// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutInputs.h"
#include "model/reports/Table.h"

/// The columns of JSON that say how a row was made: the program and its version, the input's SHA-256 and the
/// settings. A row can then be judged and repeated without the others, wherever it is stored.
namespace ProvenanceColumns {

/// "program" and "sha256".
void add(Table& table);
QVariantList of(const GamutInputs::Input& input);

/// "program", and the hashes, grids and adaptations of two inputs.
void addOfPair(Table& table);
QVariantList ofPair(const GamutInputs::Input& a, const GamutInputs::Input& b);

/// Those of add(), and "bpc", "grid" and "adaptation", with the values of @p input in each row.
void addSame(Table& table, const GamutInputs::Input& input);

} // namespace ProvenanceColumns
