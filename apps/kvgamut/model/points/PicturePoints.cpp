// SPDX-License-Identifier: Apache-2.0
#include "PicturePoints.h"

#include <array>
#include <cmath>
#include <map>

namespace {

constexpr float cellEdge = 4.0f;
constexpr qsizetype maxDrawnPoints = 1200; // each is drawn as a small sphere

} // namespace

QList<MeasuredPoint> gatherColours(std::span<const LabCells::Cell> colours, float edge, qsizetype maxPoints)
{
    struct Cell
    {
        std::array<double, 3> sum{};
        double count = 0;
    };
    std::map<std::array<int, 3>, Cell> cells;
    const auto indexOf = [edge](float value) { return static_cast<int>(std::floor(value / edge)); };
    double total = 0;
    for (const auto& [lab, count] : colours) {
        Cell& cell = cells[{indexOf(lab.L), indexOf(lab.a), indexOf(lab.b)}];
        const double weight = count;
        cell.sum[0] += weight * static_cast<double>(lab.L);
        cell.sum[1] += weight * static_cast<double>(lab.a);
        cell.sum[2] += weight * static_cast<double>(lab.b);
        cell.count += weight;
        total += weight;
    }
    if (static_cast<qsizetype>(cells.size()) > maxPoints)
        return gatherColours(colours, edge * 1.25f, maxPoints);

    QList<MeasuredPoint> points;
    for (const auto& [place, cell] : cells) {
        const KVGamut::LabPoint mean{static_cast<float>(cell.sum[0] / cell.count),
                                     static_cast<float>(cell.sum[1] / cell.count),
                                     static_cast<float>(cell.sum[2] / cell.count)};
        points.append({mean, QColor(), QString(), cell.count / total});
    }
    return points;
}

Result<PointSet> pointsOfPicture(const QByteArray& content, const KVCompletionProtocolPtr& task)
{
    Result<PhotoFile> photo = PhotoFile::ofContent(content);
    if (!photo)
        return failure(photo.error());
    Result<PhotoColors> colors = photoColors(*photo, {.defaultProfile = {}, .absolute = true}, task);
    if (!colors)
        return failure(colors.error());
    PointSet set;
    set.points = gatherColours(colors->cells, cellEdge, maxDrawnPoints);
    if (!colors->notes.isEmpty())
        set.note = colors->notes.first();
    set.photo = std::make_shared<const PhotoColors>(*std::move(colors));
    return set;
}
