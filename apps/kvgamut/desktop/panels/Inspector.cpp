// SPDX-License-Identifier: Apache-2.0
#include "Inspector.h"

#include "desktop/language/ShownWords.h"
#include "model/points/Lab.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

#include <array>
#include <cmath>

namespace {

QString nameOfPoint(const PointSet& set, qsizetype index)
{
    const QString& name = set.points[index].name;
    return SafeText::shown(
        name.isEmpty() ? Inspector::tr("%1, point %2").arg(QFileInfo(set.file).fileName()).arg(index + 1)
                       : name);
}

QString hexText(const QVector3D& lab)
{
    const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB({lab.x(), lab.y(), lab.z()});
    const QString hex =
        QColor(qRound(rgb.value(0)), qRound(rgb.value(1)), qRound(rgb.value(2))).name().toUpper();
    return isScreenColor(labOf(lab)) ? Inspector::tr("sRGB %1").arg(hex)
                                     : Inspector::tr("sRGB about %1").arg(hex);
}

} // namespace

std::optional<Inspector::Finding> Inspector::describe(const KVHit& hit) const
{
    const QString name = nameOf(hit);
    if (name.isEmpty())
        return {};
    const bool isGamut = hit.kind == KVHit::Kind::Gamut;
    QStringList lines{isGamut ? tr("Surface of %1").arg(name) : name};
    lines += linesOf(hit.lab, isGamut ? hit.id : QString());
    lines.append(tr("seen from %1 away").arg(QLocale().toString(static_cast<double>(hit.distance), 'f', 0)));
    return Finding{name, hit.lab, lines.join(QLatin1Char('\n'))};
}

Inspector::Finding Inspector::describe(const PointLayer::Place& place) const
{
    const PointSet& set = m_points.set(place.row);
    const QString name = nameOfPoint(set, place.index);
    const QVector3D lab = vectorOf(set.points[place.index].lab);
    return {name, lab, (QStringList{name} + linesOf(lab, {})).join(QLatin1Char('\n'))};
}

Inspector::Finding Inspector::describe(const QVector3D& lab) const
{
    const QString name = tr("Colour at the cursor");
    return {name, lab, (QStringList{name} + linesOf(lab, {})).join(QLatin1Char('\n'))};
}

QString Inspector::nameOf(const KVHit& hit) const
{
    if (hit.kind == KVHit::Kind::Gamut) {
        const int row = m_gamuts.rowOf(hit.id);
        return row < 0 ? QString() : m_gamuts.at(row).title;
    }
    if (hit.kind != KVHit::Kind::Point && hit.kind != KVHit::Kind::Marker)
        return {};
    const auto place = m_points.placeOf(hit.id, hit.index);
    return place ? nameOfPoint(m_points.set(place->row), place->index) : QString();
}

/// @param except id of the gamut on whose surface the colour is
QStringList Inspector::linesOf(const QVector3D& lab, const QString& except) const
{
    QStringList lines{ShownWords::lab(lab), ShownWords::lch(lab), hexText(lab)};
    for (const GamutEntry& entry : m_gamuts.entries())
        if (entry.hasGamut() && entry.id != except)
            lines += differences(lab, entry);
    const QString device = deviceValues(lab);
    if (!device.isEmpty())
        lines.append(device);
    return lines;
}

QStringList Inspector::differences(const QVector3D& lab, const GamutEntry& entry) const
{
    const std::array<float, 3> values{lab.x(), lab.y(), lab.z()};
    const float distance = entry.gamut.nearest(values.data()).distance;
    QStringList lines{ShownWords::distance(distance, entry.title)};
    if (distance <= 0.0f)
        return lines;
    const KVGamut::Nearest nearest = entry.gamut.nearestByCiede2000(values.data());
    lines.append(tr("CIEDE2000 %1 to %2")
                     .arg(QLocale().toString(static_cast<double>(nearest.distance), 'f', 2),
                          ShownWords::lab(vectorOf(nearest.point))));
    const KVGamut::LabPoint atHue = entry.gamut.nearestAtHue(values.data()).point;
    if (std::isfinite(atHue.L))
        lines.append(tr("at the same hue %1 to %2")
                         .arg(QLocale().toString(KVGamut::ciede2000(labOf(lab), atHue), 'f', 2),
                              ShownWords::lab(vectorOf(atHue))));
    return lines;
}

/// Of the active gamut; empty if it has none.
QString Inspector::deviceValues(const QVector3D& lab) const
{
    const int row = m_gamuts.activeRow();
    if (!m_profileOf || row < 0 || row >= m_gamuts.rowCount() || !m_gamuts.at(row).hasGamut())
        return {};
    const GamutEntry& active = m_gamuts.at(row);
    if (m_deviceOf != active.revision) {
        m_device = DeviceRoundTrip::create(m_profileOf(active.id), active.gamut.report().intent);
        m_deviceOf = active.revision;
    }
    if (!m_device)
        return {};
    QStringList words;
    for (const double value : m_device->made(labOf(lab)).device)
        words.append(QLocale().toString(value, 'f', 0));
    return tr("%1 makes it with %2 %").arg(active.title, words.join(QLatin1Char(' ')));
}
