// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <annotation/OverlayFont.h>

#include <QtCore/QRectF>

namespace kvtest {

/// The place of a text in the picture, in logical pixels.
inline QRectF rectOf(const Overlay& overlay, const OverlayText& text)
{
    return {text.topLeft, kvTextExtent(overlay, text.text, text.bold)};
}

} // namespace kvtest
