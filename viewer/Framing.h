// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

/// @p camera moved, but not turned, so that what @p framing contains fits a picture of @p size; see
/// KVGamutView::framing(). A pure function. The camera is valid, the size and the framing are not empty.
[[nodiscard]] KVCamera kvFramedCamera(const KVCamera& camera, const KVFraming& framing, const QSize& size);
