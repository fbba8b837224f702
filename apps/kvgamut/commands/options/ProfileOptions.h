// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/inputs/GamutSettings.h"

#include <CLI/CLI.hpp>

#include <QtCore/QStringList>

#include <string>

/// What an input may be, as --help says it.
std::string inputDescription();

/// Declares on @p parser what names the inputs, as the positional @p word, at least one.
CLI::Option* declareInputs(CLI::App& parser, QStringList& inputs, const char* word = "PROFILE");

/// Declares on @p parser how gamuts are computed: --intent, --bpc, --grid.
void declareSettings(CLI::App& parser, GamutSettings& settings);

/// Which profiles, and how their gamuts are computed: the options that all commands share.
struct ProfileOptions
{
    QStringList profiles;
    GamutSettings settings;
    bool verbose = false;

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);
};
