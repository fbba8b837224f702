// SPDX-License-Identifier: Apache-2.0
#include "Inspector.h"

#include "model/points/Lab.h"

#include "desktop/language/ShownWords.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

#include <cmath>

namespace {

bool isSeen(const GamutEntry& entry)
{
    return entry.hasGamut() && entry.look.visible && entry.look.surface && entry.look.opacity > 0.0f;
}

QString nameOf(const PointSet& set, qsizetype index)
{
    const QString& name = set.points[index].name;
    return name.isEmpty() ? Inspector::tr("%1, point %2").arg(QFileInfo(set.file).fileName()).arg(index + 1)
                          : name;
}

QString side(float distance, const QString& gamut)
{
    const QString number = QLocale().toString(std::fabs(static_cast<double>(distance)), 'f', 2);
    return distance < 0.0f ? Inspector::tr("%1 ΔE inside %2").arg(number, gamut)
                           : Inspector::tr("%1 ΔE outside %2").arg(number, gamut);
}

} // namespace

std::optional<Inspector::Met> Inspector::surface(const Picker::Ray& ray) const
{
    std::optional<Met> nearest;
    for (int row = 0; row < m_gamuts.rowCount(); ++row) {
        const GamutEntry& entry = m_gamuts.at(row);
        if (!isSeen(entry))
            continue;
        const auto hit = Picker::firstHit(ray, m_viewer.faceList(entry.id), m_viewer.clipping());
        if (hit && (!nearest || hit->distance < nearest->distance))
            nearest = Met{hit->distance, hit->lab, entry.title, row};
    }
    return nearest;
}

std::optional<Inspector::Met> Inspector::point(const Picker::Ray& ray) const
{
    std::optional<Met> nearest;
    for (int row = 0; row < m_points.rowCount(); ++row) {
        const PointSet& set = m_points.set(row);
        for (qsizetype i = 0; i < set.points.size(); ++i) {
            const MeasuredPoint& candidate = set.points[i];
            const auto hit =
                Picker::firstBall(ray, {vectorOf(candidate.lab)}, m_points.diameter(candidate) / 2.0f);
            if (hit && (!nearest || hit->distance < nearest->distance))
                nearest = Met{hit->distance, vectorOf(candidate.lab), nameOf(set, i), -1};
        }
    }
    return nearest;
}

std::optional<Inspector::Finding> Inspector::look(const Picker::Ray& ray) const
{
    auto met = surface(ray);
    const auto dot = point(ray);
    if (dot && (!met || dot->distance <= met->distance))
        met = dot;
    if (!met)
        return {};
    return Finding{met->name, met->lab, describe(*met)};
}

QString Inspector::describe(const Met& met) const
{
    QStringList lines{met.gamut >= 0 ? tr("Surface of %1").arg(met.name) : met.name, ShownWords::lab(met.lab),
                      ShownWords::lch(met.lab)};
    const float lab[3] = {met.lab.x(), met.lab.y(), met.lab.z()};
    for (int row = 0; row < m_gamuts.rowCount(); ++row) {
        const GamutEntry& entry = m_gamuts.at(row);
        if (row != met.gamut && entry.hasGamut())
            lines.append(side(entry.gamut.nearest(lab).distance, entry.title));
    }
    lines.append(tr("seen from %1 away").arg(QLocale().toString(static_cast<double>(met.distance), 'f', 0)));
    return lines.join(QLatin1Char('\n'));
}
