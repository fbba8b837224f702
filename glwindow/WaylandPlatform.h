// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Whether the application's windows are those of a Wayland compositor.
[[nodiscard]] bool isOnWayland();
