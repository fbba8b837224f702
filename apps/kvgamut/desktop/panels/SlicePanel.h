// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/GamutListModel.h"
#include "desktop/models/PointLayer.h"
#include "model/problems/Problem.h"
#include "model/slices/SliceDrawing.h"

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <optional>

/// The section of the visible gamuts at one lightness, drawn beside the view, with the points of the files
/// that are near this lightness: circles inside the active gamut, crosses outside.
class SlicePanel : public QWidget
{
    Q_OBJECT
public:
    SlicePanel(const GamutListModel& gamuts, const PointLayer& points, QWidget* parent = nullptr);

    float lightness() const { return m_lightness; }
    void setLightness(float lightness);
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
    /// Marks a colour with a ring and a line to the nearest place; dashed if it is not at this lightness.
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
    SliceDrawing drawing() const;
    void addPoints(SliceDrawing& drawing) const;
    void paintMark(QPainter& painter) const;
    void redrawSoon();
    void redraw();

    const GamutListModel& m_gamuts;
    const PointLayer& m_points;
    float m_lightness = 50.0f;
    bool m_colored = false;
    std::optional<Mark> m_mark;
    SliceDrawing m_drawing;
    QTimer m_soon; ///< combines the changes of one event loop iteration
};
