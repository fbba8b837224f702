// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"

#include <lcms2.h>

#include <cmath>
#include <initializer_list>

namespace {

/// Where the first of @p wanted that is there at all stands in @p names; -1: nowhere.
qsizetype firstOf(std::initializer_list<const char*> wanted, const QStringList& names)
{
    for (const char* name : wanted)
        for (qsizetype i = 0; i < names.size(); ++i)
            if (names[i].trimmed().compare(QLatin1String(name), Qt::CaseInsensitive) == 0)
                return i;
    return -1;
}

bool allFound(const std::array<qsizetype, 3>& columns)
{
    return columns[0] >= 0 && columns[1] >= 0 && columns[2] >= 0;
}

std::optional<float> numberOf(const QString& field)
{
    bool ok = false;
    const float value = field.toFloat(&ok);
    if (!ok || !std::isfinite(value))
        return {};
    return value;
}

} // namespace

std::optional<PointColumns> PointColumns::named(const QStringList& names)
{
    PointColumns columns;
    columns.values = {firstOf({"LAB_L", "L*", "L", "CIE_L"}, names),
                      firstOf({"LAB_A", "a*", "a", "CIE_A"}, names),
                      firstOf({"LAB_B", "b*", "b", "CIE_B"}, names)};
    if (!allFound(columns.values)) {
        columns.values = {firstOf({"XYZ_X", "X"}, names), firstOf({"XYZ_Y", "Y"}, names),
                          firstOf({"XYZ_Z", "Z"}, names)};
        columns.areXyz = true;
    }
    if (!allFound(columns.values))
        return {};
    columns.color = firstOf({"colour", "color"}, names);
    columns.name = firstOf({"SAMPLE_NAME", "name", "SAMPLE_ID", "id"}, names);
    return columns;
}

std::optional<ColouredPoint> PointColumns::pointOf(const QStringList& row) const
{
    QVector3D position;
    for (std::size_t i = 0; i < 3; ++i) {
        const auto value = numberOf(row.value(values[i]));
        if (!value)
            return {};
        position[static_cast<int>(i)] = *value;
    }
    const QString colorField = row.value(color);
    const QColor given = colorField.isEmpty() ? QColor() : QColor(colorField);
    if (!colorField.isEmpty() && !given.isValid())
        return {};
    return ColouredPoint{areXyz ? labOfXyz(position) : position, given, row.value(name)};
}

QVector3D labOfXyz(const QVector3D& xyz)
{
    constexpr double white = 100.0;
    const cmsCIEXYZ scaled{double(xyz.x()) / white, double(xyz.y()) / white, double(xyz.z()) / white};
    cmsCIELab lab;
    cmsXYZ2Lab(cmsD50_XYZ(), &lab, &scaled);
    return QVector3D(static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b));
}
