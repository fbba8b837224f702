// SPDX-License-Identifier: Apache-2.0
#include "Inspector.h"

#include "desktop/language/ShownWords.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

#include <cmath>

namespace {

QString nameOfPoint(const PointSet& set, qsizetype index)
{
    const QString& name = set.points[index].name;
    return SafeText::shown(
        name.isEmpty() ? Inspector::tr("%1, point %2").arg(QFileInfo(set.file).fileName()).arg(index + 1)
                       : name);
}

QString distanceText(float distance, const QString& gamut)
{
    const QString number = QLocale().toString(std::fabs(static_cast<double>(distance)), 'f', 2);
    return distance < 0.0f ? Inspector::tr("%1 ΔE inside %2").arg(number, gamut)
                           : Inspector::tr("%1 ΔE outside %2").arg(number, gamut);
}

} // namespace

std::optional<Inspector::Finding> Inspector::describe(const KVHit& hit) const
{
    const QString name = nameOf(hit);
    if (name.isEmpty())
        return {};
    return Finding{name, hit.lab, textOf(hit, name)};
}

QString Inspector::nameOf(const KVHit& hit) const
{
    if (hit.kind == KVHit::Kind::Gamut) {
        const int row = m_gamuts.rowOf(hit.id);
        return row < 0 ? QString() : m_gamuts.at(row).title;
    }
    if (hit.kind != KVHit::Kind::Point)
        return {};
    const auto place = m_points.placeOf(hit.id, hit.index);
    return place ? nameOfPoint(m_points.set(place->row), place->index) : QString();
}

QString Inspector::textOf(const KVHit& hit, const QString& name) const
{
    const bool isGamut = hit.kind == KVHit::Kind::Gamut;
    QStringList lines{isGamut ? tr("Surface of %1").arg(name) : name, ShownWords::lab(hit.lab),
                      ShownWords::lch(hit.lab)};
    const float lab[3] = {hit.lab.x(), hit.lab.y(), hit.lab.z()};
    for (const GamutEntry& entry : m_gamuts.entries())
        if (entry.hasGamut() && !(isGamut && entry.id == hit.id))
            lines.append(distanceText(entry.gamut.nearest(lab).distance, entry.title));
    lines.append(tr("seen from %1 away").arg(QLocale().toString(static_cast<double>(hit.distance), 'f', 0)));
    return lines.join(QLatin1Char('\n'));
}
