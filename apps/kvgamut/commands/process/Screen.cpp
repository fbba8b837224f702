// SPDX-License-Identifier: Apache-2.0
#include "Screen.h"

#include "XServer.h"

#include <KVGamutView.h>

bool Screen::isPresent()
{
    return XServer::isReachable() || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void Screen::choosePlatform()
{
    // The viewer needs desktop OpenGL, which Qt provides on X through xcb. Most Wayland desktops also run
    // an X server. Platforms without windows ("offscreen") have no OpenGL.
    if (XServer::isReachable())
        qputenv("QT_QPA_PLATFORM", "xcb");
}

std::optional<Problem> Screen::drawingProblem(const KVGamutView& view)
{
    const auto problem = view.drawingProblem();
    if (problem && problem->code == KVProblemCode::NoOpenGL)
        return Problem(ProblemCode::NoOpenGL); // says what to install
    return problem ? std::optional<Problem>(*problem) : std::nullopt;
}
