// SPDX-License-Identifier: Apache-2.0
#include "Completions.h"

#include "HelpText.h"
#include "commands/options/OptionValues.h"
#include "model/inputs/BuiltInNames.h"

#include <algorithm>

namespace {

/// An option, as a shell sees it.
struct Choice
{
    std::vector<std::string> names; ///< with their dashes
    std::string value;              ///< the placeholder of the value; empty if it has none
    std::vector<std::string> words; ///< the possible values, if they are words
    bool isFile = false;            ///< whether the value is a file or a built-in name
    std::string summary;            ///< the description up to the first end of a sentence or list
};

std::string summaryOf(const std::string& description)
{
    return description.substr(0, description.find_first_of(".:;("));
}

std::vector<Choice> choicesOf(CLI::App& app)
{
    static const std::vector<std::string> files{"FILE", "PROFILE", "PICTURE.png", "SPACE"};
    std::vector<Choice> all;
    for (const CLI::Option* option : HelpText::options(app, false)) {
        Choice choice;
        for (const std::string& name : option->get_snames())
            choice.names.push_back('-' + name);
        for (const std::string& name : option->get_lnames())
            choice.names.push_back("--" + name);
        if (option->get_type_size() != 0) {
            choice.value = option->get_type_name();
            choice.words = OptionValues::wordsOf(*app.get_option(option->get_name()));
        }
        choice.isFile = std::find(files.cbegin(), files.cend(), choice.value) != files.cend();
        choice.summary = summaryOf(option->get_description());
        all.push_back(choice);
    }
    return all;
}

/// Commands whose arguments are inputs: all, so far.
std::string builtInNames()
{
    return BuiltInNames::all().join(QLatin1Char(' ')).toStdString();
}

std::string commandNames(const CLI::App& program)
{
    std::vector<std::string> names;
    for (const CLI::App* command : HelpText::commands(program))
        names.push_back(command->get_name());
    return CLI::detail::join(names, " ");
}

std::string optionNames(CLI::App& app)
{
    std::vector<std::string> names;
    for (const Choice& choice : choicesOf(app))
        names.insert(names.end(), choice.names.cbegin(), choice.names.cend());
    return CLI::detail::join(names, " ");
}

constexpr const char* head = "# SPDX-License-Identifier: Apache-2.0\n# Made by kvgamut from its options.\n";

/// @p text between single quotes, for a POSIX shell.
std::string quoted(const std::string& text)
{
    return "'" + CLI::detail::find_and_replace(text, "'", "'\\''") + "'";
}

// --- bash ---------------------------------------------------------------------------------------------

std::string bashCommand(CLI::App& command)
{
    std::string text = "    " + command.get_name() + ")\n";
    text += "        options=" + quoted(optionNames(command)) + "\n        case $previous in\n";
    for (const Choice& choice : choicesOf(command)) {
        if (choice.value.empty())
            continue;
        text += "        " + CLI::detail::join(choice.names, "|") + ") kind=";
        text += choice.isFile ? "input" : "value";
        if (!choice.words.empty())
            text += " words=" + quoted(CLI::detail::join(choice.words, " "));
        text += " ;;\n";
    }
    return text + "        esac\n        ;;\n";
}

// --- zsh ----------------------------------------------------------------------------------------------

/// @p text within the brackets or after the colon of a specification.
std::string zshText(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\')
            result += '\\';
        result += c;
    }
    return result;
}

std::string zshOption(const Choice& choice)
{
    std::string value;
    if (!choice.value.empty()) {
        const std::string action = !choice.words.empty() ? '(' + CLI::detail::join(choice.words, " ") + ')'
                                   : choice.isFile       ? "_kvgamut_input"
                                                         : " ";
        value = ':' + zshText(choice.value) + ':' + action;
    }
    std::string text;
    for (const std::string& name : choice.names) {
        const bool isLong = name.starts_with("--");
        const std::string form = choice.value.empty() ? "" : isLong ? "=" : "+";
        text += " \\\n            " + quoted("*" + name + form + '[' + zshText(choice.summary) + ']' + value);
    }
    return text;
}

// --- fish ---------------------------------------------------------------------------------------------

std::string fishText(const std::string& text)
{
    return "'" +
           CLI::detail::find_and_replace(CLI::detail::find_and_replace(text, "\\", "\\\\"), "'", "\\'") + "'";
}

std::string fishOption(const Choice& choice, const std::string& condition)
{
    std::string text = "complete -c kvgamut -n " + fishText(condition);
    for (const std::string& name : choice.names)
        text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (!choice.words.empty())
        text += " -x -a " + fishText(CLI::detail::join(choice.words, " "));
    else if (choice.isFile)
        text += " -r -F";
    else if (!choice.value.empty())
        text += " -x";
    return text + " -d " + fishText(choice.summary) + '\n';
}

} // namespace

std::string Completions::bash(CLI::App& program)
{
    std::string text = head;
    text += "_kvgamut()\n{\n"
            "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}\n"
            "    local command=${COMP_WORDS[1]} kind=input options= words=\n"
            "    COMPREPLY=()\n"
            "    [[ $current != = ]] || current= # as in --intent=\n"
            "    [[ $previous != = ]] || previous=${COMP_WORDS[COMP_CWORD-2]}\n"
            "    [[ ${COMP_WORDS[COMP_CWORD]} != = ]] || previous=${COMP_WORDS[COMP_CWORD-1]}\n";
    text += "    local commands=" + quoted(commandNames(program)) + '\n';
    text += "    if ((COMP_CWORD == 1)); then\n"
            "        COMPREPLY=($(compgen -W \"$commands help " +
            optionNames(program) +
            "\" -- \"$current\"))\n"
            "        return\n"
            "    fi\n"
            "    case $command in\n"
            "    help)\n"
            "        ((COMP_CWORD > 2)) || COMPREPLY=($(compgen -W \"$commands\" -- \"$current\"))\n"
            "        return\n"
            "        ;;\n";
    for (const CLI::App* command : HelpText::commands(program))
        text += bashCommand(*program.get_subcommand(command->get_name()));
    text += "    *) return ;;\n"
            "    esac\n"
            "    local word\n"
            "    if [[ -n $words ]]; then\n"
            "        for word in $words; do\n"
            "            [[ ${word,,} != \"${current,,}\"* ]] || COMPREPLY+=(\"$word\")\n"
            "        done\n"
            "    elif [[ $kind == value ]]; then\n"
            "        return\n"
            "    elif [[ $current == -* ]]; then\n"
            "        COMPREPLY=($(compgen -W \"$options\" -- \"$current\"))\n"
            "    else\n"
            "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
            "        for word in " +
            builtInNames() +
            "; do\n"
            "            [[ ${word,,} != \"${current,,}\"* ]] || COMPREPLY+=(\"$word\")\n"
            "        done\n"
            "        compopt -o filenames 2>/dev/null\n"
            "    fi\n"
            "}\n"
            "complete -F _kvgamut kvgamut\n";
    return text;
}

std::string Completions::zsh(CLI::App& program)
{
    std::string text = "#compdef kvgamut\n";
    text += head;
    text += "_kvgamut_input()\n{\n    _alternative 'built-in:built-in gamut:(" + builtInNames() +
            ")' 'files:file:_files'\n}\n\n";
    text += "_kvgamut()\n{\n    local -a commands\n    commands=(";
    for (const CLI::App* command : HelpText::commands(program))
        text += "\n        " + quoted(command->get_name() + ':' + zshText(command->get_description()));
    text += "\n        'help:Print the help of a command'\n    )\n"
            "    if ((CURRENT == 2)); then\n"
            "        if [[ $words[2] == -* ]]; then\n"
            "            _arguments";
    for (const Choice& choice : choicesOf(program))
        text += zshOption(choice);
    text += "\n        else\n"
            "            _describe command commands\n"
            "        fi\n"
            "        return\n"
            "    fi\n"
            "    local command=$words[2]\n"
            "    shift words\n"
            "    ((CURRENT--))\n"
            "    case $command in\n"
            "    help)\n        ((CURRENT > 2)) || _describe command commands\n        ;;\n";
    for (const CLI::App* each : HelpText::commands(program)) {
        CLI::App& command = *program.get_subcommand(each->get_name());
        text += "    " + command.get_name() + ")\n        _arguments";
        for (const Choice& choice : choicesOf(command))
            text += zshOption(choice);
        text += " \\\n            '*:input:_kvgamut_input'\n        ;;\n";
    }
    return text + "    esac\n}\n\n_kvgamut \"$@\"\n";
}

std::string Completions::fish(CLI::App& program)
{
    const std::string none = "__fish_use_subcommand";
    std::string text = head;
    for (const Choice& choice : choicesOf(program))
        text += fishOption(choice, none);
    for (const CLI::App* command : HelpText::commands(program))
        text += "complete -c kvgamut -n " + none + " -f -a " + command->get_name() + " -d " +
                fishText(command->get_description()) + '\n';
    text += "complete -c kvgamut -n " + none + " -f -a help -d 'Print the help of a command'\n";
    text += "complete -c kvgamut -n '__fish_seen_subcommand_from help' -f -a " +
            fishText(commandNames(program)) + '\n';
    for (const CLI::App* each : HelpText::commands(program)) {
        CLI::App& command = *program.get_subcommand(each->get_name());
        const std::string condition = "__fish_seen_subcommand_from " + command.get_name();
        text += "complete -c kvgamut -n " + fishText(condition) + " -a " + fishText(builtInNames()) +
                " -d 'built-in gamut'\n";
        for (const Choice& choice : choicesOf(command))
            text += fishOption(choice, condition);
    }
    return text;
}
