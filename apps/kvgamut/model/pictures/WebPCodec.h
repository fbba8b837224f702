// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PictureNote.h"

#include <QtCore/QByteArray>
#include <QtGui/QImage>

#include <webp/encode.h>
#include <webp/mux.h>

/// What pictures and animations in WebP have in common.
namespace WebPCodec {

/// The pixels of a picture. Frees what the library allocates.
struct Image : WebPPicture
{
    Image();
    ~Image();
    Q_DISABLE_COPY_MOVE(Image)
    /// @return false if memory does not suffice
    [[nodiscard]] bool take(const QImage& picture);
};

/// Without loss. A large picture takes seconds, not minutes.
[[nodiscard]] bool configure(WebPConfig& config);
/// @p file with the profile of its colours and the note; empty if memory does not suffice.
QByteArray described(const WebPData& file, const PictureNote& note);

} // namespace WebPCodec
