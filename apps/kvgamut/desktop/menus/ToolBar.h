// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QToolBar>

class QMenuBar;

/// The commands that are used most, as words in a slim bar. They are those of the menus.
class ToolBar : public QToolBar
{
    Q_OBJECT
public:
    ToolBar(const QMenuBar& menuBar, QWidget* parent);
};
