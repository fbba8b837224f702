// SPDX-License-Identifier: Apache-2.0
#include "SlicePanel.h"

#include "desktop/language/ShownWords.h"
#include "model/export/OutputFile.h"
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
constexpr float sameLightness = 1.0f;         // a colour no farther from the plane than this is in it

SlicePlane planeAt(float lightness)
{
    return {SlicePlane::Lightness, static_cast<double>(lightness)};
}

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
    : QWidget(parent), m_gamuts(gamuts), m_points(points),
      m_drawing(SliceDrawing::ofPlane(planeAt(m_lightness)))
{
    setObjectName(QStringLiteral("slice"));
    setAccessibleName(tr("Section at a lightness"));
    setMouseTracking(true);
    setMinimumSize(180, 100);
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

void SlicePanel::setLightness(float lightness)
{
    if (lightness == m_lightness)
        return;
    m_lightness = lightness;
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
    update();
}

/// Uses the colours for paper. The legend states profile, intent and area.
SliceDrawing SlicePanel::drawing() const
{
    SliceDrawing drawing = SliceDrawing::ofPlane(planeAt(m_lightness));
    drawing.setTitle(tr("Gamut slice at L* = %1 in CIELAB (D50)")
                         .arg(QLocale().toString(static_cast<double>(m_lightness), 'g', 6)));
    drawing.setFill(m_colored ? SliceDrawing::Fill::Colors : SliceDrawing::Fill::Tint);
    for (int row = 0; row < m_gamuts.rowCount(); ++row) {
        const GamutEntry& entry = m_gamuts.at(row);
        if (!entry.hasGamut() || !entry.look.visible)
            continue;
        const GamutSlice slice = gamutSlice(entry.gamut.mesh(), planeAt(m_lightness));
        const QString area = tr("area %1").arg(QLocale().toString(slice.area(), 'f', 0));
        drawing.add({entry.title,
                     {ShownWords::basis(entry.computedWith, entry.gamut.method()), area},
                     m_gamuts.signColor(row)},
                    slice);
    }
    addPoints(drawing);
    return drawing;
}

void SlicePanel::addPoints(SliceDrawing& drawing) const
{
    const int row = m_gamuts.activeRow();
    if (row < 0 || !m_gamuts.at(row).hasGamut() || m_points.rowCount() == 0)
        return;
    const GamutEntry& active = m_gamuts.at(row);
    const auto near = m_points.near(static_cast<double>(m_lightness), defaultPointDistance);
    const bool isCrowded = near.size() > maxSinglePoints;
    Squares squares;
    QList<SlicePoint> points;
    std::size_t inside = 0;
    for (const auto& [point, isInside] : near) {
        inside += isInside ? 1 : 0;
        if (!isCrowded || squares.take(point->lab, isInside))
            points.append(slicePoint(*point, planeAt(m_lightness), isInside));
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
    const auto placeOf = [&toArea](const QVector3D& lab) {
        return toArea.map(QPointF(static_cast<double>(lab.y()), static_cast<double>(lab.z())));
    };
    constexpr qreal radius = 6.0;
    const bool isHere = std::abs(m_mark->lab.x() - m_lightness) <= sameLightness;
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
    if (m_mark)
        paintMark(painter);
}

void SlicePanel::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF place = m_drawing.planeToArea(rect()).inverted().map(event->position());
    Q_EMIT hovered(QVector3D(m_lightness, static_cast<float>(place.x()), static_cast<float>(place.y())));
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
