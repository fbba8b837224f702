// SPDX-License-Identifier: Apache-2.0
#include "PointColumns.h"

#include <lcms2.h>

#include <cmath>
#include <initializer_list>

namespace {

/// The index in @p names of the first entry of @p wanted that occurs there; -1 if none does.
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

std::optional<MeasuredPoint> PointColumns::pointOf(const QStringList& row) const
{
    std::array<float, 3> position{};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto value = numberOf(row.value(values[i]));
        if (!value)
            return {};
        position[i] = *value;
    }
    const QString colorField = row.value(color);
    const QColor given = colorField.isEmpty() ? QColor() : QColor(colorField);
    if (!colorField.isEmpty() && !given.isValid())
        return {};
    const KVGamut::LabPoint lab =
        areXyz ? labOfXyz(position) : KVGamut::LabPoint{position[0], position[1], position[2]};
    if (!isFinite(lab)) // of enormous XYZ
        return {};
    return MeasuredPoint{lab, given, row.value(name)};
}

bool isFinite(const KVGamut::LabPoint& lab)
{
    return std::isfinite(lab.L) && std::isfinite(lab.a) && std::isfinite(lab.b);
}

KVGamut::LabPoint labOfXyz(const std::array<float, 3>& xyz)
{
    constexpr double white = 100.0;
    const cmsCIEXYZ scaled{double(xyz[0]) / white, double(xyz[1]) / white, double(xyz[2]) / white};
    cmsCIELab lab;
    cmsXYZ2Lab(cmsD50_XYZ(), &lab, &scaled);
    return {static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)};
}
