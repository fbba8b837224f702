// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutRings.h"
#include "GamutSlice.h"
#include "SliceDrawing.h"
#include "model/problems/Problem.h"

#include <optional>

/// Cuts of gamuts by one plane, or their gamut rings, as data and as a drawing.
class SliceReport
{
public:
    /// Cuts by @p plane; without one, gamut rings.
    explicit SliceReport(const std::optional<SlicePlane>& plane) : m_plane(plane) {}

    /// Adds @p gamut with the name @p name. An invalid colour means the default for its position.
    void add(const QString& name, const KVGamut::GamutObject& gamut, const QColor& color = {});

    /// How a drawing of cuts fills the gamuts.
    void setFill(SliceDrawing::Fill fill) { m_fill = fill; }
    /// Adds those of @p points that are near the plane (see slicePoints()) to the drawing. @p gamut is the
    /// first one that was added.
    void addPoints(const QList<MeasuredPoint>& points, double within, const KVGamut::GamutObject& gamut);

    /// RFC 4180, a row for each point. Cuts: profile, ring (from 1), L, a, b, C; the last point of a ring
    /// connects to its first. Rings: profile, lightness, hue, a_rss, b_rss, c_rss.
    QByteArray csv() const;
    /// An array with an object for each gamut: profile, intent, bpc, white; for a cut also lightness or hue,
    /// area and rings (each an array of [L, a, b]); for rings also volume and rings (each an object with
    /// lightness, area and points [a_rss, b_rss] at equal steps of hue).
    QByteArray json() const;
    /// A note for each gamut that the plane misses: NothingAtLightness or NothingAtHue.
    QList<Problem> misses() const;
    /// With a legend that states profile, intent, white, and area or volume.
    SliceDrawing drawing() const;

private:
    struct Item
    {
        QString name;
        QColor color;
        KVGamut::Report report;
        GamutSlice slice; ///< of a report of cuts
        GamutRings rings; ///< of a report of rings
        float lowest = 0.0f;
        float highest = 0.0f; ///< L* of the gamut
    };

    QStringList legendNames() const;
    QStringList pointWords(const QString& name) const;
    SliceDrawing::Gamut legendOf(const Item& item, const QString& name) const;

    std::optional<SlicePlane> m_plane;
    QList<Item> m_items;
    QList<SlicePoint> m_points;
    bool m_hasPoints = false; ///< addPoints() was called
    SliceDrawing::Fill m_fill = SliceDrawing::Fill::Tint;
};
