// SPDX-License-Identifier: Apache-2.0
#include "PointFile.h"

#include "PointReaders.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QFile>

namespace {

/// Whether a line of @p text begins with @p keyword.
bool hasLine(const QByteArray& text, const QByteArray& keyword)
{
    return text.startsWith(keyword) || text.contains('\n' + keyword) || text.contains('\r' + keyword);
}

PointFile readKnown(const QByteArray& text)
{
    static const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");
    const QByteArray start = text.startsWith(byteOrderMark) ? text.mid(3, 100) : text.left(100);
    if (start.trimmed().startsWith('<'))
        return PointReaders::readCxf(text);
    if (hasLine(text, QByteArrayLiteral("BEGIN_DATA")))
        return PointReaders::readCgats(text);
    return PointReaders::readCsv(text);
}

} // namespace

QColor ColouredPoint::shownColor() const
{
    if (color.isValid())
        return color;
    const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB({lab.x(), lab.y(), lab.z()});
    return QColor(static_cast<int>(rgb.value(0)), static_cast<int>(rgb.value(1)),
                  static_cast<int>(rgb.value(2)));
}

PointFile PointFile::read(const QString& name)
{
    PointFile result;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        result.problem = QStringLiteral("%1: %2").arg(name, file.errorString());
        return result;
    }
    const QByteArray text = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        result.problem = QStringLiteral("%1: %2").arg(name, file.errorString());
        return result;
    }
    result = readKnown(text);
    if (result.problem.isEmpty() && result.points.isEmpty())
        result.problem = QStringLiteral(": no positions in it");
    if (!result.problem.isEmpty()) {
        result.points.clear();
        result.problem.prepend(name);
    }
    if (!result.note.isEmpty())
        result.note.prepend(name);
    return result;
}
