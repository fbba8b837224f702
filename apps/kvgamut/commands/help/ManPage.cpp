// SPDX-License-Identifier: Apache-2.0
#include "ManPage.h"

#include "HelpText.h"

namespace {

/// @p text as roff shows it: no requests, plain hyphens that can be copied.
std::string escaped(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
    }
    return result.starts_with('.') || result.starts_with('\'') ? "\\&" + result : result;
}

std::string bold(const std::string& text)
{
    return "\\fB" + escaped(text) + "\\fR";
}

std::string manEntry(const std::string& name, const std::string& text)
{
    return ".TP\n" + name + '\n' + escaped(text) + '\n';
}

std::string optionEntries(const CLI::App& app, bool arePositional)
{
    std::string text;
    for (const CLI::Option* option : HelpText::options(app, arePositional)) {
        const std::string label = HelpText::label(*option);
        const std::size_t space = label.find(' ');
        const std::string value =
            space == std::string::npos ? std::string() : " \\fI" + escaped(label.substr(space + 1)) + "\\fR";
        text += manEntry(bold(label.substr(0, space)) + value, HelpText::description(*option));
    }
    return text;
}

std::string upper(std::string text)
{
    for (char& c : text)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return text;
}

std::string synopsis(const CLI::App& program, const CLI::App* command)
{
    std::string text = bold(program.get_name());
    if (!command)
        return text + " \\fICOMMAND\\fR [\\fIOPTIONS\\fR] [\\fIARGUMENTS\\fR]\n";
    text += ' ' + bold(command->get_name()) + " [\\fIOPTIONS\\fR]";
    for (const CLI::Option* option : HelpText::options(*command, true)) {
        const std::string name = "\\fI" + escaped(HelpText::label(*option)) + "\\fR";
        text += option->get_required() ? ' ' + name : " [" + name + ']';
    }
    return text + '\n';
}

std::string notes(const CLI::App& app)
{
    std::string text = ".SH NOTES\n";
    for (const std::string& paragraph : HelpText::paragraphs(app.get_footer()))
        text += paragraph.empty() ? ".PP\n" : escaped(paragraph) + '\n';
    return text;
}

std::string seeAlso(const CLI::App& program, const CLI::App* command)
{
    std::string text = ".SH SEE ALSO\n";
    if (command)
        return text + bold(program.get_name()) + "(1)\n";
    const auto commands = HelpText::commands(program);
    for (const CLI::App* each : commands)
        text += bold(program.get_name() + '-' + each->get_name()) + "(1)" +
                (each == commands.back() ? "\n" : ",\n");
    return text;
}

} // namespace

std::string manPage(const CLI::App& program, const CLI::App* command, const std::string& version)
{
    const CLI::App& app = command ? *command : program;
    const std::string name = command ? program.get_name() + '-' + command->get_name() : program.get_name();
    std::string text = ".\\\" Made by " + program.get_name() + " from its options.\n";
    text +=
        ".TH " + upper(name) + " 1 \"\" \"" + program.get_name() + ' ' + version + "\" \"User Commands\"\n";
    text += ".SH NAME\n" + escaped(name) + " \\- " + escaped(app.get_description()) + '\n';
    text += ".SH SYNOPSIS\n" + synopsis(program, command);
    if (!command) {
        text += ".SH COMMANDS\n";
        for (const CLI::App* each : HelpText::commands(program))
            text += manEntry(bold(each->get_name()), each->get_description());
    }
    const std::string arguments = optionEntries(app, true);
    if (!arguments.empty())
        text += ".SH ARGUMENTS\n" + arguments;
    text += ".SH OPTIONS\n" + optionEntries(app, false);
    if (!app.get_footer().empty())
        text += notes(app);
    return text + seeAlso(program, command);
}
