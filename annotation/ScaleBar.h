// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>
#include <annotation/Overlay.h>

#include <QtCore/QSize>

#include <vector>

/// The numbers of a scale bar from @p low to @p high: @p high, and below it at most @p most multiples of a
/// round step, none so near to @p high that their texts would touch. Empty unless both are finite and @p low
/// is below @p high.
[[nodiscard]] std::vector<double> kvScaleBarNumbers(double low, double high, int most);

/// Adds the scale bar to the annotations of a picture of @p size pixels: at the top right, where bodies
/// rarely are. Without colours, and where it does not fit, there is none.
void kvAddScaleBar(Overlay& overlay, const KVScaleBar& bar, const QSize& size);
