// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <annotation/Overlay.h>

#include <QtCore/QSizeF>
#include <QtGui/QFont>

/// The font of an overlay's texts. Not hinted, so that a text has the same shape at every resolution.
[[nodiscard]] QFont kvOverlayFont(const Overlay& overlay, bool bold);

/// Extent of a text: its advance, and the height of the font.
[[nodiscard]] QSizeF kvTextExtent(const Overlay& overlay, const QString& text, bool bold);

/// Width of the halo around texts.
[[nodiscard]] int kvHaloWidth(const Overlay& overlay);

/// @p text shortened in the middle to @p maxWidth: names often differ at their end.
[[nodiscard]] QString kvElided(const Overlay& overlay, const QString& text, bool bold, double maxWidth);
