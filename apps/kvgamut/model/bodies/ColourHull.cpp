// SPDX-License-Identifier: Apache-2.0
#include "ColourHull.h"

#include "model/problems/ProblemText.h"

#include <cmath>
#include <vector>

namespace {

Result<GivenGamut> hullOf(const std::vector<KVGamut::LabPoint>& colors, double uncertainty,
                          const QString& title, const QStringList& notes, KVCompletionProtocolPtr& task)
{
    GivenGamut hull{{}, title, notes};
    if (hull.gamut.initWithColors(colors, uncertainty, &task))
        return hull;
    const KVProblem problem = hull.gamut.problem().value_or(KVProblem());
    if (problem.code == KVProblemCode::TooSmall)
        return failure(ProblemCode::ColorsWithoutVolume, {QString::number(colors.size())});
    return failure(Problem(problem));
}

} // namespace

Result<GivenGamut> ColourHull::ofList(const PointSet& set, KVCompletionProtocolPtr task)
{
    std::vector<KVGamut::LabPoint> colors;
    colors.reserve(static_cast<std::size_t>(set.points.size()));
    for (const MeasuredPoint& point : set.points)
        colors.push_back(point.lab);
    QStringList notes{
        QStringLiteral("The surface is the convex hull of the listed colours: it bridges all hollows between "
                       "them, and lacks what is not in the list.")};
    const int inks = set.reading.inks;
    if (inks > 0)
        notes.append(
            QStringLiteral(
                "Warning: this is a chart of %1 inks. A surface is made from the device values of RGB "
                "and of up to four inks only, so that here they are ignored: the hull can be larger "
                "than the gamut of the device where that is hollow, and is smaller where the chart "
                "has no patch. A profile that is made from the chart has the surface.")
                .arg(inks));
    if (!set.reading.space.isEmpty())
        notes.append(QStringLiteral("The colours are %1 values of %2, converted with the %3 intent.")
                         .arg(set.reading.values, set.reading.space, set.reading.intent));
    for (const Problem& note : set.allNotes())
        notes.append(ProblemText::english(note));
    return hullOf(
        colors, 0.0,
        inks > 0 ? QStringLiteral("hull of %1 colours of a chart of %2 inks").arg(colors.size()).arg(inks)
                 : QStringLiteral("hull of %1 colours").arg(colors.size()),
        notes, task);
}

Result<GivenGamut> ColourHull::ofPhoto(const PhotoColors& photo, KVCompletionProtocolPtr task)
{
    std::vector<KVGamut::LabPoint> colors;
    colors.reserve(photo.cells.size());
    for (const LabCells::Cell& cell : photo.cells)
        colors.push_back(cell.lab);
    QStringList notes{
        QStringLiteral("The surface is the convex hull of the absolute colours of all pixels: it bridges all "
                       "hollows between them. They are counted in cells of %1 dE.")
            .arg(double(photo.cellEdge))};
    for (const Problem& note : photo.notes)
        notes.append(ProblemText::english(note));
    const QString title =
        QStringLiteral("hull of %1 colours of the %2 pixels of a photo").arg(colors.size()).arg(photo.pixels);
    return hullOf(colors, std::sqrt(3.0) * double(photo.cellEdge), title, notes, task);
}
