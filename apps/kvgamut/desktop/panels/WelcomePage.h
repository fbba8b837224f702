// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QWidget>

/// What the window shows while nothing is open: what can be opened, and two buttons to begin with.
class WelcomePage : public QWidget
{
    Q_OBJECT
public:
    explicit WelcomePage(QWidget* parent = nullptr);

Q_SIGNALS:
    void openRequested();
    void exampleRequested(); ///< sRGB beside Display P3
};
