// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

class ViewerScene;

/// What a viewer tells the views attached to it.
class ViewerEvents : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    void themeChanged();
};
