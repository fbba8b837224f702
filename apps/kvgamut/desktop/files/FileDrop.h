// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>

/// Takes the files that are dropped onto the objects it watches: widgets, and windows that are no
/// widgets, which would swallow them.
class FileDrop : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Also everything that is, or comes to be, a child window of a watched window.
    void watch(QObject* target);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void dropped(QStringList files);
};
