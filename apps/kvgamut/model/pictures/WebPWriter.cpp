// SPDX-License-Identifier: Apache-2.0
#include "PictureWriters.h"

#include <algorithm>
#include <memory>

#include <webp/encode.h>
#include <webp/mux.h>

namespace {

constexpr int webpEffort = 3; // of 0 to 9: a large picture takes seconds, not minutes

/// Frees what the library allocates.
struct WebPImage : WebPPicture
{
    WebPImage() : WebPPicture{} { WebPPictureInit(this); }
    ~WebPImage() { WebPPictureFree(this); }
    Q_DISABLE_COPY_MOVE(WebPImage)
};
struct WebPBytes : WebPMemoryWriter
{
    WebPBytes() : WebPMemoryWriter{} { WebPMemoryWriterInit(this); }
    ~WebPBytes() { WebPMemoryWriterClear(this); }
    Q_DISABLE_COPY_MOVE(WebPBytes)
};

bool takePixels(WebPImage& image, const QImage& picture)
{
    image.use_argb = 1;
    image.width = picture.width();
    image.height = picture.height();
    if (WebPPictureAlloc(&image) == 0)
        return false;
    const bool alpha = picture.hasAlphaChannel();
    for (int y = 0; y < picture.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        std::transform(from, from + picture.width(),
                       image.argb + static_cast<ptrdiff_t>(y) * image.argb_stride,
                       [alpha](QRgb pixel) { return alpha ? pixel : pixel | 0xff000000u; });
    }
    return true;
}

bool encodeWebP(const QImage& picture, WebPBytes& bytes)
{
    WebPConfig config;
    WebPImage image;
    if (WebPConfigInit(&config) == 0 || WebPConfigLosslessPreset(&config, webpEffort) == 0 ||
        !takePixels(image, picture))
        return false;
    image.writer = WebPMemoryWrite;
    image.custom_ptr = &bytes;
    return WebPEncode(&config, &image) != 0;
}

WebPData dataOf(const QByteArray& bytes)
{
    return {reinterpret_cast<const uint8_t*>(bytes.constData()), static_cast<size_t>(bytes.size())};
}

} // namespace

QByteArray PictureWriters::webp(const QImage& picture, const PictureNote& note)
{
    WebPBytes bytes;
    const std::unique_ptr<WebPMux, decltype(&WebPMuxDelete)> mux(WebPMuxNew(), WebPMuxDelete);
    if (!mux || !encodeWebP(picture, bytes))
        return {};
    const QByteArray icc = profile();
    const QByteArray xmp = xmpOf(note);
    const WebPData pixels{bytes.mem, bytes.size};
    const WebPData iccData = dataOf(icc);
    const WebPData xmpData = dataOf(xmp);
    WebPData whole{nullptr, 0};
    QByteArray result;
    if (WebPMuxSetImage(mux.get(), &pixels, 0) == WEBP_MUX_OK &&
        WebPMuxSetChunk(mux.get(), "ICCP", &iccData, 0) == WEBP_MUX_OK &&
        WebPMuxSetChunk(mux.get(), "XMP ", &xmpData, 0) == WEBP_MUX_OK &&
        WebPMuxAssemble(mux.get(), &whole) == WEBP_MUX_OK)
        result = QByteArray(reinterpret_cast<const char*>(whole.bytes), static_cast<qsizetype>(whole.size));
    WebPDataClear(&whole);
    return result;
}
