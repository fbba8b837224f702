// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../../image/Baseline.h"
#include "desktop/MainWindow.h"

#include <QtGui/QPainter>

namespace kvtest {

/// Versions of Qt and of fonts draw controls a little differently.
inline constexpr PictureThreshold sameWindow{6.0, 0.06};

/// The window without its frame, with the picture of the view in its place.
inline QImage pictureOf(MainWindow& window)
{
    QImage picture = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const auto* view = window.findChild<QWidget*>(QStringLiteral("view"));
    QPainter painter(&picture);
    if (view->isVisible())
        painter.drawImage(view->mapTo(&window, QPoint()), window.viewer().picture());
    return picture;
}

} // namespace kvtest
