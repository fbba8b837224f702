// SPDX-License-Identifier: Apache-2.0
#include "ChartPair.h"

#include "model/charts/ChartComparison.h"
#include "model/problems/ProblemText.h"
#include "model/reports/GamutWords.h"
#include "model/text/SafeText.h"

#include <algorithm>
#include <cmath>

namespace {

using Input = GamutInputs::Input;

constexpr qsizetype columnCount = 12;

/// "L* 50.0, C* 20.0, h 270"
QString placeOf(const KVGamut::LabPoint& lab)
{
    const double a = double(lab.a), b = double(lab.b);
    const double hue = std::fmod(std::atan2(b, a) * 180.0 / M_PI + 360.0, 360.0);
    return QStringLiteral("L* %1, C* %2, h %3")
        .arg(double(lab.L), 0, 'f', 1)
        .arg(std::hypot(a, b), 0, 'f', 1)
        .arg(hue, 0, 'f', 0);
}

QString beyond(const QString& who, double volume, const Farthest& farthest)
{
    return QStringLiteral("%1 by a volume of %2, and by up to %3 dE76, at %4.")
        .arg(who)
        .arg(volume, 0, 'f', 0)
        .arg(double(farthest.distance), 0, 'f', 1)
        .arg(placeOf(farthest.place));
}

/// The largest distances in sectors of 30 degrees of hue.
QVariant byHue(const KVGamut::GamutObject& gamut, const KVGamut::GamutObject& outside)
{
    QVariantList distances;
    for (const Farthest& sector : Farthest::byHue(gamut, outside))
        distances.append(double(sector.distance));
    return distances;
}

QString hueSentence(const QVariant& distances, const QString& which)
{
    QStringList words;
    for (const QVariant& distance : distances.toList())
        words.append(QString::number(distance.toDouble(), 'f', 1));
    return QStringLiteral("By hue, in twelve sectors of 30 degrees from 0 on, %1: %2.")
        .arg(which, words.join(QStringLiteral(", ")));
}

QString patchSentence(const Input& profile, const Result<ChartComparison>& patches)
{
    const QString name = SafeText::shown(profile.name, SafeText::maxPathLength);
    if (!patches)
        return QStringLiteral("The patches cannot be predicted: %1.")
            .arg(ProblemText::english(patches.error()));
    return QStringLiteral(
               "%1 predicts the patches with a CIEDE2000 of %2 (mean), %3 (95 %) and %4 (largest, at %5).")
        .arg(name)
        .arg(patches->mean, 0, 'f', 2)
        .arg(patches->p95, 0, 'f', 2)
        .arg(patches->max, 0, 'f', 2)
        .arg(placeOf(patches->worst));
}

} // namespace

void ChartPair::addColumns(Table& table)
{
    using Kind = Table::Kind;
    table.add("measured_more", "", Kind::Number, GamutWords::volumeDecimals);
    table.add("measured_more_distance", "", Kind::Number, 3);
    table.add("measured_more_at", "", Kind::Colour, 3);
    table.add("profile_more", "", Kind::Number, GamutWords::volumeDecimals);
    table.add("profile_more_distance", "", Kind::Number, 3);
    table.add("profile_more_at", "", Kind::Colour, 3);
    table.add("patch_de00_mean", "", Kind::Number, 3);
    table.add("patch_de00_p95", "", Kind::Number, 3);
    table.add("patch_de00_max", "", Kind::Number, 3);
    table.add("patch_de00_max_at", "", Kind::Colour, 3);
    table.add("measured_more_by_hue", "", Kind::Numbers, 3);
    table.add("profile_more_by_hue", "", Kind::Numbers, 3);
}

ChartPair::Answer ChartPair::of(const Input& a, const Input& b, double intersection)
{
    const bool isPair = a.source->chart().has_value() != b.source->chart().has_value();
    const Input& chart = a.source->chart() ? a : b;
    const Input& profile = a.source->chart() ? b : a;
    if (!isPair || !profile.source->profile())
        return {QVariantList(columnCount), {}};
    const double measuredMore = std::max(0.0, chart.gamut->report().volume - intersection);
    const double profileMore = std::max(0.0, profile.gamut->report().volume - intersection);
    const Farthest measured = Farthest::of(*chart.gamut, *profile.gamut);
    const Farthest claimed = Farthest::of(*profile.gamut, *chart.gamut);
    const auto patches =
        ChartComparison::of(*chart.source->measured(), profile.source->profile(), profile.name);
    const auto ofPatches = [&patches](const QVariant& value) { return patches ? value : QVariant(); };
    const ChartComparison found = patches.value_or(ChartComparison());
    const QVariant claimedByHue = byHue(*profile.gamut, *chart.gamut);
    const QVariant measuredByHue = byHue(*chart.gamut, *profile.gamut);
    return {{measuredMore, measured.distance, Table::colour(measured.place), profileMore, claimed.distance,
             Table::colour(claimed.place), ofPatches(found.mean), ofPatches(found.p95), ofPatches(found.max),
             ofPatches(Table::colour(found.worst)), measuredByHue, claimedByHue},
            {beyond(QStringLiteral("The profile claims more than was measured"), profileMore, claimed),
             beyond(QStringLiteral("The measured gamut exceeds the profile's"), measuredMore, measured),
             hueSentence(claimedByHue, QStringLiteral("the profile claims more by up to")),
             hueSentence(measuredByHue, QStringLiteral("more was measured by up to")),
             patchSentence(profile, patches)}};
}
