// SPDX-License-Identifier: Apache-2.0
#include "CompareCommand.h"

#include "GamutInputs.h"
#include "commands/options/ProfileOptions.h"
#include "model/reports/GamutWords.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>

#include <utility>

namespace {

using Input = GamutInputs::Input;
using Kind = Table::Kind;
using Pairs = QList<std::pair<Input, Input>>;

Table emptyTable()
{
    Table table;
    table.add("a", "a", Kind::Word);
    table.add("b", "b", Kind::Word);
    table.add("volume_a", "volume a", Kind::Number, GamutWords::volumeDecimals);
    table.add("uncertainty_a", "±", Kind::Number, GamutWords::volumeDecimals);
    table.add("volume_b", "volume b", Kind::Number, GamutWords::volumeDecimals);
    table.add("uncertainty_b", "±", Kind::Number, GamutWords::volumeDecimals);
    table.add("intersection", "intersection", Kind::Number, GamutWords::volumeDecimals);
    table.add("intersection_uncertainty", "±", Kind::Number, GamutWords::volumeDecimals);
    table.add("union", "union", Kind::Number, GamutWords::volumeDecimals);
    table.add("union_uncertainty", "±", Kind::Number, GamutWords::volumeDecimals);
    table.add("coverage_a_of_b", "b in a", Kind::Share, 6, 2);
    table.add("coverage_uncertainty_a_of_b", "±", Kind::Share, 6, 2);
    table.add("coverage_b_of_a", "a in b", Kind::Share, 6, 2);
    table.add("coverage_uncertainty_b_of_a", "±", Kind::Share, 6, 2);
    table.add("intent_a", "intent a", Kind::Word);
    table.add("intent_b", "intent b", Kind::Word);
    table.add("bpc_a", "", Kind::Flag);
    table.add("bpc_b", "", Kind::Flag);
    table.add("white_a", "white a", Kind::Colour, 3, 1);
    table.add("white_b", "white b", Kind::Colour, 3, 1);
    table.add("black_a", "", Kind::Colour, 3, 1);
    table.add("black_b", "", Kind::Colour, 3, 1);
    table.add("seconds", "", Kind::Number, 4);
    table.summary = QStringLiteral("b in a: the share of b's volume that a covers. Volumes in cubed dE76.");
    return table;
}

Table::Row rowOf(const Input& a, const Input& b)
{
    QElapsedTimer clock;
    clock.start();
    const auto [found, uncertainty, problem] = a.gamut->compareWithUncertainty(*b.gamut);
    const double seconds = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
    const KVGamut::Report reportA = a.gamut->report(), reportB = b.gamut->report();
    return {a.name,
            b.name,
            reportA.volume,
            reportA.volumeUncertainty,
            reportB.volume,
            reportB.volumeUncertainty,
            found.intersection,
            uncertainty.intersection,
            found.unionVolume,
            uncertainty.unionVolume,
            found.secondCovered,
            uncertainty.secondCovered,
            found.firstCovered,
            uncertainty.firstCovered,
            GamutWords::intent(reportA.intent),
            GamutWords::intent(reportB.intent),
            GamutWords::blackPointCompensated(reportA),
            GamutWords::blackPointCompensated(reportB),
            Table::colour(found.whiteFirst),
            Table::colour(found.whiteSecond),
            Table::colour(found.blackFirst),
            Table::colour(found.blackSecond),
            seconds};
}

/// The pairs to compare: all pairs of inputs that have a gamut, or only those with the first input.
Pairs pairsOf(const GamutInputs& inputs, bool matrix)
{
    Pairs pairs;
    for (qsizetype i = 0; i < (matrix ? inputs.all.size() : 1); ++i)
        for (qsizetype j = i + 1; j < inputs.all.size(); ++j)
            if (inputs.all[i].gamut && inputs.all[j].gamut)
                pairs.append({inputs.all[i], inputs.all[j]});
    return pairs;
}

} // namespace

CompareCommand::CompareCommand(CLI::App& program)
    : Command(program, "compare", "Print the intersection, union and coverage of gamuts")
{
    declareInputs(parser(), m_names)->expected(-2);
    parser().add_flag("--matrix", m_matrix, "Compare all pairs (default: the first input with each other)");
    declareSettings(parser(), m_settings);
    m_report.declare(parser());
    ReportOptions::endHelp(
        parser(),
        "In each pair, a is the input that is named first.\n"
        "  coverage_a_of_b = intersection / volume of b: the share of b that a covers (\"b in a\")\n"
        "  coverage_b_of_a = intersection / volume of a: the share of a that b covers (\"a in b\")\n"
        "The true values lie within value +- uncertainty.\n"
        "Volumes are in cubed CIE 1976 colour differences of CIELAB (D50).");
}

int CompareCommand::run(Arguments arguments)
{
    const QCoreApplication application(arguments.count, arguments.values);
    Progress progress(m_report.quiet);
    const GamutInputs inputs = GamutInputs::compute(m_names, m_settings, progress);
    const Pairs pairs = pairsOf(inputs, m_matrix);
    Table table = emptyTable();
    for (const auto& [a, b] : pairs) {
        progress.show(static_cast<float>(table.rows.size()) / static_cast<float>(pairs.size()),
                      QStringLiteral("comparisons"));
        table.rows.append(rowOf(a, b));
    }
    progress.clear();
    const bool allUsed = inputs.sayProblems();
    return m_report.print(table, allUsed);
}
