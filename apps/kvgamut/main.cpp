#include "Command.h"
#include "ExitCode.h"
#include "RenderCommand.h"
#include "Say.h"
#include "ViewCommand.h"

#include <QtCore/QtGlobal>

#include <clocale>
#include <csignal>
#include <cstring>
#include <langinfo.h>
#include <memory>
#include <vector>

namespace {

/// Qt takes file names as UTF-8 and complains about other locales, such as the bare "C" of a server.
void useUtf8Locale()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

int answer(const CLI::App& program, const CLI::ParseError& end)
{
    if (end.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
        return program.exit(end); // --help and --version
    say(QString::fromUtf8(end.what()) + QStringLiteral(" (see kvgamut --help)"));
    return WrongUsage;
}

} // namespace

int main(int argc, char** argv)
{
    useUtf8Locale();
    std::signal(SIGPIPE, SIG_IGN); // a reader that went away is an error to report, not to die of

    CLI::App program("Gamuts of ICC profiles, seen in CIE L*a*b*", "kvgamut");
    program.set_version_flag("--version", "kvgamut " KVGAMUT_VERSION);
    program.require_subcommand(1);
    program.footer("Exit codes: 0 done, 1 some input could not be used, 2 wrong usage,\n"
                   "3 the output could not be written or there is nothing to draw on.");

    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<RenderCommand>(program));
    commands.push_back(std::make_unique<ViewCommand>(program));

    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& end) {
        return answer(program, end);
    }
    for (const auto& command : commands)
        if (command->chosen())
            return command->run({argc, argv});
    return WrongUsage;
}
