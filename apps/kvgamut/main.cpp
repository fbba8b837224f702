// SPDX-License-Identifier: Apache-2.0
#include "commands/Command.h"
#include "commands/CompareCommand.h"
#include "commands/ExportCommand.h"
#include "commands/InfoCommand.h"
#include "commands/InsideCommand.h"
#include "commands/RenderCommand.h"
#include "commands/SliceCommand.h"
#include "commands/ViewCommand.h"
#include "commands/VolumeCommand.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Say.h"

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>

#include <cctype>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <langinfo.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

/// The locale whose words a person wants to read; "C" when nothing says so.
QByteArray wantedLocale()
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (!qEnvironmentVariableIsEmpty(name))
            return qgetenv(name);
    return QByteArrayLiteral("C");
}

/// Qt takes file names as UTF-8 and complains about other locales, such as the bare "C" of a server, or
/// one that is not installed. The language that such a one names stays the person's choice.
void useUtf8Locale()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0)
        return;
    const QByteArray wanted = wantedLocale();
    if (wanted == "C" || wanted == "POSIX")
        qunsetenv("LANGUAGE");
    else if (qEnvironmentVariableIsEmpty("LANGUAGE"))
        qputenv("LANGUAGE", wanted);
    qputenv("LC_ALL", "C.UTF-8");
}

/// What the C library says and how it writes numbers is the same in every locale: scripts read it. The
/// window asks Qt for the person's language, not the C library.
void keepToEnglish()
{
    std::setlocale(LC_MESSAGES, "C");
    std::setlocale(LC_NUMERIC, "C");
}
Q_COREAPP_STARTUP_FUNCTION(keepToEnglish) // which sets the locale of the environment

/// Gives the places of closed standard files to ones that refuse to be used: otherwise the next file
/// that is opened would take such a place, and what is printed would go into it.
void holdStandardFiles()
{
    for (int file = STDIN_FILENO; file <= STDERR_FILENO; ++file)
        if (fcntl(file, F_GETFD) == -1) // the first that is free is this one
            open("/dev/null", file == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

int answer(const CLI::App& program, const CLI::ParseError& end)
{
    if (end.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
        return program.exit(end); // --help and --version
    say(QString::fromUtf8(end.what()) + QStringLiteral(" (see kvgamut --help)"));
    return WrongUsage;
}

/// The words of the command line, last first, as the parser takes them. A number like "-.5" would be
/// taken for an option: it is given its 0.
std::vector<std::string> wordsOf(int argc, char** argv)
{
    std::vector<std::string> words;
    for (int i = argc - 1; i > 0; --i) {
        std::string word = argv[i];
        if (word.size() > 2 && word.starts_with("-.") && std::isdigit(static_cast<unsigned char>(word[2])))
            word.insert(1, "0");
        words.push_back(word);
    }
    return words;
}

int runProgram(int argc, char** argv)
{
    CLI::App program("Gamuts of ICC profiles, seen in CIE L*a*b*", "kvgamut");
    program.set_version_flag("--version", "kvgamut " KVGAMUT_VERSION);
    program.require_subcommand(1);
    program.footer("Exit codes: 0 done, 1 some input could not be used, 2 wrong usage,\n"
                   "3 the output could not be written or there is nothing to draw on,\n"
                   "4 the picture differs from its reference (render).");

    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<InfoCommand>(program));
    commands.push_back(std::make_unique<VolumeCommand>(program));
    commands.push_back(std::make_unique<CompareCommand>(program));
    commands.push_back(std::make_unique<InsideCommand>(program));
    commands.push_back(std::make_unique<SliceCommand>(program));
    commands.push_back(std::make_unique<ExportCommand>(program));
    commands.push_back(std::make_unique<RenderCommand>(program));
    commands.push_back(std::make_unique<ViewCommand>(program));

    try {
        program.parse(wordsOf(argc, argv));
    } catch (const CLI::ParseError& end) {
        return answer(program, end);
    }
    for (const auto& command : commands)
        if (command->chosen())
            return command->run({argc, argv});
    return WrongUsage;
}

} // namespace

int main(int argc, char** argv)
{
    holdStandardFiles();
    useUtf8Locale();
    std::signal(SIGPIPE, SIG_IGN); // a reader that went away is an error to report, not to die of
    try {
        return runProgram(argc, argv);
    } catch (const std::exception& failure) { // no memory
        std::fprintf(stderr, "kvgamut: the input is too large for this machine (%s)\n", failure.what());
        return BadInput;
    }
}
