// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

/// The texts of --help, of the man pages and of the completions, from the declared options.
namespace HelpText {

/// Columns of the terminal: COLUMNS if it is set, else what the terminal of standard output says; 80 without
/// one. At least 40.
int width();

/// @p text in lines of at most @p width columns, where words allow it. The first line begins at column @p at,
/// the others are indented by @p indent.
std::string wrapped(const std::string& text, int at, int indent, int width);

/// @p text in paragraphs: consecutive lines are one, except empty lines and lines that begin with two spaces.
std::vector<std::string> paragraphs(const std::string& text);

/// "-o,--output FILE", "PROFILE ...".
std::string label(const CLI::Option& option);
/// The description, followed by what the option needs or excludes.
std::string description(const CLI::Option& option);

/// Visible options of @p app, in their order: the arguments, or those with a dash.
std::vector<const CLI::Option*> options(const CLI::App& app, bool arePositional);
/// The commands of @p program.
std::vector<const CLI::App*> commands(const CLI::App& program);

/// Prints the help of the parsers with these texts.
class Formatter : public CLI::Formatter
{
public:
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
    std::string make_description(const CLI::App* app) const override;
    std::string make_option(const CLI::Option* option, bool isPositional) const override;
    std::string make_subcommand(const CLI::App* command) const override;
    /// Empty: versions of CLI11 have different lines around it. make_help() appends it.
    std::string make_footer(const CLI::App* app) const override;
};

} // namespace HelpText
