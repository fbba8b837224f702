#include "ViewCommand.h"

#include "ExitCode.h"
#include "GamutScene.h"
#include "Say.h"
#include "Screen.h"

#include <QtGui/QGuiApplication>

ViewCommand::ViewCommand(CLI::App& program)
    : Command(program, "view", "Show gamuts in a window: drag to turn, wheel to zoom")
{
    m_profiles.declare(parser());
    m_look.declare(parser());
}

int ViewCommand::run(Arguments arguments)
{
    if (!Screen::isPresent()) {
        say(QStringLiteral("there is no display to open a window on; 'kvgamut render' needs none"));
        return BadOutput;
    }
    Screen::choosePlatform();
    silenceLibraries(m_profiles.verbose);

    const QGuiApplication application(arguments.count, arguments.values);
    const QString problem = Screen::openGLProblem();
    if (!problem.isEmpty()) {
        say(problem);
        return BadOutput;
    }

    KVGamut3DViewer viewer;
    viewer.setTitle(QStringLiteral("%1 - kvgamut").arg(m_profiles.profiles.join(QStringLiteral(", "))));
    viewer.resize(m_look.size);
    GamutScene scene(viewer, m_profiles, m_look);
    scene.onComplete([&] {
        if (scene.shownCount() == 0)
            QGuiApplication::quit(); // there is nothing to look at
    });
    scene.load();
    if (scene.isComplete())
        return BadInput; // nothing opened
    viewer.show();
    QGuiApplication::exec();
    return scene.failedCount() > 0 ? BadInput : Done;
}
