// SPDX-License-Identifier: Apache-2.0
#include "ItemOptions.h"

#include "OptionValues.h"
#include "model/points/Lab.h"
#include "model/points/ZoneMarker.h"

#include <map>
#include <utility>

namespace {

using Positions = QList<KVGamut3DViewer::ColoredPosition>;

/// Reads the file @p name, if not empty, and calls @p use with its positions. Prints why if that fails.
/// @return whether everything was read
template <typename Use>
bool withPositions(const QString& name, const PointColourOptions& colours, Use use)
{
    if (name.isEmpty())
        return true;
    const auto file = colours.read(name, false);
    if (!file)
        return false;
    Positions positions;
    for (const MeasuredPoint& point : file->points)
        positions.append({point.shownColor(), vectorOf(point.lab)});
    use(positions);
    return !file->partial;
}

} // namespace

void ItemOptions::declare(CLI::App& parser)
{
    static const std::map<std::string, KVGamut3DViewer::MarkerType> types{
        {"sphere", KVGamut3DViewer::Sphere},
        {"cube", KVGamut3DViewer::BracketedCube},
        {"star", KVGamut3DViewer::Star},
    };
    const auto file = [&parser](const char* name, QString& target, const char* help) {
        return parser
            .add_option_function<std::string>(
                name, [&target](const std::string& word) { target = OptionValues::file(word); }, help)
            ->type_name("FILE");
    };
    const auto size = [&parser](const char* name, float& target, const char* help) {
        return parser
            .add_option_function<std::string>(name,
                                              OptionValues::named(name,
                                                                  [&target](const std::string& word) {
                                                                      target = OptionValues::number(
                                                                          word, 0.1f, 100.0f);
                                                                  }),
                                              help)
            ->type_name("X");
    };
    CLI::Option* markersOption =
        file("--markers", markers,
             "Markers at the colours in this file: CSV with named columns, CGATS, CxF or a palette");
    parser
        .add_option_function<std::string>(
            "--marker-type", [this](const std::string& word) { markerType = types.at(word); },
            "sphere (the default), cube or star")
        ->transform(OptionValues::oneOf(types))
        ->type_name("TYPE")
        ->needs(markersOption);
    size("--marker-size", markerSize, "Diameter of the markers (6)")->needs(markersOption);
    CLI::Option* pointsOption = file("--points", points, "Points at the colours in this file");
    size("--point-size", pointSize, "Diameter of the points (4)")->needs(pointsOption);
    parser
        .add_flag("--point-zones", zones,
                  "Points by their side of the first gamut's surface: green spheres inside, yellow cubes at "
                  "the edge, "
                  "red stars outside")
        ->needs(pointsOption);
    parser
        .add_option_function<std::string>(
            "--point-colors", [this](const std::string& word) { distances = word == "distance"; },
            "own (the default); distance: by how far they lie outside the gamut of --loss, or else outside "
            "the "
            "first gamut, with a scale bar: spheres inside, cubes up to --loss-threshold, stars farther "
            "outside")
        ->transform(OptionValues::oneOf({"own", "distance"}))
        ->type_name("WHAT")
        ->needs(pointsOption)
        ->excludes("--point-zones");
    parser
        .add_option_function<std::string>("--point-tolerance",
                                          OptionValues::named("--point-tolerance",
                                                              [this](const std::string& word) {
                                                                  tolerance = OptionValues::number(word, 0.0f,
                                                                                                   100.0f);
                                                              }),
                                          "Distance from the surface, dE76, that counts as the edge (1)")
        ->type_name("X")
        ->needs("--point-zones");
    CLI::Option* lineOption = file("--line", line, "A line through the colours in this file, in order");
    size("--line-width", lineWidth, "Width of the line (2)")->needs(lineOption);
    colours.declare(parser);
}

bool ItemOptions::addTo(KVGamut3DViewer& viewer) const
{
    bool all = withPositions(markers, colours, [&](const Positions& positions) {
        viewer.addMarkerSet(QStringLiteral("markers"), markerType, positions, markerSize, markerAmbient);
    });
    all &= withPositions(zones || distances ? QString() : points, colours, [&](const Positions& positions) {
        viewer.setPointSize(pointSize);
        viewer.addPointSet(QStringLiteral("points"), positions);
    });
    all &= withPositions(line, colours, [&](const Positions& positions) {
        QList<std::pair<KVGamut3DViewer::ColoredPosition, KVGamut3DViewer::ColoredPosition>> segments;
        for (qsizetype i = 0; i + 1 < positions.size(); ++i)
            segments.append({positions[i], positions[i + 1]});
        // the width takes effect when a set is filled, and only an existing set has one
        viewer.addSegmentSet(QStringLiteral("line"), segments);
        viewer.setSegmentSetWidth(QStringLiteral("line"), lineWidth);
        viewer.addSegmentSet(QStringLiteral("line"), segments);
    });
    return all;
}

bool ItemOptions::addZones(KVGamut3DViewer& viewer, const KVGamut::GamutObject& gamut) const
{
    return withPositions(zones ? points : QString(), colours, [&](const Positions& positions) {
        QMap<Side, Positions> byZone;
        for (const auto& [color, position] : positions) {
            const KVGamut::LabPoint lab = labOf(position);
            const Side side = sideOf(gamut.nearest(&lab.L).distance, tolerance);
            byZone[side].append({sideColor(side), position});
        }
        addShapes(viewer, byZone);
    });
}

std::vector<KVGamut::LabPoint> ItemOptions::pointsToMeasure(bool& allRead) const
{
    std::vector<KVGamut::LabPoint> found;
    allRead &= withPositions(distances ? points : QString(), colours, [&found](const Positions& positions) {
        for (const auto& [color, position] : positions)
            found.push_back(labOf(position));
    });
    return found;
}

void ItemOptions::addMeasured(KVGamut3DViewer& viewer, const std::vector<KVGamut::LabPoint>& measured,
                              const std::vector<float>& losses, const LossScale& scale,
                              const QColor& edge) const
{
    QMap<Side, Positions> byZone;
    for (std::size_t i = 0; i < measured.size(); ++i) {
        const Side beyond = losses[i] > scale.threshold ? Side::Outside : Side::Edge;
        const Side side = losses[i] > 0.0f ? beyond : Side::Inside;
        byZone[side].append({side == Side::Edge ? edge : scale.colorOf(losses[i]), vectorOf(measured[i])});
    }
    addShapes(viewer, byZone);
}

void ItemOptions::addShapes(KVGamut3DViewer& viewer, const QMap<Side, Positions>& byZone) const
{
    constexpr std::pair<Side, const char*> sets[] = {{Side::Inside, "points inside"},
                                                     {Side::Edge, "points at the edge"},
                                                     {Side::Outside, "points outside"}};
    if (byZone.isEmpty())
        return;
    for (const auto& [side, set] : sets) {
        const ZoneMarker marker = ZoneMarker::of(side);
        viewer.addMarkerSet(QString::fromLatin1(set), marker.type, byZone.value(side),
                            marker.scale * pointSize, markerAmbient);
    }
}
