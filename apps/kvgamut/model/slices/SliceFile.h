// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>

class SliceDrawing;

/// Writes drawings to files. Equal drawings give equal bytes. @p size is in pixels; a pixel on a page is 1/96
/// inch. Text needs a QGuiApplication, which may use the offscreen platform.
namespace SliceFile {

QByteArray png(const SliceDrawing& drawing, const QSize& size);
QByteArray svg(const SliceDrawing& drawing, const QSize& size);
QByteArray pdf(const SliceDrawing& drawing, const QSize& size);

} // namespace SliceFile
