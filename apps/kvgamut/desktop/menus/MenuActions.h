// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QMenu>

/// Actions of menus. Their object names are for tests and accessibility tools.
namespace MenuActions {

QAction* add(QMenu& menu, const char* name, const QString& text, const QKeySequence& key);
QAction* addCheckable(QMenu& menu, const char* name, const QString& text, const QKeySequence& key);

} // namespace MenuActions
