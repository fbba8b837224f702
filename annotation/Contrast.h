// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QColor>

/// Contrast ratio of two colours, from 1 (equal) to 21 (black and white), without regard to alpha; see the
/// Web Content Accessibility Guidelines (WCAG) 2.1, "contrast ratio". Text needs at least 4.5.
[[nodiscard]] double kvContrast(const QColor& p, const QColor& q);

/// Black or white, whichever has more contrast to @p background: at least 4.58.
[[nodiscard]] QColor kvInkOn(const QColor& background);
