// SPDX-License-Identifier: Apache-2.0
#include "CheckTable.h"

#include "ProvenanceColumns.h"
#include "model/reports/GamutWords.h"

#include <cmath>

namespace {

using Kind = Table::Kind;

QString zoneWord(Side side)
{
    switch (side) {
    case Side::Inside:
        return QStringLiteral("in");
    case Side::Edge:
        return QStringLiteral("edge");
    case Side::Outside:
        break;
    }
    return QStringLiteral("out");
}

/// The first columns of a row.
Table::Row startOf(const char* kind, const QString& name, bool pass, const GamutInputs::Input& input)
{
    return {QString::fromLatin1(kind), name, pass, input.name, GamutWords::intent(input.gamut->report())};
}

QVariant colourOrUnknown(const KVGamut::LabPoint& lab)
{
    return std::isfinite(lab.L) ? Table::colour(lab) : QVariant();
}

} // namespace

/// All keys are in every row, so that scripts find them; titles only for what was asked.
Table CheckTable::empty(bool photos, bool colors)
{
    const auto ofPhotos = [photos](const char* title) { return photos ? title : ""; };
    const auto ofColors = [colors](const char* title) { return colors ? title : ""; };
    Table table;
    table.add("kind", "", Kind::Word);
    table.add("name", "name", Kind::Word);
    table.add("pass", "pass", Kind::Flag);
    table.add("profile", "profile", Kind::Word);
    table.add("intent", "intent", Kind::Word);
    table.add("pixels", "", Kind::Number);
    table.add("inside_share", ofPhotos("inside"), Kind::Share, 6, 2);
    table.add("edge_share", ofPhotos("edge"), Kind::Share, 6, 2);
    table.add("outside_share", ofPhotos("outside"), Kind::Share, 6, 2);
    table.add("de00_mean", ofPhotos("dE00 mean"), Kind::Number, 4, 2);
    table.add("de00_p95", ofPhotos("95 %"), Kind::Number, 4, 2);
    table.add("de00_max", ofPhotos("max"), Kind::Number, 4, 2);
    table.add("de76_mean", "", Kind::Number, 4, 2);
    table.add("de76_p95", "", Kind::Number, 4, 2);
    table.add("de76_max", "", Kind::Number, 4, 2);
    table.add("made_de00_mean", "", Kind::Number, 4, 2);
    table.add("made_de00_p95", "", Kind::Number, 4, 2);
    table.add("made_de00_max", "", Kind::Number, 4, 2);
    table.add("zone", ofColors("zone"), Kind::Word);
    table.add("lab", ofColors("L* a* b*"), Kind::Colour, 4, 2);
    table.add("de00", ofColors("dE00"), Kind::Number, 4, 2);
    table.add("de76", ofColors("dE76"), Kind::Number, 4, 2);
    table.add("nearest", ofColors("nearest"), Kind::Colour, 4, 2);
    table.add("nearest_same_hue", "", Kind::Colour, 4, 2);
    table.add("de00_same_hue", "", Kind::Number, 4, 2);
    table.add("device", ofColors("device %"), Kind::Numbers, 2, 0);
    table.add("made", "", Kind::Colour, 4, 2);
    table.add("made_de00", "", Kind::Number, 4, 2);
    table.add("device_inverted", "", Kind::Numbers, 2, 0);
    table.add("inverted_de00", "", Kind::Number, 4, 2);
    ProvenanceColumns::add(table);
    table.addToJson("profile_kind", Kind::Word);
    return table;
}

Table::Row CheckTable::rowOf(const MeasuredPoint& point, const ColorCheck& check,
                             const GamutInputs::Input& input)
{
    Table::Row row = startOf("color", point.name, check.zone != Side::Outside, input);
    constexpr int ofPhotos = 13;
    row += QVariantList(ofPhotos, QVariant());
    const auto listed = [](const std::vector<double>& values) {
        return QVariant(QVariantList(values.begin(), values.end()));
    };
    const bool isMade = !check.device.empty();
    row += Table::Row{zoneWord(check.zone),
                      Table::colour(point.lab),
                      check.de00,
                      check.de76,
                      colourOrUnknown(check.nearest),
                      colourOrUnknown(check.nearestAtHue),
                      check.de00AtHue,
                      isMade ? listed(check.device) : QVariant(),
                      colourOrUnknown(check.made),
                      isMade ? QVariant(check.madeDe00) : QVariant(),
                      isMade ? listed(check.inverted) : QVariant(),
                      isMade ? QVariant(check.invertedDe00) : QVariant()};
    return row + ProvenanceColumns::of(input) + Table::Row{input.source->kind()};
}

Table::Row CheckTable::rowOf(const QString& name, bool pass, const PhotoColors& colors,
                             const PhotoCheck& check, const GamutInputs::Input& input)
{
    Table::Row row = startOf("photo", name, pass, input);
    row += Table::Row{double(colors.pixels), check.inside,   check.edge,      check.outside,  check.de00.mean,
                      check.de00.p95,        check.de00.max, check.de76.mean, check.de76.p95, check.de76.max};
    for (double PixelDifferences::*part :
         {&PixelDifferences::mean, &PixelDifferences::p95, &PixelDifferences::max})
        row.append(check.made ? QVariant((*check.made).*part) : QVariant());
    constexpr int ofColors = 12;
    row += QVariantList(ofColors, QVariant());
    return row + ProvenanceColumns::of(input) + Table::Row{input.source->kind()};
}
