// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutRings.h"
#include "GamutSlice.h"
#include "SlicePoints.h"

#include <QtCore/QRectF>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QTransform>

class QPainter;

/// A two-dimensional drawing of gamuts to scale, with axes and a legend of all gamuts, as detailed as fits:
/// cuts at a lightness (a*, b*) or at a hue (C*, L*), or gamut rings (a*RSS, b*RSS).
///
/// A value type. It draws with any QPainter: into an image, a widget, an SVG or a PDF. Text needs a
/// QGuiApplication, which may use the offscreen platform.
class SliceDrawing
{
public:
    /// One gamut of the drawing.
    struct Gamut
    {
        QString name;      ///< first line of its legend
        QStringList notes; ///< further lines: intent, white, area...
        QColor color;
    };
    /// All colours except those of the gamuts.
    struct Palette
    {
        QColor paper = Qt::white;
        QColor ink{0x22, 0x22, 0x22};  ///< text, frame and the axes through zero
        QColor grid{0xdd, 0xdd, 0xdd}; ///< lines at the ticks
    };

    /// What is inside the outlines.
    enum class Fill
    {
        Tint,   ///< a light tint of the gamut's colour
        Colors, ///< the colours of the plane, see PlaneColors; only in drawings of cuts
    };

    /// An empty drawing of cuts by @p plane.
    static SliceDrawing ofPlane(const SlicePlane& plane);
    /// An empty drawing of gamut rings.
    static SliceDrawing ofRings();
    /// Default colour of the gamut at @p position; the first seven are distinct, also for colour-blind
    /// people. Gamuts of the same colour differ by the dashes of their lines.
    static QColor defaultColor(qsizetype position);

    /// Adds the outlines of @p slice. Does nothing in a drawing of rings.
    void add(const Gamut& gamut, const GamutSlice& slice);
    /// Adds rings: the outermost with a thick line, the inner ones thin. Does nothing in a drawing of cuts.
    void add(const Gamut& gamut, const GamutRings& rings);

    void setFill(Fill fill) { m_fill = fill; }
    /// Shows points with their names, as far as there is room. @p words are the lines of the legend for
    /// points inside and outside.
    void setPoints(const QList<SlicePoint>& points, const QStringList& words);

    void setPalette(const Palette& palette) { m_palette = palette; }
    /// Shows this part of the plane (extended to the next ticks) instead of the bounds of all gamuts.
    void setRange(const QRectF& range) { m_range = range; }
    /// Height of text in units of the painter; 0 (the default): 1/45 of the drawing's shorter side.
    void setTextSize(qreal size) { m_textSize = size; }
    /// Whether to draw the legend; without it only the plot and its axes are drawn.
    void setLegendVisible(bool visible) { m_legendVisible = visible; }

    /// The line above the plot, for a window in another language; by default it is English.
    void setTitle(const QString& title) { m_title = title; }
    QString title() const;
    /// Title and legends, for people who cannot see the drawing.
    QString words() const;
    /// Fills @p area.
    void paint(QPainter& painter, const QRectF& area) const;
    /// From coordinates of the plane to those of a painter that draws into @p area.
    QTransform planeToArea(const QRectF& area) const;

private:
    struct Curve
    {
        Gamut gamut;
        QList<QPolygonF> strong; ///< thick lines around a light even-odd fill
        QList<QPolygonF> thin;
        Qt::PenStyle style = Qt::SolidLine; ///< of the thick lines
    };
    struct Layout;
    struct Legend;

    explicit SliceDrawing(bool rings, const SlicePlane& plane) : m_ofRings(rings), m_plane(plane) {}

    QRectF wantedRange() const;
    Legend legend(qreal room) const;
    QSizeF legendSize(int lines) const;
    bool isFilledWithColors() const { return m_fill == Fill::Colors && !m_ofRings; }
    Qt::PenStyle styleFor(const QColor& color) const;
    Layout layout(const QRectF& area) const;
    void paintAxes(QPainter& painter, const Layout& layout) const;
    void paintTicks(QPainter& painter, const Layout& layout) const;
    void paintCurves(QPainter& painter, const Layout& layout) const;
    void paintRingLabels(QPainter& painter, const Layout& layout) const;
    void paintLegend(QPainter& painter, const Layout& layout) const;
    void paintPointLegend(QPainter& painter, const QPointF& at) const;

    bool m_ofRings;
    SlicePlane m_plane;
    QList<Curve> m_curves;
    QList<double> m_ringLightness; ///< of the first gamut's rings
    Palette m_palette;
    QRectF m_range;
    QList<SlicePoint> m_points;
    QStringList m_pointWords;
    Fill m_fill = Fill::Tint;
    QString m_title;
    qreal m_textSize = 0.0;
    bool m_legendVisible = true;
};

inline QString SliceDrawing::words() const
{
    QStringList words{title()};
    for (const Curve& curve : m_curves)
        words.append((QStringList{curve.gamut.name} + curve.gamut.notes).join(QStringLiteral(", ")));
    return (words + m_pointWords).join(QStringLiteral("; "));
}
