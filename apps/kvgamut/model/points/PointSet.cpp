// SPDX-License-Identifier: Apache-2.0
#include "PointSet.h"

#include "PicturePoints.h"
#include "PointFile.h"
#include "model/inputs/PictureProfile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cmath>

namespace {

bool isPicture(const QString& name)
{
    constexpr qint64 enough = 16;
    QFile file(name);
    // a pipe or a device may never come to its end
    return QFileInfo(name).isFile() && file.open(QIODevice::ReadOnly) &&
           PictureProfile::isPicture(file.read(enough));
}

} // namespace

PointSet PointSet::read(const QString& file)
{
    if (isPicture(file))
        return readPicturePoints(file);
    PointSet set;
    set.file = file;
    const PointFile positions = PointFile::read(file);
    set.problem = positions.problem;
    set.note = positions.note;
    set.partial = !positions.note.isEmpty();
    for (const ColouredPoint& point : positions.points)
        set.points.append({point.name, point.lab, point.shownColor(), 1.0});
    return set;
}

Side sideOf(float distance, float tolerance)
{
    if (std::fabs(distance) <= tolerance)
        return Side::Edge;
    return distance < 0.0f ? Side::Inside : Side::Outside;
}
