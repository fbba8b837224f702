// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PictureNote.h"

#include <QtCore/QByteArray>
#include <QtGui/QImage>

#include <memory>

/// An animated WebP without loss, which repeats for ever. Equal frames give equal bytes.
class WebPAnimation
{
public:
    /// @param frameMs how long each frame is shown
    WebPAnimation(const QSize& size, int frameMs);
    ~WebPAnimation();
    Q_DISABLE_COPY_MOVE(WebPAnimation)

    /// @param picture RGB32 or ARGB32, of the size of the animation. @return false if memory does not suffice
    [[nodiscard]] bool add(const QImage& picture);
    /// The bytes of the file; empty if memory does not suffice. Call it once, after the last frame.
    [[nodiscard]] QByteArray bytes(const PictureNote& note);

private:
    struct Encoder;
    std::unique_ptr<Encoder> m_encoder;
    int m_frameMs;
    int m_frames = 0;
};
