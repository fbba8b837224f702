// SPDX-License-Identifier: Apache-2.0
#include "Screen.h"

#include "XServer.h"

#include <KVGamutView.h>

#include <QtCore/QByteArrayList>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QLibraryInfo>
#include <QtCore/QVersionNumber>

#include <algorithm>

namespace {

bool hasWayland()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

/// Whether the viewer can be shown there. Earlier versions of Qt do not show a window that is embedded in
/// widgets on Wayland. The plug-in may not be installed; Qt would complain about that before it tries X.
bool canEmbedOnWayland()
{
    if (QLibraryInfo::version() < QVersionNumber(6, 8))
        return false;
    const QStringList folders = QCoreApplication::libraryPaths();
    return std::any_of(folders.cbegin(), folders.cend(), [](const QString& folder) {
        return !QDir(folder + QStringLiteral("/platforms"))
                    .entryList({QStringLiteral("*wayland*")})
                    .isEmpty();
    });
}

/// Platforms that have windows with OpenGL here, the best one first. Qt tries them in turn.
QByteArrayList platforms(Screen::Use use)
{
    QByteArrayList names;
    if (XServer::isReachable())
        names.append("xcb");
    if (hasWayland())
        names.insert(use == Screen::Use::Window && canEmbedOnWayland() ? 0 : names.size(), "wayland");
    return names;
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
    return XServer::isReachable() || hasWayland();
}

bool Screen::isChosenByUser()
{
    return platforms(Use::Picture).contains(nameOf(qgetenv("QT_QPA_PLATFORM")));
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
