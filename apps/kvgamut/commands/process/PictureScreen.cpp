// SPDX-License-Identifier: Apache-2.0
#include "PictureScreen.h"

#include "Screen.h"
#include "model/inputs/ThreadCheck.h"

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

} // namespace

std::optional<Problem> PictureScreen::choose()
{
    if (!threadsAreAvailable())
        qputenv("LP_NUM_THREADS", "0"); // Mesa's software renderer would wait for its threads for ever
    if (Screen::isChosenByUser() || chooseSurfaceless())
        return std::nullopt;
    if (Screen::isPresent()) {
        Screen::choosePlatform(Screen::Use::Picture);
        return std::nullopt;
    }
    if (const auto problem = m_server.start())
        return problem;
    qputenv("QT_QPA_PLATFORM", "xcb");
    return std::nullopt;
}
