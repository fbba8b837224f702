// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

#include <string>

/// The manual page of @p command, or, if it is null, of @p program, in the format of man(7). It depends only
/// on the declared options and the version.
std::string manPage(const CLI::App& program, const CLI::App* command, const std::string& version);
