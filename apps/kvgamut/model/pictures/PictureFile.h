// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PictureNote.h"
#include "model/problems/Result.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <functional>
#include <optional>

class QPainter;
class QRectF;

/// The kinds of picture files that the program writes. Each is written by a library that the program is
/// linked to, so that none can be missing.
enum class PictureFormat
{
    Png,
    Jpeg, ///< has no transparency
    Tiff,
    WebP, ///< without loss
    Svg,  ///< the picture, with text and lines over it as vectors
    Pdf,  ///< the same; one page
};

/// Draws over the picture, in the pixels of @p area: lines and texts, which SVG and PDF keep as vectors.
using PictureOverlay = std::function<void(QPainter& painter, const QRectF& area)>;

/// Writes pictures whose colours are sRGB. Equal pictures and notes give equal bytes.
namespace PictureFile {

/// The format for the suffix of @p file, in any case: .png, .jpg, .jpeg, .tif, .tiff, .webp, .svg or .pdf.
std::optional<PictureFormat> formatOf(const QString& file);
/// The format named by @p word: a suffix without its dot.
std::optional<PictureFormat> formatNamed(const QString& word);
/// The suffixes that formatOf() knows, without their dots.
QStringList suffixes();
/// "'NAME' has none of the suffixes .png, .jpg...", for messages about names that formatOf() does not know.
QString suffixList();
/// Whether pictures of @p format can have transparent pixels.
bool hasTransparency(PictureFormat format);

/// The bytes of a file.
/// @param picture RGB32, or ARGB32 with straight alpha; its transparency is lost in JPEG
/// @param overlay drawn over the picture; may be empty. Text needs a QGuiApplication.
/// @return NoPictureToSave for a null picture, PictureTooLarge if there is not enough memory
Result<QByteArray> bytes(const QImage& picture, PictureFormat format, const PictureNote& note,
                         const PictureOverlay& overlay = {});

} // namespace PictureFile
