// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "commands/process/Arguments.h"
#include "model/problems/Problem.h"

/// Where windows are: an X display (or a Wayland one, where there is no other), or none.
namespace Screen {

/// Whether the environment names a display, and an X display answers.
bool isPresent();

/// Chooses the platform that gives the viewer its OpenGL on the display that is present. Call before
/// the QGuiApplication is made.
void choosePlatform();

/// Runs this program again, with the same arguments, on an X server of its own. Does not return when that
/// works; the exit code is then that of the second run.
/// @return why it does not work
Problem runAgainOnVirtualScreen(Arguments arguments);

/// Whether the display can draw with OpenGL. Call after the QGuiApplication is made.
bool hasOpenGL();

} // namespace Screen
