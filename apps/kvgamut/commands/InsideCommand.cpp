// SPDX-License-Identifier: Apache-2.0
#include "InsideCommand.h"

#include "GamutInputs.h"
#include "ProvenanceColumns.h"
#include "commands/options/OptionValues.h"
#include "commands/options/ProfileOptions.h"
#include "model/jobs/Jobs.h"
#include "model/reports/GamutWords.h"
#include "model/text/ListOf.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

using Kind = Table::Kind;

constexpr float maxTolerance = 1000.0f;

/// For each point the nearest point of the surface, and the distance, which is negative (also -0) inside.
using Answers = std::vector<KVGamut::Nearest>;

bool isInside(const KVGamut::Nearest& answer)
{
    return std::signbit(answer.distance);
}

Answers answersOf(const KVGamut::GamutObject& gamut, const QList<MeasuredPoint>& points, Progress& progress)
{
    constexpr qsizetype pointsInPart = 1024;
    Answers answers(static_cast<std::size_t>(points.size()));
    const auto answer = [&](qsizetype first, qsizetype end) {
        for (qsizetype i = first; i < end; ++i) {
            const KVGamut::LabPoint& lab = points[i].lab;
            answers[static_cast<std::size_t>(i)] = gamut.nearest(std::array{lab.L, lab.a, lab.b}.data());
        }
    };
    Jobs::runInParts(points.size(), pointsInPart, answer,
                     [&progress](float share) { progress.show(share, QStringLiteral("points")); });
    return answers;
}

/// The zone of each point: inside, outside, or "edge" within the tolerance of the surface.
struct Zones
{
    double tolerance;
    int in = 0, edge = 0, out = 0;

    bool isEdge(const KVGamut::Nearest& answer) const
    {
        return std::abs(static_cast<double>(answer.distance)) <= tolerance;
    }
    QString of(const KVGamut::Nearest& answer) const
    {
        if (isEdge(answer))
            return QStringLiteral("edge");
        return isInside(answer) ? QStringLiteral("in") : QStringLiteral("out");
    }
    void count(const KVGamut::Nearest& answer) { ++(isEdge(answer) ? edge : isInside(answer) ? in : out); }
    QString summary() const { return QStringLiteral("in %1, edge %2, out %3").arg(in).arg(edge).arg(out); }
};

Table pointTable(bool withNames, bool withWeights, bool withZones)
{
    Table table;
    table.add("profile", "", Kind::Word);
    table.add("intent", "", Kind::Word);
    table.add("index", "#", Kind::Whole);
    table.add("name", withNames ? "name" : "", Kind::Word);
    table.add("lab", "L* a* b*", Kind::Colour, 4, 2);
    table.add("weight", withWeights ? "weight" : "", Kind::Number, 6, 4);
    table.add("inside", "inside", Kind::Flag);
    table.add("distance", "distance", Kind::Number, 4, 2);
    table.add("nearest", "nearest L* a* b*", Kind::Colour, 4, 2);
    if (withZones) {
        table.add("zone", "zone", Kind::Word);
        table.add("count_in", "", Kind::Whole);
        table.add("count_edge", "", Kind::Whole);
        table.add("count_out", "", Kind::Whole);
    }
    return table;
}

/// Adds columns that say in which way the colours of a file were read.
void addReading(Table& table, const PointReading& reading)
{
    if (reading.values.isEmpty()) // given on the command line, or the pixels of a picture
        return;
    for (const auto& [key, word] :
         {std::pair{"read_as", reading.values}, std::pair{"read_space", reading.space},
          std::pair{"read_intent", reading.intent}, std::pair{"read_white", reading.white},
          std::pair{"read_observer", reading.observer}}) {
        table.add(key, "", Kind::Word);
        table.columns.last().same = word.isEmpty() ? QVariant() : QVariant(word);
    }
}

bool areNamed(const QList<MeasuredPoint>& points)
{
    return std::any_of(points.cbegin(), points.cend(),
                       [](const MeasuredPoint& point) { return !point.name.isEmpty(); });
}

bool areWeighted(const QList<MeasuredPoint>& points)
{
    return std::any_of(points.cbegin(), points.cend(),
                       [](const MeasuredPoint& point) { return point.weight != 1.0; });
}

/// The report. Its rows are made from @p points and @p answers when they are printed.
Table tableOf(const GamutInputs::Input& input, const QList<MeasuredPoint>& points, const Answers& answers,
              std::optional<double> tolerance, const PointReading& reading)
{
    Table table = pointTable(areNamed(points), areWeighted(points), tolerance.has_value());
    table.setSame("profile", input.name);
    if (input.gamut)
        table.setSame("intent", GamutWords::intent(input.gamut->report()));
    addReading(table, reading);
    ProvenanceColumns::addSame(table, input);
    Zones zones{tolerance.value_or(0.0)};
    for (const KVGamut::Nearest& answer : answers)
        zones.count(answer);
    QStringList lines = GamutInputs::kindLines({input});
    if (tolerance)
        lines.append(zones.summary());
    table.summary = lines.join(QLatin1Char('\n'));
    const auto row = [&points, &answers, tolerance, zones](qsizetype i) {
        const MeasuredPoint& point = points.at(i);
        const KVGamut::Nearest& answer = answers[static_cast<std::size_t>(i)];
        Table::Row values{
            QVariant(), // profile and intent are the same for all
            QVariant(),   static_cast<int>(i) + 1, point.name,      Table::colour(point.lab),
            point.weight, isInside(answer),        answer.distance, Table::colour(answer.point)};
        if (tolerance) {
            values.append(zones.of(answer));
            values.append({zones.in, zones.edge, zones.out});
        }
        return values;
    };
    table.made = {static_cast<qsizetype>(answers.size()), row};
    return table;
}

} // namespace

InsideCommand::InsideCommand(CLI::App& program)
    : Command(program, "inside", "Print which colours lie in a gamut, and how far from its surface")
{
    parser()
        .add_option_function<std::string>(
            "PROFILE", [this](const std::string& word) { m_name = OptionValues::file(word); },
            inputDescription())
        ->required()
        ->type_name("");
    CLI::Option* numbers =
        parser()
            .add_option_function<std::vector<std::string>>(
                "L-a-b", [this](const std::vector<std::string>& words) { takeNumbers(words); },
                "Colours, three numbers each: L* a* b* (D50)")
            ->type_name("");
    CLI::Option* file =
        parser()
            .add_option_function<std::string>(
                "--points", [this](const std::string& word) { m_pointFile = OptionValues::file(word); },
                "Read the colours from a file: CSV with named columns, CGATS (.ti3, IT8), CxF, "
                "a palette (ASE, ACB, GPL), or the pixels of a picture")
            ->type_name("FILE")
            ->excludes(numbers);
    m_colours.declare(parser());
    parser()
        .add_option_function<std::string>(
            "--tolerance",
            [this](const std::string& word) {
                m_tolerance = static_cast<double>(OptionValues::number(word, 0.0f, maxTolerance));
            },
            "Also count the colours inside, on the edge (within T of the surface) and outside")
        ->type_name("T");
    declareSettings(parser(), m_settings);
    m_report.declare(parser());
    parser().final_callback([numbers, file] {
        if (numbers->empty() && file->empty())
            throw CLI::ValidationError("colours are missing: three numbers each, or --points FILE");
    });
    ReportOptions::endHelp(
        parser(), "Distances to the surface are CIE 1976 colour differences of CIELAB (D50), negative "
                  "inside;\nnearest is the point of the surface at that distance.");
}

void InsideCommand::takeNumbers(const std::vector<std::string>& words)
{
    constexpr float max = 100000.0f;
    if (words.size() % 3 != 0)
        throw CLI::ValidationError("a colour has three numbers, L* a* b*, and " +
                                   std::to_string(words.size()) + " are given");
    for (std::size_t i = 0; i < words.size(); i += 3) {
        const auto value = [&](std::size_t k) { return OptionValues::number(words[i + k], -max, max); };
        m_points.append({{value(0), value(1), value(2)}, QColor(), QString()});
    }
}

PointSet InsideCommand::points(bool& allRead) const
{
    PointSet given;
    given.points = m_points;
    if (m_pointFile.isEmpty())
        return given;
    const std::optional<PointSet> file = m_colours.read(m_pointFile);
    allRead = file && !file->partial;
    return file.value_or(given);
}

int InsideCommand::run(Arguments arguments)
{
    const QCoreApplication application(arguments.count, arguments.values);
    bool allRead = true;
    const PointSet asked = points(allRead);
    Progress progress;
    const GamutInputs inputs = GamutInputs::compute(listOf(m_name), m_settings, m_colours.reading, progress);
    Answers answers;
    const Result<KVGamut::GamutObject>& gamut = inputs.all[0].gamut;
    if (gamut)
        answers = answersOf(*gamut, asked.points, progress);
    progress.clear();
    allRead = inputs.sayProblems() && allRead;
    return m_report.print(tableOf(inputs.all[0], asked.points, answers, m_tolerance, asked.reading), allRead);
}
