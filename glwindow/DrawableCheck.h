// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVProblem.h>

#include <QtGui/QWindow>

#include <optional>

/// Why the scene cannot be drawn in @p window; nullopt if it can.
///
/// Makes a context of the format that the window requests and destroys it again. The scene needs desktop
/// OpenGL 2.1 with the functions of version 1.2 and with framebuffer objects that can be copied. Qt crashes
/// in windows whose context does not have them, so this must be known before Qt makes the window's own
/// context. Before the window has a platform window, an offscreen surface is used instead.
///
/// The context that is current before the call is current after it. GUI thread only.
[[nodiscard]] std::optional<KVProblem> kvDrawingProblem(QWindow& window);
