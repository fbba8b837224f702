// SPDX-License-Identifier: Apache-2.0
#include "WebPAnimation.h"

#include "WebPCodec.h"

struct WebPAnimation::Encoder
{
    explicit Encoder(const QSize& size)
    {
        WebPAnimEncoderOptions options;
        if (WebPAnimEncoderOptionsInit(&options) != 0)
            encoder = WebPAnimEncoderNew(size.width(), size.height(), &options);
    }
    ~Encoder() { WebPAnimEncoderDelete(encoder); }
    Q_DISABLE_COPY_MOVE(Encoder)

    WebPAnimEncoder* encoder = nullptr;
};

WebPAnimation::WebPAnimation(const QSize& size, int frameMs)
    : m_encoder(std::make_unique<Encoder>(size)), m_frameMs(frameMs)
{
}

WebPAnimation::~WebPAnimation() = default;

bool WebPAnimation::add(const QImage& picture)
{
    WebPConfig config;
    WebPCodec::Image image;
    return m_encoder->encoder && WebPCodec::configure(config) && image.take(picture) &&
           WebPAnimEncoderAdd(m_encoder->encoder, &image, m_frameMs * m_frames++, &config) != 0;
}

QByteArray WebPAnimation::bytes(const PictureNote& note)
{
    WebPData file{nullptr, 0};
    QByteArray result;
    // the last frame ends where another one would begin
    if (m_encoder->encoder &&
        WebPAnimEncoderAdd(m_encoder->encoder, nullptr, m_frameMs * m_frames, nullptr) != 0 &&
        WebPAnimEncoderAssemble(m_encoder->encoder, &file) != 0)
        result = WebPCodec::described(file, note);
    WebPDataClear(&file);
    return result;
}
