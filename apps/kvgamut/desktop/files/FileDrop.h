// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>

/// Accepts files that are dropped onto the objects it watches: widgets, and windows that are not widgets.
class FileDrop : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Watches @p target; if it is a window, also its child windows.
    void watch(QObject* target);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void dropped(QStringList files);
    /// Files are dragged over one of the objects, or no longer.
    void hovered(bool isOver);
};
