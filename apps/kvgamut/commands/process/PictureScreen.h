// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VirtualScreen.h"
#include "model/problems/Problem.h"

#include <optional>

/// What pictures are drawn on, whether there is a display or not.
class PictureScreen
{
public:
    /// Chooses Qt's platform: the one that the user names in QT_QPA_PLATFORM if it has OpenGL here; otherwise
    /// OpenGL without a display; where drivers do not offer that, the display; where there is none, an X
    /// server of its own. Call from the main thread before the QGuiApplication is created. This object must
    /// outlive it.
    /// @return why there is none of them
    std::optional<Problem> choose();

private:
    VirtualScreen m_server;
};
