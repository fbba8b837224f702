// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <QtGui/QImage>

/// The picture of @p view in @p size pixels on a transparent ground, with its annotations. The window does
/// not change.
/// @return with straight alpha; null where KVGamut3DViewer::picture() is null
[[nodiscard]] QImage transparentPicture(KVGamutView& view, const QSize& size);
