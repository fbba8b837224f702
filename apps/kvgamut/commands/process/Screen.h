// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <optional>

class KVGamutView;

/// The display: Wayland, X, or the desktop of a system that has its own.
namespace Screen {

/// What the display is for.
enum class Use
{
    Window, ///< a window with the viewer: Wayland if this version of Qt can show it there (6.8 and newer)
    Picture ///< OpenGL, without a window that the user should see: X if possible
};

/// Whether the system has its own desktop, or an X server or a Wayland compositor answers, and Qt has a
/// plug-in for it.
bool isPresent();
/// Why isPresent() is false.
Problem absence();

/// Whether QT_QPA_PLATFORM names a platform that has windows with OpenGL here.
bool isChosenByUser();

/// Chooses the platform on which the viewer has OpenGL. Call before the QGuiApplication is created.
void choosePlatform(Use use);

/// Why nothing can be drawn on the display; nullopt if drawing is possible.
std::optional<Problem> drawingProblem(const KVGamutView& view);

} // namespace Screen
