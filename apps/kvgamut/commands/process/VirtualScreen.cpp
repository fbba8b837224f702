// SPDX-License-Identifier: Apache-2.0
#include "VirtualScreen.h"

#include "model/problems/SystemReason.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

// Set in the second run, so that it does not start a third.
constexpr const char* secondRun = "KVGAMUT_ON_VIRTUAL_SCREEN";

} // namespace

Problem VirtualScreen::runAgain(Arguments arguments)
{
    if (qEnvironmentVariableIsSet(secondRun))
        return Problem(ProblemCode::NoVirtualDisplay);

    // -noreset: a server that resets itself when its last client leaves signals xvfb-run during its cleanup,
    // and xvfb-run then sometimes ends with an exit code of its own. The picture need not fit on this screen.
    // A colour depth of 8 bits has no OpenGL.
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
