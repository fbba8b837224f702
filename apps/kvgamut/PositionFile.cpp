#include "PositionFile.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTextStream>

#include <cmath>
#include <optional>

namespace {

QColor ownColor(const QVector3D& lab)
{
    const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB({lab.x(), lab.y(), lab.z()});
    return QColor(static_cast<int>(rgb.value(0)), static_cast<int>(rgb.value(1)),
                  static_cast<int>(rgb.value(2)));
}

std::optional<std::pair<QColor, QVector3D>> positionOf(const QStringList& fields)
{
    if (fields.size() < 3 || fields.size() > 4)
        return {};
    QVector3D lab;
    for (int i = 0; i < 3; ++i) {
        bool ok = false;
        lab[i] = fields[i].toFloat(&ok);
        if (!ok || !std::isfinite(lab[i]))
            return {};
    }
    const QColor color = fields.size() == 4 ? QColor(fields[3]) : ownColor(lab);
    if (!color.isValid())
        return {};
    return std::pair(color, lab);
}

} // namespace

PositionFile PositionFile::read(const QString& name)
{
    PositionFile result;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        result.problem = QStringLiteral("%1: %2").arg(name, file.errorString());
        return result;
    }
    static const QRegularExpression separator(QStringLiteral("[,;\\s]+"));
    QTextStream lines(&file);
    for (int number = 1; !lines.atEnd(); ++number) {
        const QString line = lines.readLine().trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const QStringList fields = line.split(separator, Qt::SkipEmptyParts);
        if (const auto position = positionOf(fields)) {
            result.positions.append(*position);
            continue;
        }
        bool startsWithNumber = false;
        fields.value(0).toFloat(&startsWithNumber);
        if (result.positions.isEmpty() && !startsWithNumber)
            continue; // the names of the columns
        result.problem =
            QStringLiteral("%1, line %2: expected L*, a*, b* and perhaps a colour").arg(name).arg(number);
        result.positions.clear();
        return result;
    }
    if (result.positions.isEmpty())
        result.problem = QStringLiteral("%1: no positions in it").arg(name);
    return result;
}
