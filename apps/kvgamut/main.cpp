// SPDX-License-Identifier: Apache-2.0
#include "commands/CheckCommand.h"
#include "commands/Command.h"
#include "commands/CompareCommand.h"
#include "commands/ExportCommand.h"
#include "commands/InfoCommand.h"
#include "commands/InsideCommand.h"
#include "commands/RenderCommand.h"
#include "commands/SliceCommand.h"
#include "commands/ViewCommand.h"
#include "commands/VolumeCommand.h"
#include "commands/help/Completions.h"
#include "commands/help/HelpText.h"
#include "commands/help/ManPage.h"
#include "commands/help/Mistakes.h"
#include "commands/process/ExitCode.h"
#include "commands/process/ProcessEnd.h"
#include "commands/process/ProgramArguments.h"
#include "commands/process/ProgramLocale.h"
#include "commands/process/Say.h"
#include "commands/process/StandardFiles.h"
#include "commands/process/Steps.h"
#include "model/export/OutputFile.h"
#include "model/problems/LastError.h"
#include "model/problems/SystemReason.h"

#include <QtCore/QElapsedTimer>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// The exit code after printing to standard output.
int written(const std::ostream& output)
{
    if (output.good())
        return Done;
    const int error = lastError();
    say(Problem(ProblemCode::CannotWrite)
            .about(QStringLiteral("standard output"))
            .because(SystemReason::ofErrno(error)));
    return BadOutput;
}

int refuse(const QString& mistake)
{
    say(mistake + QStringLiteral(" (see kvgamut --help)"));
    return WrongUsage;
}

int print(const std::string& text)
{
    std::cout << text;
    return written(std::cout.flush());
}

/// "help", "help volume": as --help. @param words after "help"
int help(const CLI::App& program, const std::vector<std::string>& words)
{
    if (words.empty() || words.front() == "help")
        return print(program.help());
    for (const CLI::App* command : HelpText::commands(program))
        if (command->get_name() == words.front())
            return print(command->help(program.get_name()));
    return refuse(Mistakes::unknownCommand(program, words.front()));
}

/// For the build: "--generate man volume" prints a manual page, "--generate bash" the completions for that
/// shell.
int generate(CLI::App& program, const std::vector<std::string>& words)
{
    const std::string what = words.empty() ? std::string() : words.front();
    if (what == "man")
        return print(
            manPage(program, words.size() > 1 ? program.get_subcommand(words[1]) : nullptr, KVGAMUT_VERSION));
    if (what == "bash")
        return print(Completions::bash(program));
    if (what == "zsh")
        return print(Completions::zsh(program));
    if (what == "fish")
        return print(Completions::fish(program));
    return refuse(QStringLiteral("--generate needs man, bash, zsh or fish"));
}

/// Prints the message with which the parser ended. @return the exit code
int finish(const CLI::App& program, const CLI::ParseError& end)
{
    if (end.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        program.exit(end); // --help and --version
        return written(std::cout.flush());
    }
    return refuse(Mistakes::explained(program, end));
}

/// The arguments in reverse order, as the parser takes them. Inserts a 0 into numbers such as "-.5", which
/// would be parsed as options.
std::vector<std::string> reversedArguments(int argc, char** argv)
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

int run(Command& command, Arguments arguments)
{
    if (!command.hasWindow())
        qputenv("QT_NO_GLIB", "1"); // GLib aborts if there is not enough memory; only input methods need it
    QElapsedTimer clock;
    clock.start();
    const Command::Files files = command.files();
    if (files.inputs.count(QStringLiteral("-")) > 1)
        return refuse(
            QStringLiteral("standard input (-) can be read only once; use files for the other inputs"));
    if (const auto problem = overwritesInput(files.output, files.inputs)) {
        say(*problem);
        return WrongUsage;
    }
    const int exitCode = command.run(arguments);
    Steps::ended(clock);
    return exitCode;
}

int runProgram(int argc, char** argv)
{
    CLI::App program("Gamuts of ICC profiles, seen in CIE L*a*b*", "kvgamut");
    program.set_version_flag("-V,--version", "kvgamut " KVGAMUT_VERSION);
    program.require_subcommand(1);
    program.formatter(std::make_shared<HelpText::Formatter>());
    program.footer("kvgamut help COMMAND prints the help of a command.\n\n"
                   "Exit codes: 0 done, 1 some input could not be used, 2 wrong usage,\n"
                   "3 the output could not be written or there is no display or OpenGL,\n"
                   "4 the picture differs from its reference (render),\n"
                   "5 colours lie farther outside than was allowed (check).");

    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<InfoCommand>(program));
    commands.push_back(std::make_unique<VolumeCommand>(program));
    commands.push_back(std::make_unique<CompareCommand>(program));
    commands.push_back(std::make_unique<InsideCommand>(program));
    commands.push_back(std::make_unique<CheckCommand>(program));
    commands.push_back(std::make_unique<SliceCommand>(program));
    commands.push_back(std::make_unique<ExportCommand>(program));
    commands.push_back(std::make_unique<RenderCommand>(program));
    commands.push_back(std::make_unique<ViewCommand>(program));

    for (const auto& command : commands)
        command->declareSpeech();

    const std::vector<std::string> words(argv + std::min(argc, 2), argv + argc);
    const std::string_view first = argc > 1 ? argv[1] : "";
    if (first == "help")
        return help(program, words);
    if (first == "--generate")
        return generate(program, words);
    try {
        program.parse(reversedArguments(argc, argv));
    } catch (const CLI::ParseError& end) {
        return finish(program, end);
    }
    for (const auto& command : commands)
        if (command->chosen())
            return run(*command, {argc, argv});
    return WrongUsage;
}

/// Ends the program when there is not enough memory, also where no exception may pass.
[[noreturn]] void endWithoutMemory()
{
    ProcessEnd::atOnce("kvgamut: the input is too large for this machine\n", BadInput);
}

} // namespace

int main(int argc, char** argv)
{
    std::set_terminate(endWithoutMemory);
    ProcessEnd::prepare();
    StandardFiles::occupyClosed();
    StandardFiles::ignoreBrokenPipes();
    StandardFiles::passBytes();
    ProgramLocale::useUtf8();
    try {
        argv = ProgramArguments::asBytes(argc, argv);
        return runProgram(argc, argv);
    } catch (const std::exception&) { // not enough memory
        endWithoutMemory();
    }
}
