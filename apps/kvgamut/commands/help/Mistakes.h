// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

#include <QtCore/QString>

#include <string>

/// Why a command line is refused, with the word that may have been meant.
namespace Mistakes {

/// @param program after parse() has thrown @p error
QString explained(const CLI::App& program, const CLI::ParseError& error);
/// A command line that names the unknown command @p word.
QString unknownCommand(const CLI::App& program, const std::string& word);

} // namespace Mistakes
