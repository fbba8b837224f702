// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PictureFile.h"

#include <QtCore/QList>

#include <memory>
#include <utility>

class WebPAnimation;

/// The pictures of a turntable: one animated WebP, or a numbered file for each picture. Everything stays in
/// memory, compressed, so that a run that is ended before the last picture writes nothing.
class PictureSeries
{
public:
    /// @param name of the output; @param count of the pictures
    PictureSeries(const QString& name, PictureFormat format, const PictureNote& note, int count);
    ~PictureSeries();
    Q_DISABLE_COPY_MOVE(PictureSeries)

    /// The files that a series of @p count pictures has: "a.png" becomes "a-001.png", "a-002.png"..., with as
    /// many digits as the last number needs, at least three. An animation has one: @p name.
    static QStringList names(const QString& name, PictureFormat format, int count);

    /// Adds the next picture. @return why that fails
    [[nodiscard]] std::optional<Problem> add(const QImage& picture);
    /// Names and bytes of the files. Call it once, after the last picture.
    [[nodiscard]] Result<QList<std::pair<QString, QByteArray>>> files();

private:
    const QStringList m_names;
    const PictureFormat m_format;
    const PictureNote m_note;
    const int m_count;
    std::unique_ptr<WebPAnimation> m_animation; ///< made by the first picture, which has the size
    QList<std::pair<QString, QByteArray>> m_files;
};
