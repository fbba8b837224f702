// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <optional>

class KVGamutView;

/// The display: X, or Wayland if there is no X.
namespace Screen {

/// Whether an X server accepts connections, or the environment names a Wayland display.
bool isPresent();

/// Chooses the platform on which the viewer has OpenGL. Call before the QGuiApplication is created.
void choosePlatform();

/// Why nothing can be drawn on the display; nullopt if drawing is possible.
std::optional<Problem> drawingProblem(const KVGamutView& view);

} // namespace Screen
