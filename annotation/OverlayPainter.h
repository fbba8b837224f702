// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <annotation/Overlay.h>

#include <QtGui/QImage>

class QPainter;

/// A text of @p overlay with its halo on a transparent ground. Its top left pixel belongs to the halo: it is
/// kvHaloWidth() pixels to the left and above the text's. Null if there is not enough memory.
[[nodiscard]] QImage kvTextImage(const Overlay& overlay, const OverlayText& text);

/// Paints @p overlay on a picture of its resolution, as a window shows it.
void kvPaintOverlay(QImage& picture, const Overlay& overlay);

/// Draws @p overlay as vectors, texts as outlines, for formats such as SVG and PDF.
void kvDrawOverlay(QPainter& painter, const Overlay& overlay);
