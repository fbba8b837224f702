// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PictureComparison.h"

#include <QtCore/QString>
#include <QtGui/QImage>

namespace kvtest {

/// The software renderer gives the same bytes in every run. The threshold allows for other versions of it,
/// which change antialiased pixels along edges by a fraction of their contrast. Edges must cover less than 1
/// % of the picture.
inline constexpr PictureThreshold edgesOnly{0.25, 0.008};

/// The reviewed picture @p name; null if there is none.
QImage baseline(const QString& name);

/// Fails the running test unless @p actual is like the baseline @p name; then both and their difference are
/// left in a folder that the message names. With KV_ACCEPT_BASELINES=1 in the environment, @p actual becomes
/// the baseline first. Needs the environment that ctest sets.
void expectBaseline(const QString& name, const QImage& actual, const PictureThreshold& threshold = edgesOnly);

} // namespace kvtest
