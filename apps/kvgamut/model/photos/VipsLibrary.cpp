// SPDX-License-Identifier: Apache-2.0
#include "VipsLibrary.h"

#include <QtCore/QLibrary>

#include <optional>

namespace {

template <typename Function>
bool resolve(QLibrary& library, Function& function, const char* name)
{
    function = reinterpret_cast<Function>(library.resolve(name));
    return function != nullptr;
}

bool resolveAll(QLibrary& from, VipsLibrary& vips)
{
    return resolve(from, vips.init, "vips_init") &&
           resolve(from, vips.blockUntrusted, "vips_block_untrusted_set") &&
           resolve(from, vips.setBlocked, "vips_operation_block_set") &&
           resolve(from, vips.setMaxCache, "vips_cache_set_max") &&
           resolve(from, vips.takeErrors, "vips_error_buffer_copy") &&
           resolve(from, vips.sourceFromDescriptor, "vips_source_new_from_descriptor") &&
           resolve(from, vips.sourceFromMemory, "vips_source_new_from_memory") &&
           resolve(from, vips.loadJpeg, "vips_jpegload_source") &&
           resolve(from, vips.loadPng, "vips_pngload_source") &&
           resolve(from, vips.loadTiff, "vips_tiffload_source") &&
           resolve(from, vips.loadWebP, "vips_webpload_source") &&
           resolve(from, vips.loadHeif, "vips_heifload_source") &&
           resolve(from, vips.loadJpegXl, "vips_jxlload_source") &&
           resolve(from, vips.convert, "vips_colourspace") &&
           resolve(from, vips.width, "vips_image_get_width") &&
           resolve(from, vips.height, "vips_image_get_height") &&
           resolve(from, vips.bands, "vips_image_get_bands") &&
           resolve(from, vips.format, "vips_image_get_format") &&
           resolve(from, vips.interpretation, "vips_image_get_interpretation") &&
           resolve(from, vips.coding, "vips_image_get_coding") &&
           resolve(from, vips.pages, "vips_image_get_n_pages") &&
           resolve(from, vips.hasAlpha, "vips_image_hasalpha") &&
           resolve(from, vips.typeOf, "vips_image_get_typeof") &&
           resolve(from, vips.blob, "vips_image_get_blob") &&
           resolve(from, vips.newRegion, "vips_region_new") &&
           resolve(from, vips.prepare, "vips_region_prepare") &&
           resolve(from, vips.unref, "g_object_unref") && resolve(from, vips.free, "g_free") &&
           resolve(from, vips.setLogHandler, "g_log_set_handler");
}

/// Warnings of readers, for example about an unknown tag. Those that matter fail the reading.
void dropMessage(const gchar*, GLogLevelFlags, const gchar*, gpointer) {}

std::optional<VipsLibrary> load()
{
    QLibrary library(QStringLiteral("vips"), 42); // stays loaded
    VipsLibrary vips{};
    if (!library.load() || !resolveAll(library, vips))
        return {};
    vips.setLogHandler("VIPS", static_cast<GLogLevelFlags>(G_LOG_LEVEL_WARNING | G_LOG_LEVEL_INFO),
                       dropMessage, nullptr);
    if (vips.init("kvgamut") != 0)
        return {};
    vips.blockUntrusted(TRUE);
    // libvips trusts no reader of JPEG XL; that of libjxl, which it uses, is fuzzed by its own project
    vips.setBlocked("VipsForeignLoadJxl", FALSE);
    vips.setMaxCache(0); // each photo is read once; a cache would keep its file open
    return vips;
}

} // namespace

const VipsLibrary* VipsLibrary::get()
{
    static const std::optional<VipsLibrary> library = load();
    return library ? &*library : nullptr;
}

QString VipsLibrary::lastError() const
{
    char* text = takeErrors();
    const QString lines = QString::fromUtf8(text).trimmed();
    free(text);
    return lines.section(QLatin1Char('\n'), 0, 0);
}
