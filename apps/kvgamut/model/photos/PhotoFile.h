// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtCore/QString>

#include <cstddef>
#include <functional>
#include <memory>
#include <span>

/// What the header of a photo says.
struct PhotoFacts
{
    enum class Space
    {
        Grey,
        Rgb,
        Cmyk,
        Lab, ///< L*, a*, b* as floating point, L* 0..100
    };
    enum class Sample
    {
        Byte,  ///< 0..255
        Word,  ///< 0..65535
        Float, ///< 0..1, except for Lab
    };
    QString format; ///< "JPEG", "PNG", "TIFF", "WebP", "HEIF" or "JPEG XL"
    QSize size;     ///< pixels
    Space space = Space::Rgb;
    Sample sample = Sample::Byte;
    int channels = 3;   ///< without those of no meaning for colour
    int stored = 3;     ///< with them
    int alpha = -1;     ///< the position of the opacity among the stored ones; -1 without
    int pages = 1;      ///< only the first is read
    QByteArray profile; ///< the embedded ICC profile; empty if there is none
};

/// A photo of any size, read in bands of some rows from the top to the bottom, so that only a band is in
/// memory. JPEG, PNG, TIFF (strips and tiles; 8 and 16 bits, floating point; grey, RGB, CMYK, Lab) and WebP;
/// HEIF and JPEG XL where the system's libvips reads them. Progressive JPEG, interlaced PNG, WebP, HEIF and
/// JPEG XL are decoded as a whole, and so have a lower limit of pixels; InputLimits.h has both.
///
/// Problems do not name the file. Callable from any thread, one at a time for each object.
class PhotoFile
{
public:
    /// Opens the file @p name, or the first picture of "-", standard input. A pipe is read into memory.
    /// @param task cancels reading; may be null
    static Result<PhotoFile> open(const QString& name, const KVCompletionProtocolPtr& task = {});
    /// The photo with the content @p content.
    static Result<PhotoFile> ofContent(const QByteArray& content);

    /// Whether a file that begins with @p start, 12 bytes or more, is in one of the formats.
    static bool isPhoto(const QByteArray& start);

    PhotoFile(PhotoFile&&) noexcept;
    PhotoFile& operator=(PhotoFile&&) noexcept;
    ~PhotoFile();

    const PhotoFacts& facts() const;

    /// The SHA-256 of the file, which is read once more for it. Empty if that fails or is cancelled.
    QByteArray hash(const KVCompletionProtocolPtr& task) const;

    /// A band: rows of samples, PhotoFacts::stored for each pixel.
    struct Band
    {
        int firstRow = 0;
        int rows = 0;
        const std::byte* data = nullptr; ///< the first sample of the first row
        qsizetype bytesPerRow = 0;       ///< from one row to the next
    };
    /// Calls @p use for each band from the top to the bottom, and stops with its problem. Can be called once.
    /// @param task progress and cancellation; may be null
    Result<void> read(const std::function<Result<void>(const Band&)>& use,
                      const KVCompletionProtocolPtr& task);

private:
    struct Private;
    explicit PhotoFile(std::unique_ptr<Private> d);
    std::unique_ptr<Private> d;
};
