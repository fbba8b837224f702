// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QWidget>

/// The page of a window without gamuts: a list of what can be opened, and two buttons.
class WelcomePage : public QWidget
{
    Q_OBJECT
public:
    explicit WelcomePage(QWidget* parent = nullptr);

Q_SIGNALS:
    void openRequested();
    void exampleRequested(); ///< open sRGB and Display P3
};
