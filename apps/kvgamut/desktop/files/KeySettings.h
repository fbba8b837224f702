// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtGui/QAction>

/// The keys of the user, by the object names of the actions. Kept in the settings.
namespace KeySettings {

/// Notes the present keys of @p actions as their default, and gives them those of the settings. What is not
/// a key, or belongs to another action, is left out. Call once for each window.
void apply(const QList<QAction*>& actions);
/// Keeps the keys of @p actions that differ from their default.
void keep(const QList<QAction*>& actions);
QList<QKeySequence> defaultKeys(const QAction& action);

/// Whether @p action can have other keys: it has a name.
bool isChangeable(const QAction& action);

} // namespace KeySettings
