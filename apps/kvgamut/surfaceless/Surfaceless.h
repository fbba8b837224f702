// SPDX-License-Identifier: Apache-2.0
#pragma once

/// A platform for Qt that has desktop OpenGL without a display. Programs that use it also import its plug-in:
/// Q_IMPORT_PLUGIN(SurfacelessPlugin).
namespace Surfaceless {

/// The value of QT_QPA_PLATFORM that chooses it.
inline constexpr const char* name = "surfaceless";

/// Whether a context of desktop OpenGL can be created. Callable without a QGuiApplication.
[[nodiscard]] bool isAvailable();

} // namespace Surfaceless
