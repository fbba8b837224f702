// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QMenu>

/// Creates actions of menus. Tests and accessibility tools find actions by their object names.
namespace MenuActions {

QAction* add(QMenu& menu, const char* name, const QString& text, const QKeySequence& key);
QAction* addCheckable(QMenu& menu, const char* name, const QString& text, const QKeySequence& key);

} // namespace MenuActions
