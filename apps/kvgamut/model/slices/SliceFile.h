// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>

class SliceDrawing;

/// Drawings as files. The same drawing makes the same bytes. @p size is in pixels; a pixel of a page is
/// 1/96 inch. Text needs a QGuiApplication, which may be on the offscreen platform.
namespace SliceFile {

QByteArray png(const SliceDrawing& drawing, const QSize& size);
QByteArray svg(const SliceDrawing& drawing, const QSize& size);
QByteArray pdf(const SliceDrawing& drawing, const QSize& size);

} // namespace SliceFile
