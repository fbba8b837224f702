// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QColor>

/// @file
/// What is drawn on top of a picture. Pixels from the top left, at the resolution of the picture.

/// A filled rectangle.
struct OverlayBox
{
    QRectF rect;
    QColor color;

    bool operator==(const OverlayBox&) const = default;
};

/// A straight line.
struct OverlayLine
{
    QPointF from;
    QPointF to;
    double width = 1.0;
    QColor color;

    bool operator==(const OverlayLine&) const = default;
};

/// A line of text with a halo, so that it can be read on any ground.
struct OverlayText
{
    QString text;
    QPointF topLeft; ///< of its extent, without the halo; whole pixels
    bool bold = false;

    bool operator==(const OverlayText&) const = default;
};

/// Boxes, then lines, then texts.
struct Overlay
{
    QString fontFamily;  ///< empty: the font of the application
    int textHeight = 13; ///< pixel size of the font
    QColor ink;          ///< of all texts
    QColor halo;         ///< around all texts
    QList<OverlayBox> boxes;
    QList<OverlayLine> lines;
    QList<OverlayText> texts;

    [[nodiscard]] bool isEmpty() const { return boxes.isEmpty() && lines.isEmpty() && texts.isEmpty(); }
};
