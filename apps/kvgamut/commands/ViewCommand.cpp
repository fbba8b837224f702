// SPDX-License-Identifier: Apache-2.0
#include "ViewCommand.h"

#include "commands/options/OptionValues.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Fonts.h"
#include "commands/process/Say.h"
#include "commands/process/Screen.h"
#include "commands/process/Steps.h"
#include "desktop/MainWindow.h"
#include "desktop/language/Translations.h"

#include <QtWidgets/QApplication>

ViewCommand::ViewCommand(CLI::App& program)
    : Command(program, "view", "Show, measure and compare gamuts in a window")
{
    m_profiles.declare(parser());
    parser().get_option("PROFILE")->required(false);
    m_look.size = QSize(1280, 800);
    m_look.declare(parser());
    parser().final_callback([this] { m_look.check(); });
    parser()
        .add_option_function<std::string>(
            "--session", [this](const std::string& word) { m_session = OptionValues::file(word); },
            "Restore a saved session")
        ->type_name("FILE");
    parser().add_flag(
        "--no-settings", m_withoutSettings,
        "Neither use nor keep settings: places of panels, background, folder, recent files; close "
        "without a question about unsaved changes");
    parser().add_flag("--stay", m_stay, "Keep the window open even if none of the inputs can be shown");
}

int ViewCommand::run(Arguments arguments)
{
    if (!Screen::isPresent()) {
        say(Screen::absence());
        return BadOutput;
    }
    Screen::choosePlatform(Screen::Use::Window);
    silenceLibraries();

    loadFonts();
    const QApplication application(arguments.count, arguments.values);
    QApplication::setApplicationName(QStringLiteral("kvgamut"));
    const Translations translations;

    if (m_withoutSettings)
        MainWindow::ignoreSettings();
    MainWindow window;
    if (const auto problem = Screen::drawingProblem(KVGamutView(&window.viewer()))) {
        say(*problem);
        return BadOutput;
    }
    KVGamutView view(&window.viewer());
    QObject::connect(&view, &KVGamutView::loaded, [&view](const QString& id) {
        Steps::computed(id.section(QLatin1Char(' '), 1), view.gamut(id).report());
    });
    bool allShown = true;
    QObject::connect(&window, &MainWindow::problem, [&allShown](const Problem& problem) {
        allShown = false;
        say(problem);
    });
    show(window);
    const bool somethingNamed = !m_profiles.profiles.isEmpty() || !m_session.isEmpty();
    const auto isEmpty = [&window] { return window.gamuts().rowCount() + window.points().rowCount() == 0; };
    const auto endWhenEmpty = [&] {
        if (!m_stay && somethingNamed && isEmpty())
            QApplication::quit();
    };
    QObject::connect(&window, &MainWindow::loadingEnded, &window, endWhenEmpty, Qt::SingleShotConnection);
    if (!m_stay && somethingNamed && isEmpty())
        return BadInput;
    recall(window);
    if (!m_withoutSettings)
        window.protectWork();
    window.show();
    QApplication::exec();
    window.keepForNext();
    return allShown ? Done : BadInput;
}

/// Opens the session or applies the look of the command line, then adds the gamuts.
void ViewCommand::show(MainWindow& window) const
{
    if (!m_session.isEmpty()) {
        window.openSession(m_session);
    } else {
        KVGamutView view(&window.viewer());
        m_look.applyTo(view);
    }
    for (qsizetype i = 0; i < m_profiles.profiles.size(); ++i)
        window.addGamut(m_profiles.profiles[i], m_profiles.settings, m_look.lookOf(i, i == 0),
                        m_look.opacities.isEmpty());
    window.showViewState();
    if (!m_session.isEmpty() || !m_look.view.isEmpty() || m_look.hasCamera())
        window.keepCamera();
}

/// Takes over what the last window kept, except where the command line or the session says otherwise.
void ViewCommand::recall(MainWindow& window)
{
    const auto isGiven = [this](const char* option) { return parser().get_option(option)->count() > 0; };
    window.recallLast(isGiven("--size") ? m_look.size : QSize(),
                      !isGiven("--background") && m_session.isEmpty());
}
