// SPDX-License-Identifier: Apache-2.0
#include "ProvenanceColumns.h"

#include "model/reports/GamutWords.h"

namespace {

using Kind = Table::Kind;

QVariant program()
{
    return QStringLiteral("kvgamut " KVGAMUT_VERSION);
}

/// Unknown for a built-in space, whose name and the program's version say what it is.
QVariant hashOf(const GamutInputs::Input& input)
{
    const QString hash = input.source ? input.source->hash() : QString();
    return hash.isEmpty() ? QVariant() : QVariant(hash);
}

QVariant adaptationOf(const KVGamut::Report& report)
{
    return report.conversion.table.isEmpty() ? QVariant()
                                             : QVariant(GamutWords::adaptation(report.conversion.adaptation));
}

} // namespace

void ProvenanceColumns::add(Table& table)
{
    table.addToJson("program", Kind::Word);
    table.addToJson("sha256", Kind::Word);
}

QVariantList ProvenanceColumns::of(const GamutInputs::Input& input)
{
    return {program(), hashOf(input)};
}

void ProvenanceColumns::addOfPair(Table& table)
{
    table.addToJson("program", Kind::Word);
    table.addToJson("sha256_a", Kind::Word);
    table.addToJson("sha256_b", Kind::Word);
    table.addToJson("grid_a", Kind::Whole);
    table.addToJson("grid_b", Kind::Whole);
    table.addToJson("adaptation_a", Kind::Word);
    table.addToJson("adaptation_b", Kind::Word);
    table.addToJson("kind_a", Kind::Word);
    table.addToJson("kind_b", Kind::Word);
}

QVariantList ProvenanceColumns::ofPair(const GamutInputs::Input& a, const GamutInputs::Input& b)
{
    const KVGamut::Report first = a.gamut->report(), second = b.gamut->report();
    return {program(),
            hashOf(a),
            hashOf(b),
            first.gridPoints,
            second.gridPoints,
            adaptationOf(first),
            adaptationOf(second),
            a.source->kind(),
            b.source->kind()};
}

void ProvenanceColumns::addSame(Table& table, const GamutInputs::Input& input)
{
    add(table);
    table.setSame("program", program());
    table.setSame("sha256", hashOf(input));
    table.addToJson("bpc", Kind::Flag);
    table.addToJson("grid", Kind::Whole);
    table.addToJson("adaptation", Kind::Word);
    table.addToJson("kind", Kind::Word);
    if (!input.gamut)
        return;
    table.setSame("kind", input.source->kind());
    const KVGamut::Report report = input.gamut->report();
    table.setSame("bpc", GamutWords::blackPointCompensated(report));
    table.setSame("grid", report.gridPoints);
    table.setSame("adaptation", adaptationOf(report));
}
