// SPDX-License-Identifier: Apache-2.0
#include "SliceDrawing.h"

#include "PlaneColors.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

// In units of the layout the height of text is `text`. The layout is scaled to the painter, so that the
// drawing looks the same at every size.

namespace {

constexpr qreal text = 16.0;
constexpr qreal lineHeight = 1.35 * text;
constexpr qreal gap = 0.5 * text;
constexpr qreal defaultTextShare = 1.0 / 45.0; // height of text relative to the shorter side
constexpr qreal tickDistance = 3.5 * text;     // minimum
constexpr qreal swatch = 1.6 * text;
constexpr qreal strongLine = 2.0;
constexpr qreal thinLine = 0.9;
constexpr qreal casing = 1.3; // on each side of a strong line on a ground of colours
constexpr qreal fillOpacity = 0.07;
constexpr qreal maxPlace = 250.0;       // larger coordinates of points do not enlarge the plot
constexpr qreal belowPlot = 3.6 * text; // room for the numbers and the name of the axis
constexpr qreal smallestPlot = 0.3;     // relative to the height of the drawing
constexpr int maxLegendLines = 8;       // for each gamut
constexpr qreal smallestLegend = 0.5;   // scale of its text
constexpr qreal wideShape = 1.2;        // minimum aspect ratio for a legend beside the plot instead of below

QFont font(bool bold = false)
{
    QFont result(QStringList{QStringLiteral("Liberation Sans"), QStringLiteral("Arial"),
                             QStringLiteral("Helvetica"), QStringLiteral("DejaVu Sans")});
    result.setPixelSize(static_cast<int>(text));
    result.setBold(bold);
    result.setHintingPreference(QFont::PreferNoHinting); // equal proportions at every size
    return result;
}

QFont smallFont()
{
    QFont small = font();
    small.setPixelSize(static_cast<int>(0.8 * text));
    return small;
}

qreal widthOf(const QString& words, bool bold = false)
{
    return QFontMetricsF(font(bold)).horizontalAdvance(words);
}

/// The distance between ticks: 1, 2 or 5 times a power of ten, at least @p min.
double tickStep(double min)
{
    const double power = std::pow(10.0, std::floor(std::log10(min)));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * power >= min * 0.999)
            return digit * power;
    return 10.0 * power;
}

QString number(double value)
{
    if (std::abs(value) < 1e-9)
        return QStringLiteral("0");
    return QString::number(value, 'g', 6).replace(QLatin1Char('-'), QChar(0x2212)); // minus sign
}

/// Ticks from @p from to @p to.
QList<double> ticks(double from, double to, double step)
{
    QList<double> result;
    for (double i = std::ceil(from / step - 1e-6); i * step <= to + 1e-6 * step; i += 1.0)
        result.append(i * step);
    return result;
}

QRectF roundedUp(const QRectF& range, double step)
{
    const double left = step * std::floor(range.left() / step + 1e-6);
    const double top = step * std::floor(range.top() / step + 1e-6);
    const double right = step * std::ceil(range.right() / step - 1e-6);
    const double bottom = step * std::ceil(range.bottom() / step - 1e-6);
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

QPainterPath pathOf(const QList<QPolygonF>& rings, const QTransform& transform)
{
    QPainterPath path;
    for (const QPolygonF& ring : rings) {
        path.addPolygon(transform.map(ring));
        path.closeSubpath();
    }
    return path;
}

/// The last @p count of @p notes, or all if they are fewer.
QStringList lastOf(const QStringList& notes, qsizetype count)
{
    return notes.last(std::clamp<qsizetype>(count, 0, notes.size()));
}

/// Draws @p words and, after them, @p subscript, in the middle of @p at.
void paintSymbol(QPainter& painter, const QPointF& at, const QString& words, const QString& subscript)
{
    QFont small = font();
    small.setPixelSize(static_cast<int>(0.7 * text));
    const qreal width = widthOf(words);
    const qreal whole = width + QFontMetricsF(small).horizontalAdvance(subscript);
    const QPointF start(at.x() - 0.5 * whole, at.y() + 0.35 * text);
    painter.setFont(font());
    painter.drawText(start, words);
    painter.setFont(small);
    painter.drawText(start + QPointF(width + 1.0, 0.25 * text), subscript);
}

} // namespace

/// How the legend is shown, in units of the layout.
struct SliceDrawing::Legend
{
    int lines = 0;       ///< for each gamut: its name and the last of its notes
    qreal scale = 1.0;   ///< of the text
    qsizetype shown = 0; ///< gamuts; a line tells how many more there are
    QSizeF size;
};

/// Positions of the parts of the drawing, in units of the layout.
struct SliceDrawing::Layout
{
    QTransform toArea;  ///< from units of the layout to those of the painter
    QRectF whole;       ///< the drawing
    QRectF plot;        ///< the frame of the plot
    QRectF range;       ///< what the frame shows, in coordinates of the plane
    QTransform toPlot;  ///< from coordinates of the plane
    double step = 10.0; ///< between ticks
    Legend legend;
    QPointF legendAt; ///< its top left corner
    qreal legendWidth = 0.0;
};

SliceDrawing SliceDrawing::ofPlane(const SlicePlane& plane)
{
    return SliceDrawing(false, plane);
}

SliceDrawing SliceDrawing::ofRings()
{
    return SliceDrawing(true, {});
}

void SliceDrawing::setPoints(const QList<SlicePoint>& points, const QStringList& words)
{
    m_points = points;
    m_pointWords = words;
}

QColor SliceDrawing::defaultColor(qsizetype position)
{
    // M. Okabe and K. Ito, "Color Universal Design"
    static const std::array<QColor, 7> colors{
        QColor(0, 114, 178), QColor(213, 94, 0),   QColor(0, 158, 115), QColor(204, 121, 167),
        QColor(230, 159, 0), QColor(86, 180, 233), QColor(90, 90, 90)};
    return colors[static_cast<size_t>(position) % colors.size()];
}

/// Distinguishes a gamut from those before it that have the same colour.
Qt::PenStyle SliceDrawing::styleFor(const QColor& color) const
{
    constexpr std::array styles{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                Qt::DashDotDotLine};
    const auto before = std::count_if(m_curves.begin(), m_curves.end(),
                                      [&](const Curve& curve) { return curve.gamut.color == color; });
    return styles[static_cast<size_t>(before) % styles.size()];
}

void SliceDrawing::add(const Gamut& gamut, const GamutSlice& slice)
{
    if (!m_ofRings)
        m_curves.append({gamut, slice.rings, {}, styleFor(gamut.color)});
}

void SliceDrawing::add(const Gamut& gamut, const GamutRings& rings)
{
    if (!m_ofRings)
        return;
    if (m_ringLightness.isEmpty())
        m_ringLightness = rings.lightness;
    Curve curve{gamut, {}, rings.rings, styleFor(gamut.color)};
    if (!curve.thin.isEmpty())
        curve.strong.append(curve.thin.takeLast());
    m_curves.append(curve);
}

QString SliceDrawing::title() const
{
    if (!m_title.isEmpty())
        return m_title;
    if (m_ofRings)
        return QStringLiteral("Gamut rings in CIELAB (D50)");
    if (m_plane.kind == SlicePlane::Lightness)
        return QStringLiteral("Gamut slice at L* = %1 in CIELAB (D50)").arg(number(m_plane.value));
    return QStringLiteral("Gamut slice at hue h = %1%2 in CIELAB (D50)")
        .arg(number(m_plane.value))
        .arg(QChar(0xb0));
}

/// The bounds of all gamuts with a margin.
QRectF SliceDrawing::wantedRange() const
{
    if (m_range.isValid())
        return m_range;
    const bool ofHue = !m_ofRings && m_plane.kind == SlicePlane::Hue;
    constexpr double minExtent = 10.0; // of an empty drawing
    QRectF range =
        ofHue ? QRectF(0, 0, minExtent, 100) : QRectF(-minExtent, -minExtent, 2 * minExtent, 2 * minExtent);
    for (const Curve& curve : m_curves)
        for (const QPolygonF& ring : curve.strong)
            range |= ring.boundingRect();
    for (const SlicePoint& point : m_points)
        if (std::max(std::abs(point.place.x()), std::abs(point.place.y())) < maxPlace)
            range |= QRectF(point.place, QSizeF(0.01, 0.01)); // empty rectangles have no effect
    const double room = 0.02 * std::max(range.width(), range.height());
    return ofHue ? range.adjusted(0, 0, room, 0) : range.adjusted(-room, -room, room, room);
}

/// The size of a legend of all gamuts with at most @p lines each.
QSizeF SliceDrawing::legendSize(int lines) const
{
    qreal width = 0.0;
    qreal height = 0.0;
    for (const Curve& curve : m_curves) {
        width = std::max(width, widthOf(curve.gamut.name, true));
        const QStringList notes = lastOf(curve.gamut.notes, lines - 1);
        for (const QString& note : notes)
            width = std::max(width, widthOf(note));
        height += static_cast<qreal>(1 + notes.size()) * lineHeight + (lines > 1 ? gap : 0.0);
    }
    for (const QString& words : m_pointWords)
        width = std::max(width, widthOf(words));
    return {swatch + gap + width, height + static_cast<qreal>(m_pointWords.size()) * lineHeight};
}

/// The most detailed legend whose height is at most @p room: first notes are left out, then text becomes
/// smaller, then gamuts are only counted.
SliceDrawing::Legend SliceDrawing::legend(qreal room) const
{
    Legend legend{0, 1.0, m_curves.size(), {0.0, 0.0}};
    if (!m_legendVisible || m_curves.isEmpty())
        return legend;
    for (legend.lines = maxLegendLines; legend.lines > 1; --legend.lines)
        if (legendSize(legend.lines).height() <= room)
            break;
    legend.size = legendSize(legend.lines);
    if (legend.size.height() <= room)
        return legend;
    legend.scale = std::max(smallestLegend, room / legend.size.height());
    const auto fit = static_cast<qsizetype>(room / (legend.scale * lineHeight) + 1e-6) - m_pointWords.size();
    if (fit < m_curves.size())
        legend.shown = std::max<qsizetype>(fit - 1, 0); // a line for the number of the others
    legend.size = QSizeF(legend.size.width() * legend.scale, room);
    return legend;
}

SliceDrawing::Layout SliceDrawing::layout(const QRectF& area) const
{
    Layout l;
    const qreal shorter = std::min(area.width(), area.height());
    const qreal scale = std::max((m_textSize > 0.0 ? m_textSize : defaultTextShare * shorter) / text, 1e-6);
    l.toArea.translate(area.x(), area.y());
    l.toArea.scale(scale, scale);
    l.whole = QRectF(0, 0, area.width() / scale, area.height() / scale);

    const bool beside = area.width() > wideShape * area.height();
    const qreal top = m_legendVisible ? 3.0 * text : text;
    l.legend =
        legend(l.whole.height() - top - gap - (beside ? 0.0 : belowPlot + smallestPlot * l.whole.height()));
    const QSizeF& legend = l.legend.size;
    l.legendWidth = std::min(legend.width(), (beside ? 0.45 : 1.0) * l.whole.width() - 2 * gap);
    QRectF room = l.whole.adjusted(4.6 * text, top, -1.5 * text, -belowPlot);
    if (beside && !legend.isEmpty())
        room.setRight(l.whole.right() - l.legendWidth - 2.5 * text);
    else if (!legend.isEmpty())
        room.setBottom(
            std::max(room.bottom() - legend.height(), room.top() + smallestPlot * l.whole.height()));
    room.setSize(room.size().expandedTo(QSizeF(text, text)));

    // both axes have the same scale; the frame ends at ticks
    const QRectF wanted = wantedRange();
    double perUnit = std::min(room.width() / wanted.width(), room.height() / wanted.height());
    l.step = tickStep(tickDistance / perUnit);
    l.range = roundedUp(wanted, l.step);
    perUnit = std::min(room.width() / l.range.width(), room.height() / l.range.height());
    const QSizeF size(perUnit * l.range.width(), perUnit * l.range.height());
    l.plot = QRectF(QPointF(), size);
    l.plot.moveCenter(room.center());
    if (!beside)
        l.plot.moveTop(room.top()); // the legend is below the plot
    l.toPlot.translate(l.plot.left(), l.plot.bottom());
    l.toPlot.scale(perUnit, -perUnit);
    l.toPlot.translate(-l.range.left(), -l.range.top());
    const qreal lowest = l.whole.bottom() - gap - legend.height(); // where the whole legend is visible
    l.legendAt = beside ? QPointF(l.plot.right() + 1.5 * text, std::min(l.plot.top(), lowest))
                        : QPointF(l.plot.left(), l.plot.bottom() + belowPlot);
    return l;
}

QTransform SliceDrawing::planeToArea(const QRectF& area) const
{
    const Layout l = layout(area);
    return l.toPlot * l.toArea;
}

void SliceDrawing::paint(QPainter& painter, const QRectF& area) const
{
    const Layout l = layout(area);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.fillRect(area, m_palette.paper);
    painter.setTransform(l.toArea, true);

    paintTicks(painter, l);
    if (isFilledWithColors()) {
        QList<QPainterPath> outlines;
        for (const Curve& curve : m_curves)
            outlines.append(pathOf(curve.strong, l.toPlot));
        paintPlaneColors(painter, m_plane, outlines, l.toPlot, l.plot);
    }
    paintCurves(painter, l);
    paintAxes(painter, l);
    PointSymbols{0.55 * text, m_palette.ink, m_palette.paper}.paint(painter, m_points, l.toPlot, l.plot,
                                                                    smallFont());
    if (m_ofRings)
        paintRingLabels(painter, l);
    if (m_legendVisible)
        paintLegend(painter, l);
    painter.restore();
}

void SliceDrawing::paintTicks(QPainter& painter, const Layout& l) const
{
    painter.setFont(font());
    const QFontMetricsF metrics(font());
    const auto line = [&](const QPointF& from, const QPointF& to, bool zero) {
        painter.setPen(QPen(zero ? m_palette.ink : m_palette.grid, zero ? 1.0 : 0.8));
        painter.drawLine(l.toPlot.map(from), l.toPlot.map(to));
        painter.setPen(m_palette.ink);
    };
    const auto isZero = [](double value) { return std::abs(value) < 1e-9; };
    for (const bool zeros : {false, true}) { // draw the axes over the grid
        for (const double x : ticks(l.range.left(), l.range.right(), l.step))
            if (isZero(x) == zeros)
                line({x, l.range.top()}, {x, l.range.bottom()}, zeros);
        for (const double y : ticks(l.range.top(), l.range.bottom(), l.step))
            if (isZero(y) == zeros)
                line({l.range.left(), y}, {l.range.right(), y}, zeros);
    }
    for (const double x : ticks(l.range.left(), l.range.right(), l.step)) {
        const QString label = number(x);
        const qreal at = l.toPlot.map(QPointF(x, 0)).x();
        painter.drawText(QPointF(at - 0.5 * metrics.horizontalAdvance(label), l.plot.bottom() + 1.3 * text),
                         label);
    }
    for (const double y : ticks(l.range.top(), l.range.bottom(), l.step)) {
        const QString label = number(y);
        const qreal at = l.toPlot.map(QPointF(0, y)).y();
        painter.drawText(QPointF(l.plot.left() - gap - metrics.horizontalAdvance(label), at + 0.35 * text),
                         label);
    }
}

void SliceDrawing::paintAxes(QPainter& painter, const Layout& l) const
{
    painter.setPen(QPen(m_palette.ink, 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(l.plot);

    const bool ofHue = !m_ofRings && m_plane.kind == SlicePlane::Hue;
    const QString subscript = m_ofRings ? QStringLiteral("RSS") : QString();
    paintSymbol(painter, {l.plot.center().x(), l.plot.bottom() + 2.5 * text},
                ofHue ? QStringLiteral("C*") : QStringLiteral("a*"), subscript);
    painter.save();
    painter.translate(l.plot.left() - 3.6 * text, l.plot.center().y());
    painter.rotate(-90);
    paintSymbol(painter, {0, 0}, ofHue ? QStringLiteral("L*") : QStringLiteral("b*"), subscript);
    painter.restore();

    if (m_legendVisible) {
        painter.setFont(font(true));
        const QString words =
            QFontMetricsF(font(true)).elidedText(title(), Qt::ElideRight, l.whole.right() - l.plot.left());
        painter.drawText(QPointF(l.plot.left(), l.plot.top() - 0.9 * text), words);
    }
}

void SliceDrawing::paintCurves(QPainter& painter, const Layout& l) const
{
    painter.save();
    painter.setClipRect(l.plot);
    const auto pen = [](const QColor& color, qreal width, Qt::PenStyle style = Qt::SolidLine) {
        return QPen(color, width, style, style == Qt::SolidLine ? Qt::RoundCap : Qt::FlatCap, Qt::RoundJoin);
    };
    for (const Curve& curve : m_curves) {
        QColor fill = curve.gamut.color;
        fill.setAlphaF(static_cast<float>(fillOpacity));
        if (isFilledWithColors()) // a line of a similar colour could not be seen
            painter.strokePath(pathOf(curve.strong, l.toPlot),
                               pen(m_palette.paper, strongLine + 2.0 * casing));
        else
            painter.fillPath(pathOf(curve.strong, l.toPlot), fill);
    }
    painter.setBrush(Qt::NoBrush);
    for (const Curve& curve : m_curves) {
        painter.setPen(pen(curve.gamut.color, thinLine));
        for (const QPolygonF& ring : curve.thin)
            painter.drawPath(pathOf({ring}, l.toPlot));
        painter.setPen(pen(curve.gamut.color, strongLine, curve.style));
        painter.drawPath(pathOf(curve.strong, l.toPlot));
    }
    painter.restore();
}

void SliceDrawing::paintRingLabels(QPainter& painter, const Layout& l) const
{
    if (m_curves.isEmpty() || m_curves.first().strong.isEmpty())
        return;
    const QList<QPolygonF> rings = m_curves.first().thin + m_curves.first().strong;
    constexpr double direction = 337.5; // a hue at which the rings of typical devices are evenly spaced
    for (const qsizetype i : {qsizetype(0), rings.size() / 2 - 1, rings.size() - 1}) {
        if (i < 0)
            continue;
        const QPolygonF& ring = rings[i];
        const QPointF corner = ring[static_cast<qsizetype>(direction / 360.0 * double(ring.size()))];
        const QString label = QStringLiteral("L* %1").arg(number(m_ringLightness.value(i)));
        const QFont small = smallFont();
        QRectF box(0, 0, QFontMetricsF(small).horizontalAdvance(label) + 0.6 * gap, text);
        box.moveCenter(l.toPlot.map(corner));
        QColor paper = m_palette.paper;
        paper.setAlphaF(0.85f);
        painter.fillRect(box, paper);
        painter.setFont(small);
        painter.setPen(m_palette.ink);
        painter.drawText(QPointF(box.left() + 0.3 * gap, box.center().y() + 0.28 * text), label);
    }
}

void SliceDrawing::paintLegend(QPainter& painter, const Layout& l) const
{
    const qreal scale = l.legend.scale;
    painter.save();
    painter.translate(l.legendAt);
    painter.scale(scale, scale);
    QPointF at;
    constexpr qreal rounding = 0.01; // the widest text must not be elided for a rounding error
    const qreal room = std::max(l.legendWidth / scale - swatch - gap + rounding, text);
    const auto words = [&](const QString& line, bool bold) {
        painter.setFont(font(bold));
        painter.setPen(m_palette.ink);
        painter.drawText(at + QPointF(swatch + gap, text),
                         QFontMetricsF(font(bold)).elidedText(line, Qt::ElideMiddle, room));
        at.ry() += lineHeight;
    };
    for (const Curve& curve : m_curves.first(l.legend.shown)) {
        painter.setPen(QPen(curve.gamut.color, strongLine * 1.5, curve.style, Qt::FlatCap));
        painter.drawLine(at + QPointF(0, 0.65 * text), at + QPointF(swatch, 0.65 * text));
        words(curve.gamut.name, true);
        for (const QString& note : lastOf(curve.gamut.notes, l.legend.lines - 1))
            words(note, false);
        at.ry() += l.legend.lines > 1 ? gap : 0.0;
    }
    if (l.legend.shown < m_curves.size())
        painter.drawText(at + QPointF(swatch + gap, text),
                         QStringLiteral("and %1 more").arg(m_curves.size() - l.legend.shown));
    paintPointLegend(painter, at + QPointF(0, l.legend.shown < m_curves.size() ? lineHeight : 0.0));
    painter.restore();
}

void SliceDrawing::paintPointLegend(QPainter& painter, const QPointF& at) const
{
    const PointSymbols symbols{0.55 * text, m_palette.ink, m_palette.paper};
    for (qsizetype i = 0; i < m_pointWords.size(); ++i) {
        const QPointF line = at + QPointF(0, static_cast<qreal>(i) * lineHeight);
        symbols.paint(painter, line + QPointF(0.5 * swatch, 0.65 * text), Qt::lightGray, i == 0);
        painter.setFont(font());
        painter.setPen(m_palette.ink);
        painter.drawText(line + QPointF(swatch + gap, text), m_pointWords[i]);
    }
}
