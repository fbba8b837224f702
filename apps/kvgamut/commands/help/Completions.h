// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

#include <string>

/// Scripts with which shells complete the commands, options, words of options, files and built-in names of a
/// command line of @p program.
namespace Completions {

std::string bash(CLI::App& program);
std::string zsh(CLI::App& program);
std::string fish(CLI::App& program);

} // namespace Completions
