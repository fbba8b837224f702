// SPDX-License-Identifier: Apache-2.0
#include "VolumeCommand.h"

#include "ChartColumns.h"
#include "ConversionColumns.h"
#include "GamutInputs.h"
#include "ProvenanceColumns.h"
#include "commands/options/OptionValues.h"
#include "commands/options/ProfileOptions.h"
#include "model/jobs/Jobs.h"
#include "model/reports/GamutWords.h"
#include "model/text/SafeText.h"

#include <QtCore/QCoreApplication>

#include <map>
#include <string>

namespace {

using Kind = Table::Kind;

const std::map<std::string, KVGamut::Construction>& constructions()
{
    static const std::map<std::string, KVGamut::Construction> words{
        {"accurate", KVGamut::Construction::Accurate},
        {"11-grid", KVGamut::Construction::Grid11Falling},
        {"11-grid-rising", KVGamut::Construction::Grid11Rising},
    };
    return words;
}

void declareMethod(CLI::App& parser, KVGamut::Construction& construction)
{
    parser
        .add_option_function<std::string>(
            "--method", [&construction](const std::string& word) { construction = constructions().at(word); },
            "accurate (the default), or as in the display standard: 11-grid, or 11-grid-rising with the "
            "other diagonals")
        ->transform(OptionValues::oneOf(constructions()))
        ->type_name("METHOD")
        ->excludes("--grid");
}

/// As in the option --method for the grids, otherwise as the engine chose it.
QString methodOf(const GamutInputs::Input& input, KVGamut::Construction construction)
{
    if (construction != KVGamut::Construction::Accurate && input.source->profile())
        for (const auto& [word, value] : constructions())
            if (value == construction)
                return QString::fromStdString(word);
    return GamutWords::method(input.gamut->method());
}

Table volumeTable()
{
    Table table;
    table.add("profile", "profile", Kind::Word);
    table.add("volume", "volume", Kind::Number, GamutWords::volumeDecimals);
    table.add("uncertainty", "±", Kind::Number, GamutWords::volumeDecimals);
    table.add("surface_volume", "", Kind::Number, GamutWords::volumeDecimals);
    table.add("faces", "faces", Kind::Whole);
    table.add("method", "method", Kind::Word);
    table.add("intent", "intent", Kind::Word);
    table.add("bpc", "bpc", Kind::Flag);
    table.add("grid", "grid", Kind::Whole);
    table.add("channels", "", Kind::Whole);
    table.add("fold_share", "", Kind::Number, 6);
    table.add("white", "white", Kind::Colour, 3, 1);
    table.add("black", "black", Kind::Colour, 3, 1);
    table.add("saved", "", Kind::Flag);
    table.add("seconds", "seconds", Kind::Number, 4, 3);
    ConversionColumns::add(table, ConversionColumns::Details::Hidden);
    ProvenanceColumns::add(table);
    table.add("kind", "", Kind::Word);
    ChartColumns::add(table, ConversionColumns::Details::Hidden);
    return table;
}

Table::Row rowOf(const GamutInputs::Input& input, KVGamut::Construction construction)
{
    const KVGamut::Report report = input.gamut->report();
    Table::Row row{input.name,
                   report.volume,
                   report.volumeUncertainty,
                   report.surfaceVolume,
                   report.faceCount,
                   methodOf(input, construction),
                   GamutWords::intent(report),
                   GamutWords::blackPointCompensated(report),
                   report.gridPoints,
                   report.channels,
                   report.foldShare,
                   Table::colour(report.white),
                   Table::colour(report.black),
                   input.isSaved(),
                   report.seconds};
    row += ConversionColumns::of(report, input.source->notes()) + ProvenanceColumns::of(input);
    row.append(input.source->kind());
    row += ChartColumns::of(input.source->chart());
    return row;
}

/// A line for each note about a gamut.
QString notesOf(const QList<GamutInputs::Input>& inputs)
{
    QStringList lines;
    for (const GamutInputs::Input& input : inputs)
        for (const QString& note : input.source->notes() + GamutWords::notes(input.gamut->report()))
            lines.append(
                QStringLiteral("%1: %2").arg(SafeText::shown(input.name, SafeText::maxPathLength), note));
    return lines.join(QLatin1Char('\n'));
}

} // namespace

VolumeCommand::VolumeCommand(CLI::App& program)
    : Command(program, "volume", "Print the volumes of gamuts and their uncertainty")
{
    declareInputs(parser(), m_names);
    declareSettings(parser(), m_settings);
    m_colours.declare(parser());
    declareMethod(parser(), m_construction);
    m_report.declare(parser());
    ReportOptions::endHelp(
        parser(), "Volumes are in cubed CIE 1976 colour differences of CIELAB (D50); the device's true "
                  "volume\nlies within volume +- uncertainty.");
}

int VolumeCommand::run(Arguments arguments)
{
    const QCoreApplication application(arguments.count, arguments.values);
    // lines can be printed as they come, so that many inputs need no more memory than a few
    const qsizetype inputsAtOnce = 2 * Jobs::maxThreads();
    const bool isStream = m_report.format == Table::Format::JsonLines;
    OutputStream output(m_report.output);
    bool allUsed = true;
    for (qsizetype i = 0; i < m_names.size(); i += inputsAtOnce) {
        Progress progress;
        const GamutInputs inputs =
            GamutInputs::compute(isStream ? m_names.mid(i, inputsAtOnce) : m_names, m_settings,
                                 m_colours.reading, progress, m_construction);
        progress.clear();
        allUsed = inputs.sayProblems() && allUsed;
        Table table = volumeTable();
        for (const GamutInputs::Input& input : inputs.usable())
            table.rows.append(rowOf(input, m_construction));
        table.summary = notesOf(inputs.usable());
        if (!m_report.printPart(table, output) || !isStream)
            break;
    }
    return m_report.finish(output, allUsed);
}
