// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The display: X, or Wayland if there is no X.
namespace Screen {

/// Whether an X server accepts connections, or the environment names a Wayland display.
bool isPresent();

/// Chooses the platform on which the viewer has OpenGL. Call before the QGuiApplication is created.
void choosePlatform();

/// Whether the display has OpenGL. Call after the QGuiApplication is created.
bool hasOpenGL();

} // namespace Screen
