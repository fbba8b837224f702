// SPDX-License-Identifier: Apache-2.0
#include "WebPCodec.h"

#include "PictureWriters.h"

#include <algorithm>
#include <memory>

namespace {

constexpr int webpEffort = 3; // of 0 to 9

WebPData webpDataOf(const QByteArray& bytes)
{
    return {reinterpret_cast<const uint8_t*>(bytes.constData()), static_cast<size_t>(bytes.size())};
}

} // namespace

WebPCodec::Image::Image() : WebPPicture{}
{
    WebPPictureInit(this);
}

WebPCodec::Image::~Image()
{
    WebPPictureFree(this);
}

bool WebPCodec::Image::take(const QImage& picture)
{
    use_argb = 1;
    width = picture.width();
    height = picture.height();
    if (WebPPictureAlloc(this) == 0)
        return false;
    const bool alpha = picture.hasAlphaChannel();
    for (int row = 0; row < picture.height(); ++row) {
        const auto* from = reinterpret_cast<const QRgb*>(picture.constScanLine(row));
        std::transform(from, from + picture.width(), argb + static_cast<ptrdiff_t>(row) * argb_stride,
                       [alpha](QRgb pixel) { return alpha ? pixel : pixel | 0xff000000u; });
    }
    return true;
}

bool WebPCodec::configure(WebPConfig& config)
{
    return WebPConfigInit(&config) != 0 && WebPConfigLosslessPreset(&config, webpEffort) != 0;
}

QByteArray WebPCodec::described(const WebPData& file, const PictureNote& note)
{
    const std::unique_ptr<WebPMux, decltype(&WebPMuxDelete)> mux(WebPMuxCreate(&file, 0), WebPMuxDelete);
    if (!mux)
        return {};
    const QByteArray icc = PictureWriters::profile();
    const QByteArray xmp = PictureWriters::xmpOf(note);
    const WebPData iccData = webpDataOf(icc);
    const WebPData xmpData = webpDataOf(xmp);
    WebPData whole{nullptr, 0};
    QByteArray result;
    if (WebPMuxSetChunk(mux.get(), "ICCP", &iccData, 0) == WEBP_MUX_OK &&
        WebPMuxSetChunk(mux.get(), "XMP ", &xmpData, 0) == WEBP_MUX_OK &&
        WebPMuxAssemble(mux.get(), &whole) == WEBP_MUX_OK)
        result = QByteArray(reinterpret_cast<const char*>(whole.bytes), static_cast<qsizetype>(whole.size));
    WebPDataClear(&whole);
    return result;
}
