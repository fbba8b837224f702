// SPDX-License-Identifier: Apache-2.0
#include "PictureSeries.h"

#include "WebPAnimation.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace {

constexpr int turnMs = 6000; // of an animation
constexpr int minFrameMs = 10;
constexpr int minDigits = 3;

} // namespace

PictureSeries::PictureSeries(const QString& name, PictureFormat format, const PictureNote& note, int count)
    : m_names(names(name, format, count)), m_format(format), m_note(note), m_count(count)
{
}

PictureSeries::~PictureSeries() = default;

QStringList PictureSeries::names(const QString& name, PictureFormat format, int count)
{
    if (format == PictureFormat::WebP)
        return {name};
    const auto digits = std::max<int>(minDigits, static_cast<int>(QString::number(count).size()));
    const QString suffix = QFileInfo(name).suffix();
    const qsizetype dot = suffix.isEmpty() ? name.size() : name.size() - suffix.size() - 1;
    QStringList names;
    for (int i = 1; i <= count; ++i)
        names.append(name.left(dot) + QStringLiteral("-%1").arg(i, digits, 10, QLatin1Char('0')) +
                     name.mid(dot));
    return names;
}

std::optional<Problem> PictureSeries::add(const QImage& picture)
{
    if (m_format == PictureFormat::WebP) {
        if (!m_animation)
            m_animation =
                std::make_unique<WebPAnimation>(picture.size(), std::max(minFrameMs, turnMs / m_count));
        return m_animation->add(picture) ? std::nullopt
                                         : std::optional(Problem(ProblemCode::PictureTooLarge));
    }
    const Result<QByteArray> bytes = PictureFile::bytes(picture, m_format, m_note);
    if (!bytes)
        return bytes.error();
    m_files.append({m_names[m_files.size()], *bytes});
    return std::nullopt;
}

Result<QList<std::pair<QString, QByteArray>>> PictureSeries::files()
{
    if (m_animation) {
        const QByteArray bytes = m_animation->bytes(m_note);
        if (bytes.isEmpty())
            return failure(ProblemCode::PictureTooLarge);
        m_files.append({m_names.first(), bytes});
    }
    return m_files;
}
