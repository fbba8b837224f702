// SPDX-License-Identifier: Apache-2.0
#include "Screen.h"

#include "Desktop.h"
#include "PlatformPlugin.h"
#include "WaylandServer.h"
#include "XServer.h"

#include <KVGamutView.h>

#include <QtCore/QByteArrayList>
#include <QtCore/QLibraryInfo>
#include <QtCore/QStringList>
#include <QtCore/QVersionNumber>

#include <algorithm>

namespace {

bool canUseX()
{
    static const bool usable = XServer::isReachable() && PlatformPlugin::isUsable(QStringLiteral("xcb"));
    return usable;
}

bool canUseWayland()
{
    static const bool usable =
        WaylandServer::isReachable() && PlatformPlugin::isUsable(QStringLiteral("wayland"));
    return usable;
}

/// Whether this version of Qt shows a window that is embedded in widgets on Wayland.
bool canEmbedOnWayland()
{
    return QLibraryInfo::version() >= QVersionNumber(6, 8);
}

/// Platforms that have windows with OpenGL here, the best one first. Qt tries them in turn.
QByteArrayList platforms(Screen::Use use)
{
    if (const char* own = Desktop::platform())
        return {own};
    QByteArrayList names;
    if (canUseX())
        names.append("xcb");
    if (canUseWayland())
        names.insert(use == Screen::Use::Window && canEmbedOnWayland() ? 0 : names.size(), "wayland");
    return names;
}

/// The displays that the environment names, as in "WAYLAND_DISPLAY=wayland-1, DISPLAY=:0".
QString namedDisplays()
{
    QStringList named;
    for (const char* variable : {"WAYLAND_SOCKET", "WAYLAND_DISPLAY", "DISPLAY"}) {
        if (!qEnvironmentVariableIsEmpty(variable))
            named.append(QLatin1String(variable) + u'=' + qEnvironmentVariable(variable));
    }
    return named.join(QStringLiteral(", "));
}

/// The name without the parts that follow it, as in "xcb;offscreen", "vnc:port=0" and "wayland-egl".
QByteArray nameOf(const QByteArray& platform)
{
    const auto isLetter = [](char c) { return c >= 'a' && c <= 'z'; };
    return {platform.cbegin(),
            std::find_if_not(platform.cbegin(), platform.cend(), isLetter) - platform.cbegin()};
}

} // namespace

bool Screen::isPresent()
{
    return Desktop::platform() || canUseX() || canUseWayland();
}

Problem Screen::absence()
{
    if (WaylandServer::isReachable())
        return Problem(ProblemCode::NoPlatformPlugin,
                       {QStringLiteral("wayland"), QStringLiteral("qt6-wayland")});
    if (XServer::isReachable())
        return Problem(ProblemCode::NoPlatformPlugin, {QStringLiteral("xcb"), QStringLiteral("libqt6gui6")});
    const QString named = namedDisplays();
    return named.isEmpty() ? Problem(ProblemCode::NoDisplayForWindow)
                           : Problem(ProblemCode::DisplayNotReachable, {named});
}

bool Screen::isChosenByUser()
{
    const QByteArray name = nameOf(qgetenv("QT_QPA_PLATFORM"));
    return !name.isEmpty() && platforms(Use::Picture).contains(name);
}

void Screen::choosePlatform(Use use)
{
    // The user's choice is kept if it can work. Platforms without windows ("offscreen") have no OpenGL.
    const QByteArrayList possible = platforms(use);
    if (!possible.isEmpty() && !possible.contains(nameOf(qgetenv("QT_QPA_PLATFORM"))))
        qputenv("QT_QPA_PLATFORM", possible.join(';'));
}

std::optional<Problem> Screen::drawingProblem(const KVGamutView& view)
{
    const auto problem = view.drawingProblem();
    if (problem && problem->code == KVProblemCode::NoOpenGL)
        return Problem(ProblemCode::NoOpenGL); // says what to install
    return problem ? std::optional<Problem>(*problem) : std::nullopt;
}
