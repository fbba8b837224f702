// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"
#include "desktop/models/PointLayer.h"
#include "desktop/models/SectionKind.h"
#include "model/problems/Problem.h"
#include "model/slices/SliceDrawing.h"

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <optional>

/// The section of the gamuts that are seen, drawn beside the view: at one lightness, at one hue, or as gamut
/// rings. With the points of the files that are near: circles inside the active gamut, crosses outside.
class SlicePanel : public QWidget
{
    Q_OBJECT
public:
    SlicePanel(const GamutListModel& gamuts, const PointLayer& points, QWidget* parent = nullptr);

    /// Lightness at first.
    SectionKind kind() const { return m_kind; }
    void setKind(SectionKind kind);
    float lightness() const { return m_lightness; }
    void setLightness(float lightness);
    /// In degrees from +a* towards +b*.
    float hue() const { return m_hue; }
    void setHue(float degrees);
    /// Whether all sections have the same scale, instead of one that fits their content. False at first.
    bool isScaleFixed() const { return m_scaleFixed; }
    void setScaleFixed(bool fixed);
    /// Whether the section is filled with the colours of its lightness. False at first.
    bool isColored() const { return m_colored; }
    void setColored(bool colored);

    /// A colour to mark, and its nearest place on a surface.
    struct Mark
    {
        QVector3D lab;
        std::optional<QVector3D> nearest;
        bool operator==(const Mark&) const = default;
    };
    /// Marks a colour with a ring and a line to the nearest place; dashed if it is not in the section. Rings
    /// do not show it.
    void setMark(const std::optional<Mark>& mark);

    /// The section as a document: SVG or PDF, by the suffix of @p file.
    /// @return the problem, which names the file; nullopt on success
    std::optional<Problem> save(const QString& file) const;

    QSize sizeHint() const override { return {330, 330}; }

Q_SIGNALS:
    /// The colour under the pointer; nullopt when the pointer has left the plot.
    void hovered(std::optional<QVector3D> lab);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    SlicePlane plane() const;
    SliceDrawing emptyDrawing() const;
    SliceDrawing drawing() const;
    void addGamut(SliceDrawing& drawing, int row) const;
    void addPoints(SliceDrawing& drawing) const;
    void paintMark(QPainter& painter) const;
    void redrawSoon();
    void redraw();

    const GamutListModel& m_gamuts;
    const PointLayer& m_points;
    SectionKind m_kind = SectionKind::Lightness;
    float m_lightness = 50.0f;
    float m_hue = 0.0f;
    bool m_scaleFixed = false;
    bool m_colored = false;
    std::optional<Mark> m_mark;
    SliceDrawing m_drawing;
    QTimer m_soon; ///< combines the changes of one event loop iteration
};
