// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtGui/QColor>

/// What a window keeps for the next one, in the user's file of settings `window`.
struct WindowMemory
{
    QByteArray geometry;     ///< QWidget::saveGeometry(); empty: none
    QByteArray panels;       ///< QMainWindow::saveState(); empty: none
    QColor background;       ///< of the view; invalid: none
    QString folder;          ///< of the dialogs that open and save files; empty: none
    bool isAnnotated = true; ///< whether scales and legend are shown
    bool reloads = false;    ///< whether files that change are read again without a question

    QByteArray toJson() const;
    /// Values that are missing or wrong have their defaults.
    static WindowMemory fromJson(const QByteArray& json);

    static WindowMemory read();
    void write() const;

    bool operator==(const WindowMemory&) const = default;
};
