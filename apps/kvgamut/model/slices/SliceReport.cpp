// SPDX-License-Identifier: Apache-2.0
#include "SliceReport.h"

#include "model/reports/GamutWords.h"
#include "model/reports/Table.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace {

constexpr int decimals = 4;

double rounded(double value)
{
    const double unit = std::pow(10.0, decimals);
    return std::round(value * unit) / unit + 0.0; // no negative zero
}

QJsonArray jsonOf(const KVGamut::LabPoint& lab)
{
    return {rounded(double(lab.L)), rounded(double(lab.a)), rounded(double(lab.b))};
}

QJsonArray ringsOf(const GamutSlice& slice, const SlicePlane& plane)
{
    QJsonArray rings;
    for (const QPolygonF& ring : slice.rings) {
        QJsonArray points;
        for (const QPointF& p : ring) {
            const PlaneLab lab = labOf(p, plane);
            points.append(QJsonArray{rounded(lab.L), rounded(lab.a), rounded(lab.b)});
        }
        rings.append(points);
    }
    return rings;
}

QJsonArray ringsOf(const GamutRings& rings)
{
    QJsonArray all;
    for (qsizetype i = 0; i < rings.rings.size(); ++i) {
        QJsonArray points;
        for (const QPointF& p : rings.rings[i])
            points.append(QJsonArray{rounded(p.x()), rounded(p.y())});
        all.append(QJsonObject{{QStringLiteral("lightness"), rings.lightness[i]},
                               {QStringLiteral("area"), rounded(ringArea(rings.rings[i]))},
                               {QStringLiteral("points"), points}});
    }
    return all;
}

/// With thousands separators, such as "14,152"; below ten with one decimal.
QString grouped(double value)
{
    return QLocale(QLocale::English, QLocale::UnitedStates)
        .toString(value, 'f', std::abs(value) < 10.0 ? 1 : 0);
}

QString signedNumber(double value)
{
    return QString::number(std::round(value * 10.0) / 10.0 + 0.0, 'f', 1)
        .replace(QLatin1Char('-'), QChar(0x2212));
}

} // namespace

void SliceReport::add(const QString& name, const KVGamut::GamutObject& gamut, const QColor& color)
{
    Item item{
        name, color.isValid() ? color : SliceDrawing::defaultColor(m_items.size()), gamut.report(), {}, {}};
    if (m_plane)
        item.slice = gamutSlice(gamut.mesh(), *m_plane);
    else
        item.rings = gamutRings(gamut.mesh());
    const std::vector<KVGamut::LabPoint>& colors = gamut.mesh().lab;
    const auto isDarker = [](const KVGamut::LabPoint& one, const KVGamut::LabPoint& other) {
        return one.L < other.L;
    };
    if (!colors.empty()) {
        const auto [lowest, highest] = std::minmax_element(colors.begin(), colors.end(), isDarker);
        item.lowest = lowest->L;
        item.highest = highest->L;
    }
    m_items.append(item);
}

void SliceReport::addPoints(const QList<MeasuredPoint>& points, double within,
                            const KVGamut::GamutObject& gamut)
{
    m_hasPoints = true;
    if (m_plane)
        m_points += slicePoints(points, *m_plane, within, gamut);
}

QList<Problem> SliceReport::misses() const
{
    QList<Problem> notes;
    for (const Item& item : m_items) {
        if (!m_plane || !item.slice.rings.isEmpty())
            continue;
        const QString value = QString::number(m_plane->value);
        if (m_plane->kind == SlicePlane::Hue)
            notes.append(Problem(ProblemCode::NothingAtHue, {value}, item.name));
        else
            notes.append(Problem(ProblemCode::NothingAtLightness,
                                 {value, QString::number(double(item.lowest), 'f', 1),
                                  QString::number(double(item.highest), 'f', 1)},
                                 item.name));
    }
    return notes;
}

QByteArray SliceReport::csv() const
{
    Table table;
    table.add("profile", "profile", Table::Kind::Word);
    if (m_plane) {
        table.add("ring", "ring", Table::Kind::Whole);
        for (const char* key : {"L", "a", "b", "C"})
            table.add(key, key, Table::Kind::Number, decimals);
    } else {
        for (const char* key : {"lightness", "hue", "a_rss", "b_rss", "c_rss"})
            table.add(key, key, Table::Kind::Number, decimals);
    }
    for (const Item& item : m_items) {
        for (qsizetype i = 0; i < item.slice.rings.size(); ++i)
            for (const QPointF& p : item.slice.rings[i]) {
                const PlaneLab lab = labOf(p, *m_plane);
                table.rows.append(
                    {item.name, static_cast<int>(i + 1), lab.L, lab.a, lab.b, std::hypot(lab.a, lab.b)});
            }
        for (qsizetype i = 0; i < item.rings.rings.size(); ++i) {
            const QPolygonF& ring = item.rings.rings[i];
            for (qsizetype corner = 0; corner < ring.size(); ++corner) {
                const QPointF& p = ring[corner];
                const double hue = 360.0 * static_cast<double>(corner) / static_cast<double>(ring.size());
                table.rows.append(
                    {item.name, item.rings.lightness[i], hue, p.x(), p.y(), std::hypot(p.x(), p.y())});
            }
        }
    }
    return table.printed(Table::Format::Csv);
}

QByteArray SliceReport::json() const
{
    QJsonArray all;
    for (const Item& item : m_items) {
        QJsonObject object{
            {QStringLiteral("profile"), SafeText::forJson(item.name)},
            {QStringLiteral("intent"), GamutWords::intent(item.report)},
            {QStringLiteral("bpc"), GamutWords::blackPointCompensated(item.report)},
            {QStringLiteral("white"), jsonOf(item.report.white)},
        };
        if (m_plane) {
            const bool ofHue = m_plane->kind == SlicePlane::Hue;
            object.insert(ofHue ? QStringLiteral("hue") : QStringLiteral("lightness"), m_plane->value);
            object.insert(QStringLiteral("area"), rounded(item.slice.area()));
            object.insert(QStringLiteral("rings"), ringsOf(item.slice, *m_plane));
        } else {
            object.insert(QStringLiteral("volume"), GamutWords::writtenVolume(item.report.volume));
            object.insert(QStringLiteral("rings"), ringsOf(item.rings));
        }
        all.append(object);
    }
    return SafeText::escapedJson(QJsonDocument(all).toJson(QJsonDocument::Compact)) + '\n';
}

/// File names if they are distinct, else the names as given.
QStringList SliceReport::legendNames() const
{
    QStringList fileNames;
    for (const Item& item : m_items)
        fileNames.append(QFileInfo(item.name).fileName());
    QStringList names;
    for (qsizetype i = 0; i < m_items.size(); ++i)
        names.append(fileNames.count(fileNames[i]) > 1 ? m_items[i].name : fileNames[i]);
    return names;
}

SliceDrawing::Gamut SliceReport::legendOf(const Item& item, const QString& name) const
{
    const KVGamut::LabPoint& white = item.report.white;
    const QString compensated =
        GamutWords::blackPointCompensated(item.report) ? QStringLiteral(", bpc") : QString();
    return {SafeText::shown(name),
            {GamutWords::basis(item.report) + compensated,
             QStringLiteral("white L* %1  a* %2  b* %3")
                 .arg(signedNumber(double(white.L)), signedNumber(double(white.a)),
                      signedNumber(double(white.b))),
             m_plane ? QStringLiteral("area %1 dE%2").arg(grouped(item.slice.area())).arg(QChar(0xb2))
                     : QStringLiteral("volume %1 dE%2").arg(grouped(item.report.volume)).arg(QChar(0xb3))},
            item.color};
}

/// What the symbols say, with the number of points: inside or outside the first gamut.
QStringList SliceReport::pointWords(const QString& name) const
{
    const auto inside = std::count_if(m_points.begin(), m_points.end(),
                                      [](const SlicePoint& point) { return point.isInside; });
    return {QStringLiteral("inside %1: %2").arg(name).arg(inside),
            QStringLiteral("outside %1: %2").arg(name).arg(m_points.size() - inside)};
}

SliceDrawing SliceReport::drawing() const
{
    SliceDrawing drawing = m_plane ? SliceDrawing::ofPlane(*m_plane) : SliceDrawing::ofRings();
    const QStringList names = legendNames();
    for (qsizetype i = 0; i < m_items.size(); ++i) {
        const SliceDrawing::Gamut legend = legendOf(m_items[i], names[i]);
        if (m_plane)
            drawing.add(legend, m_items[i].slice);
        else
            drawing.add(legend, m_items[i].rings);
    }
    drawing.setFill(m_fill);
    if (m_hasPoints && !names.isEmpty())
        drawing.setPoints(m_points, pointWords(SafeText::shown(names.first())));
    return drawing;
}
