// SPDX-License-Identifier: Apache-2.0
#include "HelpText.h"

#include "commands/process/Terminal.h"

#include <QtCore/QString>

#include <algorithm>
#include <set>
#include <sstream>

namespace {

constexpr int defaultWidth = 80;
constexpr int minWidth = 40;
constexpr int maxWidth = 1000;
constexpr int maxColumn = 30; // at which descriptions begin
constexpr int gap = 2;        // around names

int columnsOf(const std::string& word)
{
    return static_cast<int>(QString::fromStdString(word).size());
}

std::string spaces(int count)
{
    return std::string(static_cast<std::size_t>(std::max(0, count)), ' ');
}

std::string joined(const std::set<CLI::Option*>& options)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : options)
        names.push_back(option->get_name());
    std::sort(names.begin(), names.end()); // the set is sorted by addresses
    return CLI::detail::join(names, ", ");
}

/// A name with its description beside it, or below it if the name is long.
std::string entry(const std::string& name, const std::string& text)
{
    const int width = HelpText::width();
    const int column = std::min(maxColumn, width / 3);
    std::string line = spaces(gap) + name;
    int at = columnsOf(line);
    if (at + gap > column) {
        line += '\n';
        at = 0;
    }
    return line + spaces(column - at) + HelpText::wrapped(text, column, column, width) + '\n';
}

} // namespace

int HelpText::width()
{
    bool isNumber = false;
    int columns = qEnvironmentVariableIntValue("COLUMNS", &isNumber);
    if (!isNumber || columns <= 0)
        columns = Terminal::columns();
    return columns <= 0 ? defaultWidth : std::clamp(columns, minWidth, maxWidth);
}

std::string HelpText::wrapped(const std::string& text, int at, int indent, int width)
{
    std::string lines;
    std::istringstream words(text);
    bool isFirst = true;
    for (std::string word; words >> word; isFirst = false) {
        const int columns = columnsOf(word);
        if (!isFirst && at + 1 + columns > width) {
            lines += '\n' + spaces(indent);
            at = indent;
        } else if (!isFirst) {
            lines += ' ';
            ++at;
        }
        lines += word;
        at += columns;
    }
    return lines;
}

std::vector<std::string> HelpText::paragraphs(const std::string& text)
{
    std::vector<std::string> all;
    bool isNew = true;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const bool isOwn = line.empty() || line.starts_with("  ");
        if (isNew || isOwn)
            all.push_back(line);
        else
            all.back() += ' ' + line;
        isNew = isOwn;
    }
    return all;
}

std::string HelpText::label(const CLI::Option& option)
{
    std::string text = option.get_positional() ? option.get_name(true, false) : option.get_name(false, true);
    if (option.get_type_size() != 0 && !option.get_type_name().empty())
        text += ' ' + option.get_type_name();
    if (option.get_positional() && option.get_expected_max() == CLI::detail::expected_max_vector_size)
        text += " ...";
    return text;
}

std::string HelpText::description(const CLI::Option& option)
{
    std::vector<std::string> conditions;
    if (option.get_required())
        conditions.emplace_back("required");
    if (!option.get_needs().empty())
        conditions.push_back("needs " + joined(option.get_needs()));
    if (!option.get_excludes().empty())
        conditions.push_back("not with " + joined(option.get_excludes()));
    const std::string text = option.get_description();
    return conditions.empty() ? text : text + " [" + CLI::detail::join(conditions, "; ") + ']';
}

std::vector<const CLI::Option*> HelpText::options(const CLI::App& app, bool arePositional)
{
    return app.get_options([arePositional](const CLI::Option* option) {
        return !option->get_group().empty() && option->get_positional() == arePositional;
    });
}

std::vector<const CLI::App*> HelpText::commands(const CLI::App& program)
{
    return program.get_subcommands([](const CLI::App*) { return true; });
}

std::string HelpText::Formatter::make_description(const CLI::App* app) const
{
    return wrapped(app->get_description(), 0, 0, width()) + '\n';
}

std::string HelpText::Formatter::make_option(const CLI::Option* option, bool /*isPositional*/) const
{
    return entry(HelpText::label(*option), HelpText::description(*option));
}

std::string HelpText::Formatter::make_subcommand(const CLI::App* command) const
{
    return entry(command->get_name(), command->get_description());
}

std::string HelpText::Formatter::make_footer(const CLI::App* /*app*/) const
{
    return {};
}

std::string HelpText::Formatter::make_help(const CLI::App* app, std::string name,
                                           CLI::AppFormatMode mode) const
{
    std::string text = CLI::Formatter::make_help(app, std::move(name), mode);
    text.erase(text.find_last_not_of('\n') + 1);
    text += "\n\n";
    for (const std::string& paragraph : paragraphs(app->get_footer())) {
        const int indent = static_cast<int>(paragraph.find_first_not_of(' '));
        text +=
            paragraph.empty() ? std::string() : spaces(indent) + wrapped(paragraph, indent, indent, width());
        text += '\n';
    }
    return text;
}
