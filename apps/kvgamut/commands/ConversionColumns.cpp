// SPDX-License-Identifier: Apache-2.0
#include "ConversionColumns.h"

#include "model/reports/GamutWords.h"

namespace {

using Kind = Table::Kind;

QVariant colourOf(const std::optional<KVGamut::LabPoint>& lab)
{
    return lab ? Table::colour(*lab) : QVariant();
}

} // namespace

void ConversionColumns::add(Table& table, Details details)
{
    const auto title = [details](const char* text) { return details == Details::Shown ? text : ""; };
    table.add("table", details == Details::Shown ? "with table" : "table", Kind::Word);
    table.add("table_fallback", "", Kind::Flag);
    table.add("adaptation", title("adaptation"), Kind::Word);
    table.add("adapted_by", title("adapted by"), Kind::Word);
    table.add("media_white", title("media white"), Kind::Colour, 3, 2);
    table.add("mapped_black", title("mapped black"), Kind::Colour, 3, 2);
    table.add("cicp", title("cicp"), Kind::Word);
    table.add("notes", title("notes"), Kind::Word);
}

QVariantList ConversionColumns::of(const KVGamut::Report& report, const QStringList& inputNotes)
{
    const KVGamut::Conversion& conversion = report.conversion;
    if (conversion.table.isEmpty()) // saved by an earlier version, or no gamut
        return QVariantList(8);
    const QString notes = (inputNotes + GamutWords::notes(report)).join(QLatin1Char(' '));
    return {conversion.table,
            conversion.tableIsFallback,
            GamutWords::adaptation(conversion.adaptation),
            Table::unlessEmpty(GamutWords::adaptedBy(conversion.adaptationSource)),
            colourOf(conversion.mediaWhite),
            colourOf(conversion.mappedBlack),
            conversion.cicp ? QVariant(GamutWords::encoding(*conversion.cicp)) : QVariant(),
            Table::unlessEmpty(notes)};
}
