// SPDX-License-Identifier: Apache-2.0
#include "SliceCommand.h"

#include "GamutInputs.h"
#include "commands/options/OptionValues.h"
#include "commands/options/ProfileOptions.h"
#include "commands/options/ReportOptions.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Fonts.h"
#include "commands/process/Say.h"
#include "commands/process/Steps.h"
#include "model/export/OutputFile.h"
#include "model/slices/SliceFile.h"
#include "model/slices/SliceReport.h"

#include <QtCore/QFileInfo>
#include <QtGui/QGuiApplication>

namespace {

const QStringList& formats()
{
    static const QStringList names{QStringLiteral("csv"), QStringLiteral("json"), QStringLiteral("svg"),
                                   QStringLiteral("png"), QStringLiteral("pdf")};
    return names;
}

/// The format for the suffix of @p output; CSV for standard output.
QString drawingFormat(const QString& output)
{
    if (output == QLatin1String("-"))
        return QStringLiteral("csv");
    QString suffix = QFileInfo(output).suffix().toLower();
    if (!formats().contains(suffix))
        throw CLI::ValidationError("--output", "'" + output.toStdString() +
                                                   "' has none of the suffixes .csv, .json, .svg, .png and "
                                                   ".pdf; use --format");
    return suffix;
}

} // namespace

SliceCommand::SliceCommand(CLI::App& program)
    : Command(program, "slice", "Cut gamuts at a lightness or a hue, or draw their gamut rings")
{
    declareInputs(parser(), m_names);
    declareSettings(parser(), m_settings);
    declareWhat();
    declareOutput();
    declareDrawing();
    parser().final_callback([this] { check(); });
    ReportOptions::endHelp(
        parser(),

        "Cuts are exact: closed rings whose last point connects to the first, with the gamut to the left.\n"
        "A cut at a hue is that of a half-plane, from the L* axis outwards.\n"
        "Gamut rings: the ring of a lightness encloses, in each hue sector, an area equal to the gamut's\n"
        "volume from black up to that lightness; the area of the outermost ring is the volume.\n"
        "With --fill colors, colours outside sRGB are shown by sRGB colours of the same CIELAB hue, as in "
        "the\n"
        "3D view. A point is a circle if it is inside the first gamut, and a cross if it is outside.");
}

void SliceCommand::check()
{
    if ((m_plane ? 1 : 0) + (m_rings ? 1 : 0) != 1)
        throw CLI::RequiredError("One of --lightness, --hue and --rings");
    if (m_format.isEmpty())
        m_format = drawingFormat(m_output);
    if (m_rings && m_fill == SliceDrawing::Fill::Colors)
        throw CLI::ValidationError("--fill", "gamut rings are areas without colours");
    if (m_rings && !m_pointFiles.isEmpty())
        throw CLI::ValidationError("--points", "gamut rings have no places for colours");
    if (!isDrawing() && !m_pointFiles.isEmpty())
        throw CLI::ValidationError("--points", "only drawings (svg, png, pdf) contain points");
}

void SliceCommand::declareWhat()
{
    const auto plane = [this](const char* name, const char* type, SlicePlane::Kind kind, double min,
                              double max, const char* help) {
        return parser()
            .add_option_function<std::string>(
                name,
                OptionValues::named(name,
                                    [this, kind, min, max](const std::string& word) {
                                        m_plane = SlicePlane{kind, OptionValues::real(word, min, max)};
                                    }),
                help)
            ->type_name(type);
    };
    CLI::Option* lightness =
        plane("--lightness", "L", SlicePlane::Lightness, 0.0, 100.0, "Cut at this L*, 0 to 100: a* and b*");
    CLI::Option* hue = plane("--hue", "H", SlicePlane::Hue, -360.0, 360.0,
                             "Cut at this hue angle, degrees from +a* towards +b*: C* and L*");
    hue->excludes(lightness);
    parser()
        .add_flag("--rings", m_rings, "Gamut rings, of lightness steps of 10")
        ->excludes(lightness)
        ->excludes(hue);
}

void SliceCommand::declareOutput()
{
    parser()
        .add_option_function<std::string>(
            "--format", [this](const std::string& word) { m_format = QString::fromStdString(word); },
            "csv, json, svg, png or pdf (default: the suffix of the output; csv for standard output)")
        ->transform(OptionValues::oneOf({"csv", "json", "svg", "png", "pdf"}))
        ->type_name("FORMAT");
    parser()
        .add_option_function<std::string>(
            "-o,--output", [this](const std::string& name) { m_output = OptionValues::file(name); },
            "Output file, written completely or not at all; - for standard output (the default)")
        ->type_name("FILE");
    parser()
        .add_option_function<std::string>(
            "--size",
            OptionValues::named("--size", [this](const std::string& w) { m_size = OptionValues::size(w); }),
            "Size of a drawing in pixels, 1/96 inch on a page (1000x750)")
        ->type_name("WxH");
    parser()
        .add_option_function<std::string>(
            "--color",
            OptionValues::named("--color",
                                [this](const std::string& w) { m_colors = OptionValues::colors(w); }),
            "A colour for each gamut in order, in a drawing")
        ->type_name("C[,C...]");
}

void SliceCommand::declareDrawing()
{
    parser()
        .add_option_function<std::string>(
            "--fill",
            [this](const std::string& word) {
                m_fill = word == "colors" ? SliceDrawing::Fill::Colors : SliceDrawing::Fill::Tint;
            },
            "Inside of the gamuts in a drawing: tint (the default), or colors, the colours of the cut "
            "themselves")
        ->transform(OptionValues::oneOf({"tint", "colors"}))
        ->type_name("WHAT");
    CLI::Option* points = parser()
                              .add_option_function<std::vector<std::string>>(
                                  "--points",
                                  [this](const std::vector<std::string>& words) {
                                      for (const std::string& word : words)
                                          m_pointFiles.append(OptionValues::file(word));
                                  },
                                  "Draw the points near the cut from this file: CSV, CGATS (.ti3, IT8), CxF, "
                                  "or the pixels of a "
                                  "picture. Can be repeated")
                              ->type_name("FILE")
                              ->expected(1)
                              ->take_all();
    parser()
        .add_option_function<std::string>("--points-within",
                                          OptionValues::named("--points-within",
                                                              [this](const std::string& word) {
                                                                  m_within =
                                                                      OptionValues::real(word, 0.0, 1000.0);
                                                              }),
                                          "Largest distance of these points from the cut, in dE76 (2.5)")
        ->type_name("D")
        ->needs(points);
    m_colours.declare(parser());
}

bool SliceCommand::isDrawing() const
{
    return m_format != QLatin1String("csv") && m_format != QLatin1String("json");
}

int SliceCommand::run(Arguments arguments)
{
    silenceLibraries();
    if (!isDrawing()) {
        const QCoreApplication application(arguments.count, arguments.values);
        return report();
    }
    // a drawing needs fonts but no display
    qputenv("QT_QPA_PLATFORM", "offscreen");
    loadFonts();
    const QGuiApplication application(arguments.count, arguments.values);
    return report();
}

int SliceCommand::report() const
{
    Progress progress;
    const GamutInputs inputs = GamutInputs::compute(m_names, m_settings, m_colours.reading, progress);
    progress.clear();
    const bool allUsed = inputs.sayProblems();
    const QList<GamutInputs::Input> usable = inputs.usable();
    if (usable.isEmpty())
        return BadInput; // nothing to write

    SliceReport slices(m_plane);
    for (qsizetype i = 0; i < inputs.all.size(); ++i)
        if (inputs.all[i].gamut)
            slices.add(inputs.all[i].name, *inputs.all[i].gamut,
                       m_colors.value(i, SliceDrawing::defaultColor(i)));
    slices.setFill(m_fill);
    const bool pointsRead = addPoints(slices, *usable.first().gamut);
    if (const auto problem = writeOutput(m_output, fileOf(slices))) {
        say(*problem);
        return BadOutput;
    }
    Steps::wrote(m_output);
    if (isDrawing()) // data state that there are no rings
        for (const Problem& miss : slices.misses())
            note(miss);
    return allUsed && pointsRead ? Done : BadInput;
}

/// @return whether all points were read
bool SliceCommand::addPoints(SliceReport& report, const KVGamut::GamutObject& gamut) const
{
    bool all = true;
    for (const QString& file : m_pointFiles) {
        const auto set = m_colours.read(file);
        all = all && set && !set->partial;
        if (set)
            report.addPoints(set->points, m_within, gamut);
    }
    return all;
}

QByteArray SliceCommand::fileOf(const SliceReport& report) const
{
    if (m_format == QLatin1String("csv"))
        return report.csv();
    if (m_format == QLatin1String("json"))
        return report.json();
    if (m_format == QLatin1String("svg"))
        return SliceFile::svg(report.drawing(), m_size);
    if (m_format == QLatin1String("pdf"))
        return SliceFile::pdf(report.drawing(), m_size);
    return SliceFile::png(report.drawing(), m_size);
}
