// SPDX-License-Identifier: Apache-2.0
#include "FindingControl.h"

#include "desktop/panels/ColorsPanel.h"
#include "desktop/panels/FindingPanel.h"
#include "desktop/panels/SlicePanel.h"
#include "model/points/Lab.h"

#include <array>

namespace {

constexpr float markerSize = 3.0f;
constexpr float closePoint = 3.0f; // dE76 from the cursor

QString setName()
{
    return QStringLiteral("finding");
}

std::array<float, 3> valuesOf(const QVector3D& lab)
{
    return {lab.x(), lab.y(), lab.z()};
}

} // namespace

FindingControl::FindingControl(const GamutListModel& gamuts, const PointLayer& points,
                               const ColorChecks& checks, Inspector::ProfileOf profileOf, const Parts& parts,
                               QObject* parent)
    : QObject(parent), m_gamuts(gamuts), m_points(points), m_checks(checks),
      m_inspector(gamuts, points, std::move(profileOf)), m_parts(parts)
{
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, this, &FindingControl::update);
    connect(&gamuts, &GamutListModel::activeRowChanged, this, &FindingControl::update);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(GamutListModel::GamutRole) || roles.contains(Qt::AccessibleTextRole))
                    update();
            });
    connect(&points, &PointLayer::pointsChanged, this, &FindingControl::update);
    connect(&points, &QAbstractItemModel::rowsRemoved, this, &FindingControl::update);
    connect(parts.colors, &ColorsPanel::chosen, this, &FindingControl::showChosen);
}

QString FindingControl::text() const
{
    return m_text;
}

void FindingControl::inspect(const KVHit& clicked)
{
    if (clicked.endsDrag)
        return;
    KVGamut3DViewer* viewer = m_parts.view->viewer();
    // the marker of the last finding hides what is below it
    const bool isMarker = clicked.kind == KVHit::Kind::Marker && clicked.id == setName();
    viewer->removeMarkerSet(setName());
    const KVHit hit = isMarker ? m_parts.view->hitAt(clicked.pixel) : clicked;
    const bool isPoint = hit.kind == KVHit::Kind::Point || hit.kind == KVHit::Kind::Marker;
    const auto place = isPoint ? m_points.placeOf(hit.id, hit.index) : std::nullopt;
    m_parts.colors->deselect();
    if (place && m_checks.colorAt(*place) >= 0) {
        m_parts.colors->select(m_checks.colorAt(*place));
        return;
    }
    const int row = m_gamuts.rowOf(hit.id);
    m_revision = row < 0 ? 0 : m_gamuts.at(row).revision;
    m_place.reset();
    m_hit = hit;
    showHit();
}

/// The same place of the window may be on another surface now, or on none.
void FindingControl::showHit()
{
    if (const auto finding = m_inspector.describe(*m_hit))
        show(*finding, {});
    else
        forget();
}

void FindingControl::showPlace(const QVector3D& lab)
{
    m_parts.colors->deselect();
    m_hit.reset();
    m_place = lab;
    show(m_inspector.describe(lab), {});
}

void FindingControl::pickNear(const QVector3D& lab)
{
    qsizetype nearest = -1;
    float least = closePoint;
    for (qsizetype color = 0; color < m_checks.count(); ++color) {
        const float distance = (vectorOf(m_checks.point(color).lab) - lab).length();
        if (distance <= least) {
            least = distance;
            nearest = color;
        }
    }
    const int row = m_gamuts.activeRow();
    if (nearest >= 0) {
        m_parts.colors->select(nearest);
    } else if (row >= 0 && m_gamuts.at(row).hasGamut()) {
        m_parts.colors->deselect();
        const auto values = valuesOf(lab);
        KVHit hit;
        hit.kind = KVHit::Kind::Gamut;
        hit.id = m_gamuts.at(row).id;
        hit.lab = vectorOf(m_gamuts.at(row).gamut.nearest(values.data()).point);
        hit.rayOrigin = m_parts.view->camera().position;
        hit.distance = (hit.lab - hit.rayOrigin).length();
        m_revision = m_gamuts.at(row).revision;
        m_place.reset();
        m_hit = hit;
        showHit();
    }
}

/// Marks the colour, and draws a line to the nearest place on the surface of the active gamut.
void FindingControl::show(const Inspector::Finding& finding, const std::optional<QVector3D>& nearest)
{
    m_text = finding.text;
    m_parts.panel->show(finding.lab, finding.text);
    if (KVGamut3DViewer* viewer = m_parts.view->viewer()) {
        const QColor mark = finding.lab.x() > 50.0f ? Qt::black : Qt::white;
        viewer->addMarkerSet(setName(), KVGamut3DViewer::Sphere, {{mark, finding.lab}}, markerSize, 1.0f);
        viewer->removeSegmentSet(setName());
        if (nearest)
            viewer->addSegmentSet(setName(), {{{mark, finding.lab}, {mark, *nearest}}});
    }
    m_parts.section->setMark(SlicePanel::Mark{finding.lab, nearest});
    Q_EMIT changed();
}

void FindingControl::forget()
{
    m_hit.reset();
    m_place.reset();
    m_text.clear();
    if (KVGamut3DViewer* viewer = m_parts.view->viewer()) {
        viewer->removeMarkerSet(setName());
        viewer->removeSegmentSet(setName());
    }
    m_parts.section->setMark({});
    m_parts.panel->clear();
    Q_EMIT changed();
}

/// Follows the table of colours: its current row, and the results for it.
void FindingControl::showChosen(std::optional<qsizetype> color)
{
    if (!color) {
        if (m_chosen)
            forget();
        m_chosen.reset();
        return;
    }
    const Inspector::Finding finding = m_inspector.describe(m_checks.place(*color));
    const Chosen chosen{*color, finding.text, nearestOf(*color)};
    if (m_chosen == chosen)
        return;
    m_chosen = chosen;
    m_hit.reset();
    m_place.reset();
    show(finding, chosen.nearest);
}

/// On the surface of the active gamut: outside by CIEDE2000, as in the table, inside by the distance in Lab.
std::optional<QVector3D> FindingControl::nearestOf(qsizetype color) const
{
    const int row = m_gamuts.activeRow();
    const auto* check =
        row < 0 || row >= m_gamuts.rowCount() ? nullptr : m_checks.check(m_gamuts.at(row).revision, color);
    if (!check)
        return {};
    if (check->distance > 0.0f)
        return vectorOf(check->nearest);
    const auto values = valuesOf(vectorOf(m_checks.point(color).lab));
    return vectorOf(m_gamuts.at(row).gamut.nearest(values.data()).point);
}

/// The table of colours reports changes of what is chosen in it.
void FindingControl::update()
{
    if (m_place) {
        show(m_inspector.describe(*m_place), {});
    } else if (m_hit) {
        followSurface();
        showHit();
    }
}

/// After its gamut was computed anew, the place moves to the nearest one on the new surface.
void FindingControl::followSurface()
{
    const int row = m_hit->kind == KVHit::Kind::Gamut ? m_gamuts.rowOf(m_hit->id) : -1;
    if (row < 0 || m_gamuts.at(row).revision == m_revision || !m_gamuts.at(row).hasGamut())
        return;
    m_revision = m_gamuts.at(row).revision;
    const auto values = valuesOf(m_hit->lab);
    m_hit->lab = vectorOf(m_gamuts.at(row).gamut.nearest(values.data()).point);
    m_hit->distance = (m_hit->lab - m_hit->rayOrigin).length();
}
