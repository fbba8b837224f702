// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutInputs.h"
#include "model/reports/Table.h"

/// How much of each gamut each other one covers, as one table.
class CoverageMatrix
{
public:
    /// @param inputs that all have a gamut. Each then covers itself completely.
    explicit CoverageMatrix(const QList<GamutInputs::Input>& inputs);

    /// Enters the comparison of the inputs @p a, the first in it, and @p b.
    void set(qsizetype a, qsizetype b, const KVGamut::ComparisonReport& comparison);

    /// A row for each input. Text and CSV have a column for each input, JSON arrays in the order of the rows.
    Table table() const;

private:
    struct Cell
    {
        double share = 1.0; ///< of the row's volume that the column covers, 0..1
        double uncertainty = 0.0;
    };
    Cell& cell(qsizetype row, qsizetype column) { return m_cells[row * m_inputs.size() + column]; }

    QList<GamutInputs::Input> m_inputs;
    QList<Cell> m_cells; ///< row by row
};
