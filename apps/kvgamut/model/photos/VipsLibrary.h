// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vips/vips.h>

#include <QtCore/QString>

/// The functions of libvips that the program calls. The library is loaded when the first photo is read,
/// because it has some hundred dependencies that other commands do not need.
struct VipsLibrary
{
    /// Null if libvips is not installed. Callable from any thread.
    static const VipsLibrary* get();

    /// What failed last, one line; empty if unknown.
    QString lastError() const;

    decltype(&vips_init) init;
    decltype(&vips_block_untrusted_set) blockUntrusted;
    decltype(&vips_operation_block_set) setBlocked;
    decltype(&vips_cache_set_max) setMaxCache;
    decltype(&vips_error_buffer_copy) takeErrors;
    decltype(&vips_source_new_from_descriptor) sourceFromDescriptor;
    decltype(&vips_source_new_from_memory) sourceFromMemory;
    decltype(&vips_jpegload_source) loadJpeg;
    decltype(&vips_pngload_source) loadPng;
    decltype(&vips_tiffload_source) loadTiff;
    decltype(&vips_webpload_source) loadWebP;
    decltype(&vips_heifload_source) loadHeif;
    decltype(&vips_jxlload_source) loadJpegXl;
    decltype(&vips_colourspace) convert;
    decltype(&vips_image_get_width) width;
    decltype(&vips_image_get_height) height;
    decltype(&vips_image_get_bands) bands;
    decltype(&vips_image_get_format) format;
    decltype(&vips_image_get_interpretation) interpretation;
    decltype(&vips_image_get_coding) coding;
    decltype(&vips_image_get_n_pages) pages;
    decltype(&vips_image_hasalpha) hasAlpha;
    decltype(&vips_image_get_typeof) typeOf;
    decltype(&vips_image_get_blob) blob;
    decltype(&vips_region_new) newRegion;
    decltype(&vips_region_prepare) prepare;
    decltype(&g_object_unref) unref;
    decltype(&g_free) free;
    decltype(&g_log_set_handler) setLogHandler;
};
