// SPDX-License-Identifier: Apache-2.0
#include "CoverageMatrix.h"

#include "ProvenanceColumns.h"
#include "model/reports/GamutWords.h"

namespace {

using Kind = Table::Kind;

constexpr int decimals = 6, textDecimals = 2;

} // namespace

CoverageMatrix::CoverageMatrix(const QList<GamutInputs::Input>& inputs)
    : m_inputs(inputs), m_cells(inputs.size() * inputs.size())
{
}

void CoverageMatrix::set(qsizetype a, qsizetype b, const KVGamut::ComparisonReport& comparison)
{
    cell(a, b) = {comparison.values.firstCovered, comparison.uncertainty.firstCovered};
    cell(b, a) = {comparison.values.secondCovered, comparison.uncertainty.secondCovered};
}

Table CoverageMatrix::table() const
{
    Table table;
    table.add("profile", "profile", Kind::Word);
    QStringList profiles;
    for (const GamutInputs::Input& input : m_inputs) {
        table.columns.append({input.name, input.name, Kind::Share, decimals, textDecimals});
        table.columns.last().inJson = false;
        profiles.append(input.name);
    }
    table.addToJson("profiles", Kind::Words);
    table.setSame("profiles", profiles);
    table.addToJson("coverage", Kind::Numbers, decimals);
    table.addToJson("uncertainty", Kind::Numbers, decimals);
    table.addToJson("intent", Kind::Word);
    ProvenanceColumns::add(table);
    table.addToJson("kind", Kind::Word);
    for (qsizetype i = 0; i < m_inputs.size(); ++i) {
        QVariantList shares, uncertainties;
        for (const Cell& each : m_cells.sliced(i * m_inputs.size(), m_inputs.size())) {
            shares.append(each.share);
            uncertainties.append(each.uncertainty);
        }
        Table::Row row{m_inputs[i].name};
        row += shares;
        row.append(QVariant()); // profiles
        row.append(QVariant(shares));
        row.append(QVariant(uncertainties));
        row.append(GamutWords::intent(m_inputs[i].gamut->report()));
        table.rows.append(row + ProvenanceColumns::of(m_inputs[i]) + Table::Row{m_inputs[i].source->kind()});
    }
    table.summary =
        QStringLiteral("The share of the volume of each row's gamut that the column's gamut covers.");
    for (const QString& line : GamutInputs::kindLines(m_inputs))
        table.summary += QLatin1Char('\n') + line;
    return table;
}
