// SPDX-License-Identifier: Apache-2.0
#include "PointInput.h"

#include "PicturePoints.h"
#include "PointFile.h"
#include "model/inputs/PictureProfile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace {

bool isPicture(const QString& name)
{
    constexpr qint64 markerSize = 16;
    QFile file(name);
    // reading from a pipe or a device might never end
    return QFileInfo(name).isFile() && file.open(QIODevice::ReadOnly) &&
           PictureProfile::isPicture(file.read(markerSize));
}

} // namespace

Result<PointSet> readPoints(const QString& file, const KVCompletionProtocolPtr& task)
{
    return isPicture(file) ? readPicturePoints(file, task) : readPointFile(file);
}
