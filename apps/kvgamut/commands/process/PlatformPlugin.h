// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Qt's plug-ins for the window systems.
namespace PlatformPlugin {

/// Whether the plug-in for @p platform ("xcb", "wayland") is installed and can be loaded. Qt ends the process
/// if it can load none of the plug-ins that QT_QPA_PLATFORM names.
bool isUsable(const QString& platform);

} // namespace PlatformPlugin
