// SPDX-License-Identifier: Apache-2.0
#include "SlicePanel.h"

#include "desktop/language/ShownWords.h"
#include "desktop/view/Accessibility.h"
#include "model/export/OutputFile.h"
#include "model/points/Lab.h"
#include "model/slices/SliceFile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace {

constexpr QSize documentSize(800, 800);
constexpr std::size_t maxSinglePoints = 2000; // with more, one in each square is drawn
constexpr double inSection = 1.0;             // a colour no farther from the plane than this is in it

// These contain the usual devices.
constexpr QRectF fixedLightnessRange(-150.0, -150.0, 300.0, 300.0); // a*, b*
constexpr QRectF fixedHueRange(0.0, 0.0, 150.0, 100.0);             // C*, L*

/// Squares of the plane, to find out which contain a point already. With more than a few thousand points, one
/// in each square looks the same and takes less time.
class Squares
{
public:
    /// @return whether this is the first point with this side in its square
    bool take(const KVGamut::LabPoint& lab, bool isInside)
    {
        const std::size_t at = (row(lab.a) * rows + row(lab.b)) * 2 + (isInside ? 1 : 0);
        const bool isFirst = !m_taken[at];
        m_taken[at] = true;
        return isFirst;
    }

private:
    static constexpr std::size_t rows = 512;
    static constexpr float side = 3.0f; // dE76

    static std::size_t row(float value)
    {
        const float at = value / side + 0.5f * rows;
        return at > 0.0f ? static_cast<std::size_t>(std::min(at, rows - 1.0f)) : 0; // NaN, too
    }

    std::vector<bool> m_taken = std::vector<bool>(rows * rows * 2);
};

} // namespace

SlicePanel::SlicePanel(const GamutListModel& gamuts, const PointLayer& points, QWidget* parent)
    : QWidget(parent), m_gamuts(gamuts), m_points(points), m_drawing(SliceDrawing::ofPlane(plane()))
{
    setObjectName(QStringLiteral("slice"));
    setAccessibleRole(*this, QAccessible::Graphic);
    setAccessibleName(tr("Section of the gamuts"));
    setMouseTracking(true);
    setMinimumSize(180, 60);
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &SlicePanel::redraw);
    connect(&gamuts, &QAbstractItemModel::rowsInserted, this, &SlicePanel::redrawSoon);
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, this, &SlicePanel::redrawSoon);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(GamutListModel::GamutRole) || roles.contains(GamutListModel::LookRole))
                    redrawSoon();
            });
    connect(&gamuts, &GamutListModel::activeRowChanged, this, &SlicePanel::redrawSoon);
    connect(&points, &PointLayer::pointsChanged, this, &SlicePanel::redrawSoon);
    connect(&points, &QAbstractItemModel::dataChanged, this, &SlicePanel::redrawSoon); // classified
    redraw();
}

void SlicePanel::setKind(SectionKind kind)
{
    m_kind = kind;
    redrawSoon();
}

void SlicePanel::setHue(float degrees)
{
    if (degrees == m_hue)
        return;
    m_hue = degrees;
    if (m_kind == SectionKind::Hue)
        redrawSoon();
}

void SlicePanel::setScaleFixed(bool fixed)
{
    m_scaleFixed = fixed;
    redrawSoon();
}

void SlicePanel::setLightness(float lightness)
{
    if (lightness == m_lightness)
        return;
    m_lightness = lightness;
    if (m_kind == SectionKind::Lightness)
        redrawSoon();
}

void SlicePanel::setColored(bool colored)
{
    m_colored = colored;
    redrawSoon();
}

void SlicePanel::redrawSoon()
{
    m_soon.start(0);
}

void SlicePanel::redraw()
{
    m_drawing = drawing();
    m_drawing.setPalette({palette().color(QPalette::Base), palette().color(QPalette::Text),
                          palette().color(QPalette::Midlight)});
    m_drawing.setTextSize(fontMetrics().ascent());
    setAccessibleDescription(m_drawing.words());
    update();
}

SlicePlane SlicePanel::plane() const
{
    if (m_kind == SectionKind::Hue)
        return {SlicePlane::Hue, static_cast<double>(m_hue)};
    return {SlicePlane::Lightness, static_cast<double>(m_lightness)};
}

SliceDrawing SlicePanel::emptyDrawing() const
{
    if (m_kind == SectionKind::Rings) {
        SliceDrawing rings = SliceDrawing::ofRings();
        rings.setTitle(tr("Gamut rings in CIELAB (D50)"));
        return rings;
    }
    SliceDrawing drawing = SliceDrawing::ofPlane(plane());
    const QString value = QLocale().toString(plane().value, 'g', 6);
    drawing.setTitle(m_kind == SectionKind::Hue ? tr("Gamut slice at hue %1° in CIELAB (D50)").arg(value)
                                                : tr("Gamut slice at L* = %1 in CIELAB (D50)").arg(value));
    if (m_scaleFixed)
        drawing.setRange(m_kind == SectionKind::Hue ? fixedHueRange : fixedLightnessRange);
    return drawing;
}

/// Uses the colours for paper.
SliceDrawing SlicePanel::drawing() const
{
    SliceDrawing drawing = emptyDrawing();
    drawing.setFill(m_colored ? SliceDrawing::Fill::Colors : SliceDrawing::Fill::Tint);
    for (int row = 0; row < m_gamuts.rowCount(); ++row)
        if (m_gamuts.at(row).hasGamut() && m_gamuts.isSeen(row))
            addGamut(drawing, row);
    if (m_kind != SectionKind::Rings)
        addPoints(drawing);
    return drawing;
}

/// The legend states profile, intent and area or volume.
void SlicePanel::addGamut(SliceDrawing& drawing, int row) const
{
    const GamutEntry& entry = m_gamuts.at(row);
    SliceDrawing::Gamut legend{entry.title,
                               {ShownWords::basis(entry.computedWith, entry.gamut.method())},
                               m_gamuts.signColor(row, palette().color(QPalette::Base))};
    if (m_kind == SectionKind::Rings) {
        legend.notes.append(tr("volume %1").arg(QLocale().toString(entry.gamut.report().volume, 'f', 0)));
        drawing.add(legend, gamutRings(entry.gamut.mesh()));
        return;
    }
    const GamutSlice slice = gamutSlice(entry.gamut.mesh(), plane());
    legend.notes.append(tr("area %1").arg(QLocale().toString(slice.area(), 'f', 0)));
    drawing.add(legend, slice);
}

void SlicePanel::addPoints(SliceDrawing& drawing) const
{
    const int row = m_gamuts.activeRow();
    if (row < 0 || !m_gamuts.at(row).hasGamut() || m_points.rowCount() == 0)
        return;
    const GamutEntry& active = m_gamuts.at(row);
    const auto near = m_points.near(plane(), defaultPointDistance);
    const bool isCrowded = near.size() > maxSinglePoints;
    Squares squares;
    QList<SlicePoint> points;
    std::size_t inside = 0;
    for (const auto& [point, isInside] : near) {
        inside += isInside ? 1 : 0;
        if (!isCrowded || squares.take(point->lab, isInside))
            points.append(slicePoint(*point, plane(), isInside));
    }
    const QLocale locale;
    drawing.setPoints(
        points, {tr("inside %1: %2").arg(active.title, locale.toString(static_cast<qulonglong>(inside))),
                 tr("outside %1: %2")
                     .arg(active.title, locale.toString(static_cast<qulonglong>(near.size() - inside)))});
}

void SlicePanel::setMark(const std::optional<Mark>& mark)
{
    m_mark = mark;
    update();
}

/// In the colours of text and paper, which differ from every colour of the section.
void SlicePanel::paintMark(QPainter& painter) const
{
    const QTransform toArea = m_drawing.planeToArea(rect());
    const auto placeOf = [&](const QVector3D& lab) { return toArea.map(viewOf(labOf(lab), plane()).place); };
    constexpr qreal radius = 6.0;
    const bool isHere = viewOf(labOf(m_mark->lab), plane()).distance <= inSection;
    const QPointF at = placeOf(m_mark->lab);
    for (const auto& [role, width] : {std::pair(QPalette::Base, 4.0), std::pair(QPalette::Text, 1.5)}) {
        painter.setPen(QPen(palette().color(role), width, isHere ? Qt::SolidLine : Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(at, radius, radius);
        if (m_mark->nearest)
            painter.drawLine(at, placeOf(*m_mark->nearest));
    }
}

std::optional<Problem> SlicePanel::save(const QString& file) const
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (suffix != QLatin1String("svg") && suffix != QLatin1String("pdf"))
        return Problem(ProblemCode::SectionFormatUnknown).about(file);
    return writeOutput(file, suffix == QLatin1String("pdf") ? SliceFile::pdf(drawing(), documentSize)
                                                            : SliceFile::svg(drawing(), documentSize));
}

void SlicePanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    m_drawing.paint(painter, rect());
    if (m_mark && m_kind != SectionKind::Rings)
        paintMark(painter);
}

void SlicePanel::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF place = m_drawing.planeToArea(rect()).inverted().map(event->position());
    const PlaneLab lab = labOf(place, plane());
    if (m_kind == SectionKind::Rings || (m_kind == SectionKind::Hue && place.x() < 0.0)) // not a place in Lab
        Q_EMIT hovered(std::nullopt);
    else
        Q_EMIT hovered(
            QVector3D(static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)));
}

void SlicePanel::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    Q_EMIT hovered(std::nullopt);
}

void SlicePanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        redrawSoon();
}
