// SPDX-License-Identifier: Apache-2.0
#include "PictureWriters.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include <tiffio.h>

namespace {

/// A file in memory and the place where the next byte is read or written.
struct TiffMemory
{
    QByteArray bytes;
    qint64 at = 0;
};

TiffMemory& memoryOf(thandle_t handle)
{
    return *static_cast<TiffMemory*>(handle);
}

tmsize_t tiffGet(thandle_t handle, void* to, tmsize_t count)
{
    TiffMemory& memory = memoryOf(handle);
    const qint64 size = std::clamp<qint64>(memory.bytes.size() - memory.at, 0, count);
    std::memcpy(to, memory.bytes.constData() + memory.at, static_cast<size_t>(size));
    memory.at += size;
    return static_cast<tmsize_t>(size);
}

tmsize_t tiffPut(thandle_t handle, void* from, tmsize_t count)
{
    TiffMemory& memory = memoryOf(handle);
    if (memory.at + count > memory.bytes.size())
        memory.bytes.resize(memory.at + count);
    std::memcpy(memory.bytes.data() + memory.at, from, static_cast<size_t>(count));
    memory.at += count;
    return count;
}

toff_t tiffGoTo(thandle_t handle, toff_t offset, int from)
{
    TiffMemory& memory = memoryOf(handle);
    const qint64 start = from == SEEK_CUR ? memory.at : from == SEEK_END ? memory.bytes.size() : 0;
    memory.at = start + static_cast<qint64>(offset);
    if (memory.at > memory.bytes.size())
        memory.bytes.append(memory.at - memory.bytes.size(), '\0'); // bytes between must not be undefined
    return static_cast<toff_t>(memory.at);
}

int tiffDone(thandle_t)
{
    return 0;
}

toff_t tiffLength(thandle_t handle)
{
    return static_cast<toff_t>(memoryOf(handle).bytes.size());
}

int tiffSilent(TIFF*, void*, const char*, const char*, va_list)
{
    return 1;
}

using TiffSettings = std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)>;

/// Without messages on standard error.
TiffSettings silentSettings()
{
    TiffSettings settings(TIFFOpenOptionsAlloc(), TIFFOpenOptionsFree);
    if (!settings)
        throw std::bad_alloc();
    TIFFOpenOptionsSetErrorHandlerExtR(settings.get(), tiffSilent, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(settings.get(), tiffSilent, nullptr);
    return settings;
}

void setTiffTags(TIFF* tiff, const QImage& picture, const PictureNote& note)
{
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, picture.width());
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, picture.height());
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, PictureWriters::channelsOf(picture));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW); // every reader knows it
    TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(tiff, TIFFTAG_XRESOLUTION, static_cast<double>(note.dotsPerInch));
    TIFFSetField(tiff, TIFFTAG_YRESOLUTION, static_cast<double>(note.dotsPerInch));
    if (PictureWriters::channelsOf(picture) == 4) {
        const uint16_t straight = EXTRASAMPLE_UNASSALPHA;
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &straight);
    }
    const QByteArray icc = PictureWriters::profile();
    TIFFSetField(tiff, TIFFTAG_ICCPROFILE, static_cast<uint32_t>(icc.size()), icc.constData());
    TIFFSetField(tiff, TIFFTAG_SOFTWARE, PictureNote::software().toUtf8().constData());
    TIFFSetField(tiff, TIFFTAG_IMAGEDESCRIPTION, PictureWriters::textOf(note).constData());
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
}

bool writeTiffRows(TIFF* tiff, const QImage& picture)
{
    std::vector<uchar> row(static_cast<size_t>(picture.width()) *
                           static_cast<size_t>(PictureWriters::channelsOf(picture)));
    for (int y = 0; y < picture.height(); ++y) {
        PictureWriters::copyRow(picture, y, row.data());
        if (TIFFWriteScanline(tiff, row.data(), static_cast<uint32_t>(y), 0) < 0)
            return false;
    }
    return TIFFFlush(tiff) != 0;
}

} // namespace

QByteArray PictureWriters::tiff(const QImage& picture, const PictureNote& note)
{
    TiffMemory memory;
    const TiffSettings settings = silentSettings();
    bool written = false;
    {
        // little-endian on every machine
        const std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff(
            TIFFClientOpenExt("", "wl", &memory, tiffGet, tiffPut, tiffGoTo, tiffDone, tiffLength, nullptr,
                              nullptr, settings.get()),
            TIFFClose);
        if (tiff) {
            setTiffTags(tiff.get(), picture, note);
            written = writeTiffRows(tiff.get(), picture);
        }
    }
    return written ? memory.bytes : QByteArray();
}
