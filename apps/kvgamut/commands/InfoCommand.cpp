// SPDX-License-Identifier: Apache-2.0
#include "InfoCommand.h"

#include "ChartColumns.h"
#include "ConversionColumns.h"
#include "GamutInputs.h"
#include "ProvenanceColumns.h"
#include "commands/options/ProfileOptions.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Say.h"
#include "model/inputs/ProfileFacts.h"
#include "model/problems/ProblemText.h"
#include "model/reports/GamutWords.h"

#include <QtCore/QCoreApplication>

namespace {

using Input = GamutInputs::Input;
using Kind = Table::Kind;

Table infoTable()
{
    Table table;
    table.blocks = true;
    table.add("profile", "profile", Kind::Word);
    table.add("kind", "kind", Kind::Word);
    table.add("description", "description", Kind::Word);
    table.add("class", "class", Kind::Word);
    table.add("device_space", "device space", Kind::Word);
    table.add("channels", "channels", Kind::Whole);
    table.add("pcs", "PCS", Kind::Word);
    table.add("version", "version", Kind::Word);
    table.add("intents", "intents", Kind::Words);
    table.add("tables", "tables", Kind::Words);
    table.add("intent", "with intent", Kind::Word);
    table.add("bpc", "with bpc", Kind::Flag);
    table.add("grid", "with grid", Kind::Whole);
    table.add("white", "white", Kind::Colour, 3, 2);
    table.add("black", "black", Kind::Colour, 3, 2);
    ConversionColumns::add(table, ConversionColumns::Details::Shown);
    ChartColumns::add(table, ConversionColumns::Details::Shown);
    table.add("copyright", "copyright", Kind::Word);
    table.add("saved_of", "saved of", Kind::Word);
    table.add("no_gamut", "no gamut", Kind::Word);
    ProvenanceColumns::add(table);
    return table;
}

Table::Row rowOf(const Input& input)
{
    const bool isProfile = input.source->profile() != nullptr;
    const KVGamut::Report report = input.gamut ? input.gamut->report() : KVGamut::Report();
    const ProfileFacts facts = isProfile ? ProfileFacts::of(input.source->profile()->bytes) : ProfileFacts();
    const auto ofGamut = [&](const QVariant& value) { return input.gamut ? value : QVariant(); };
    const auto ofProfile = [&](const QVariant& value) { return isProfile ? value : QVariant(); };
    Table::Row row{input.name,
                   input.source->kind(),
                   Table::unlessEmpty(facts.description),
                   Table::unlessEmpty(facts.deviceClass),
                   Table::unlessEmpty(facts.deviceSpace),
                   isProfile ? facts.channels : report.channels,
                   Table::unlessEmpty(facts.pcs),
                   Table::unlessEmpty(facts.version),
                   ofProfile(facts.intents),
                   ofProfile(facts.tables),
                   ofGamut(GamutWords::intent(report)),
                   ofGamut(GamutWords::blackPointCompensated(report)),
                   ofGamut(report.gridPoints),
                   ofGamut(Table::colour(report.white)),
                   ofGamut(Table::colour(report.black))};
    row += ConversionColumns::of(report, input.source->notes());
    row += ChartColumns::of(input.source->chart());
    row += Table::Row{Table::unlessEmpty(facts.copyright), Table::unlessEmpty(input.source->savedProfile()),
                      input.gamut ? QVariant() : ProblemText::english(input.gamut.error().about({}))};
    row += ProvenanceColumns::of(input);
    return row;
}

} // namespace

InfoCommand::InfoCommand(CLI::App& program)
    : Command(program, "info", "Print the properties of profiles, and their white and black points")
{
    declareInputs(parser(), m_names);
    declareSettings(parser(), m_settings);
    m_colours.declare(parser());
    m_report.declare(parser());
    ReportOptions::endHelp(
        parser(), "White and black are L*, a*, b* (D50) for the chosen intent. A profile without a gamut is "
                  "listed\nas well, with the reason.");
}

int InfoCommand::run(Arguments arguments)
{
    const QCoreApplication application(arguments.count, arguments.values);
    Progress progress;
    const GamutInputs inputs = GamutInputs::compute(m_names, m_settings, m_colours.reading, progress);
    progress.clear();
    Table table = infoTable();
    bool allOpen = true;
    for (const Input& input : inputs.all) {
        if (input.source) {
            table.rows.append(rowOf(input));
        } else {
            say(input.source.error());
            allOpen = false;
        }
    }
    return m_report.print(table, allOpen);
}
