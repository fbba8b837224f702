// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QMenu>

/// The menu "Help". The window connects its actions.
class HelpMenu : public QMenu
{
    Q_OBJECT
public:
    explicit HelpMenu(QWidget* parent);

    QAction* keys;
    QAction* findCommand;
    QAction* tour;
    QAction* about;
};
