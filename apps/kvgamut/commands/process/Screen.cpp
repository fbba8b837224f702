// SPDX-License-Identifier: Apache-2.0
#include "Screen.h"

#include "model/problems/SystemReason.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QOpenGLContext>

#include <cerrno>
#include <string>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

namespace {

// Marks the second run, which must not start a third.
constexpr const char* secondRun = "KVGAMUT_ON_VIRTUAL_SCREEN";

bool connects()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr); // never null
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

/// Whether DISPLAY names an X server that lets us in. A stale name would end Qt, and us with it.
bool xServerAnswers()
{
    static const bool answers = connects();
    return answers;
}

} // namespace

bool Screen::isPresent()
{
    return xServerAnswers() || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void Screen::choosePlatform()
{
    // The viewer wants desktop OpenGL, which Qt gives on X through xcb; also of a Wayland desktop,
    // most of which offer X as well. Platforms without windows ("offscreen") have none.
    if (xServerAnswers())
        qputenv("QT_QPA_PLATFORM", "xcb");
}

Problem Screen::runAgainOnVirtualScreen(Arguments arguments)
{
    if (qEnvironmentVariableIsSet(secondRun))
        return Problem(ProblemCode::NoVirtualDisplay);

    // A server that resets itself when its last client leaves signals xvfb-run in the midst of cleaning
    // up, which then ends, now and then, with an exit code of its own: hence -noreset.
    // The picture does not need to fit on it. At a depth of 8 there would be no OpenGL.
    const std::string server = "-noreset -screen 0 1280x1024x24";
    std::string self =
        QFile::encodeName(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).toStdString();

    std::vector<std::string> words{"xvfb-run", "-a", "-s", server, self};
    words.insert(words.end(), arguments.values + 1, arguments.values + arguments.count);
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    qputenv(secondRun, "1");
    execvp(pointers[0], pointers.data());
    const int error = errno;
    if (error == ENOENT)
        return Problem(ProblemCode::NoXvfb);
    return Problem(ProblemCode::XvfbFailed).because(SystemReason::ofErrno(error));
}

bool Screen::hasOpenGL()
{
    QOpenGLContext context;
    return context.create();
}
