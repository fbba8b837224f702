// SPDX-License-Identifier: Apache-2.0
#include "BackgroundRemoval.h"

#include <algorithm>

namespace {

QRgb solved(QRgb onBlack, QRgb onWhite)
{
    const int shine = qRed(onWhite) - qRed(onBlack) + qGreen(onWhite) - qGreen(onBlack) + qBlue(onWhite) -
                      qBlue(onBlack); // sum of three channels; a third is the background's share, 0..255
    const int alpha = std::clamp(255 - (shine + 1) / 3, 0, 255);
    if (alpha == 0)
        return qRgba(0, 0, 0, 0);
    const auto straight = [alpha](int light) { return std::min(255, (light * 255 + alpha / 2) / alpha); };
    return qRgba(straight(qRed(onBlack)), straight(qGreen(onBlack)), straight(qBlue(onBlack)), alpha);
}

} // namespace

QImage withoutBackground(QImage onBlack, const QImage& onWhite)
{
    if (onBlack.isNull() || onBlack.format() != QImage::Format_RGB32 ||
        onWhite.format() != QImage::Format_RGB32 || onBlack.size() != onWhite.size())
        return {};
    QImage result = std::move(onBlack);
    result.reinterpretAsFormat(QImage::Format_ARGB32);
    for (int y = 0; y < result.height(); ++y) {
        auto* pixels = reinterpret_cast<QRgb*>(result.scanLine(y));
        const auto* white = reinterpret_cast<const QRgb*>(onWhite.constScanLine(y));
        std::transform(pixels, pixels + result.width(), white, pixels, solved);
    }
    return result;
}
