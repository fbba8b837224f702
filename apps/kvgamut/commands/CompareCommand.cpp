// SPDX-License-Identifier: Apache-2.0
#include "CompareCommand.h"

#include "ChartPair.h"
#include "CoverageMatrix.h"
#include "GamutInputs.h"
#include "ProvenanceColumns.h"
#include "commands/options/ProfileOptions.h"
#include "model/jobs/Jobs.h"
#include "model/reports/GamutWords.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>

#include <vector>

namespace {

using Input = GamutInputs::Input;
using Kind = Table::Kind;

Table comparisonTable()
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
    ProvenanceColumns::addOfPair(table);
    ChartPair::addColumns(table);
    table.summary = QStringLiteral("b in a: the share of b's volume that a covers. Volumes in cubed dE76.");
    return table;
}

/// The comparison of two inputs, by their numbers.
struct Pair
{
    qsizetype a, b;
    KVGamut::ComparisonReport found = {};
    double seconds = 0.0;
    ChartPair::Answer ofChart = {};
};

void compare(Pair& pair, const GamutInputs& inputs)
{
    QElapsedTimer clock;
    clock.start();
    pair.found = inputs.all[pair.a].gamut->compareWithUncertainty(*inputs.all[pair.b].gamut);
    pair.ofChart =
        ChartPair::of(inputs.all[pair.a], inputs.all[pair.b], double(pair.found.values.intersection));
    pair.seconds = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
}

Table::Row rowOf(const Input& a, const Input& b, const Pair& pair)
{
    const auto& [found, uncertainty, problem] = pair.found;
    const KVGamut::Report reportA = a.gamut->report(), reportB = b.gamut->report();
    Table::Row row{a.name,
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
                   GamutWords::intent(reportA),
                   GamutWords::intent(reportB),
                   GamutWords::blackPointCompensated(reportA),
                   GamutWords::blackPointCompensated(reportB),
                   Table::colour(found.whiteFirst),
                   Table::colour(found.whiteSecond),
                   Table::colour(found.blackFirst),
                   Table::colour(found.blackSecond),
                   pair.seconds};
    return row + ProvenanceColumns::ofPair(a, b) + pair.ofChart.values;
}

/// The pairs to compare: all pairs of inputs that have a gamut, or only those with the first input.
std::vector<Pair> pairsOf(const GamutInputs& inputs, bool all)
{
    std::vector<Pair> pairs;
    for (qsizetype i = 0; i < (all ? inputs.all.size() : 1); ++i)
        for (qsizetype j = i + 1; j < inputs.all.size(); ++j)
            if (inputs.all[i].gamut && inputs.all[j].gamut)
                pairs.push_back({i, j});
    return pairs;
}

Table listOfPairs(const GamutInputs& inputs, const std::vector<Pair>& pairs)
{
    Table table = comparisonTable();
    for (const Pair& pair : pairs)
        table.rows.append(rowOf(inputs.all[pair.a], inputs.all[pair.b], pair));
    for (const QString& line : GamutInputs::kindLines(inputs.usable()))
        table.summary += QLatin1Char('\n') + line;
    for (const Pair& pair : pairs)
        for (const QString& sentence : pair.ofChart.sentences)
            table.summary += QLatin1Char('\n') + sentence;
    return table;
}

Table matrixOf(const GamutInputs& inputs, const std::vector<Pair>& pairs)
{
    QList<qsizetype> place; // of each input among those that have a gamut
    qsizetype count = 0;
    for (const Input& input : inputs.all)
        place.append(input.gamut ? count++ : -1);
    CoverageMatrix matrix(inputs.usable());
    for (const Pair& pair : pairs)
        matrix.set(place[pair.a], place[pair.b], pair.found);
    return matrix.table();
}

} // namespace

CompareCommand::CompareCommand(CLI::App& program)
    : Command(program, "compare", "Print the intersection, union and coverage of gamuts")
{
    declareInputs(parser(), m_names)->expected(-2);
    CLI::Option* pairs =
        parser().add_flag("--pairs", m_pairs, "Compare all pairs (default: the first input with each other)");
    parser()
        .add_flag("--matrix", m_matrix, "Print how much of each input each other one covers, as a matrix")
        ->excludes(pairs);
    declareSettings(parser(), m_settings);
    m_colours.declare(parser());
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
    Progress progress;
    const GamutInputs inputs = GamutInputs::compute(m_names, m_settings, m_colours.reading, progress);
    std::vector<Pair> pairs = pairsOf(inputs, m_matrix || m_pairs);
    const auto count = static_cast<qsizetype>(pairs.size());
    Jobs::run(
        count, [&](qsizetype i) { compare(pairs[static_cast<std::size_t>(i)], inputs); },
        [&](qsizetype done) {
            progress.show(static_cast<float>(done) / static_cast<float>(count),
                          QStringLiteral("comparisons"));
        });
    progress.clear();
    const bool allUsed = inputs.sayProblems();
    return m_report.print(m_matrix ? matrixOf(inputs, pairs) : listOfPairs(inputs, pairs), allUsed);
}
