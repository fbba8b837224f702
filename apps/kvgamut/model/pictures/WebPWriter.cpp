// SPDX-License-Identifier: Apache-2.0
#include "PictureWriters.h"
#include "WebPCodec.h"

namespace {

/// Frees what the library allocates.
struct WebPBytes : WebPMemoryWriter
{
    WebPBytes() : WebPMemoryWriter{} { WebPMemoryWriterInit(this); }
    ~WebPBytes() { WebPMemoryWriterClear(this); }
    Q_DISABLE_COPY_MOVE(WebPBytes)
};

} // namespace

QByteArray PictureWriters::webp(const QImage& picture, const PictureNote& note)
{
    WebPConfig config;
    WebPCodec::Image image;
    WebPBytes bytes;
    if (!WebPCodec::configure(config) || !image.take(picture))
        return {};
    image.writer = WebPMemoryWrite;
    image.custom_ptr = &bytes;
    if (WebPEncode(&config, &image) == 0)
        return {};
    return WebPCodec::described({bytes.mem, bytes.size}, note);
}
