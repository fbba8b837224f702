// SPDX-License-Identifier: Apache-2.0
#include "PictureScreen.h"

#include "Screen.h"
#include "model/inputs/ThreadCheck.h"
#include "model/problems/SystemReason.h"

#include <algorithm>
#include <thread>

#ifdef KVGAMUT_SURFACELESS
#include "surfaceless/Surfaceless.h"

#include <QtCore/QtPlugin>

Q_IMPORT_PLUGIN(SurfacelessPlugin)
#endif

namespace {

/// Chooses OpenGL without a display. @return whether there is any
bool chooseSurfaceless()
{
#ifdef KVGAMUT_SURFACELESS
    if (!Surfaceless::isAvailable())
        return false;
    qputenv("QT_QPA_PLATFORM", Surfaceless::name);
    return true;
#else
    return false;
#endif
}

/// Why the X server of its own is not there; nullopt if it is.
std::optional<Problem> problemOf(VirtualScreen::Outcome outcome)
{
    using Kind = VirtualScreen::Outcome::Kind;
    switch (outcome.kind) {
    case Kind::Started:
        break;
    case Kind::NotInstalled:
        return Problem(ProblemCode::NoXvfb);
    case Kind::NoDisplay:
        return Problem(ProblemCode::NoVirtualDisplay);
    case Kind::SystemFailed:
        return Problem(ProblemCode::XvfbFailed).because(SystemReason::ofErrno(outcome.error));
    }
    return std::nullopt;
}

/// How many threads may live at the same time: those of Mesa's software renderer, one for each processor but
/// at most 32, and some of Mesa's caches, of Qt and of our own.
std::size_t maxThreads()
{
    constexpr unsigned others = 8;
    return std::min(32u, std::max(1u, std::thread::hardware_concurrency())) + others;
}

} // namespace

std::optional<Problem> PictureScreen::choose()
{
    if (!threadsAreAvailable(maxThreads()))
        qputenv("LP_NUM_THREADS",
                "0"); // Mesa's software renderer would wait for ever for those it cannot start
    if (Screen::isChosenByUser() || chooseSurfaceless())
        return std::nullopt;
    if (Screen::isPresent()) {
        Screen::choosePlatform(Screen::Use::Picture);
        return std::nullopt;
    }
    if (const auto problem = problemOf(m_server.start()))
        return problem;
    qputenv("QT_QPA_PLATFORM", "xcb");
    return std::nullopt;
}
