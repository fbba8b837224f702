// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <CLI/CLI.hpp>

#include <QtCore/QStringList>

#include <map>
#include <string>

/// Describes the accepted inputs, for --help.
std::string inputDescription();

/// Declares on @p parser the inputs as the positional argument @p word, at least one.
CLI::Option* declareInputs(CLI::App& parser, QStringList& inputs, const char* word = "PROFILE");

/// The rendering intents by their words on the command line.
const std::map<std::string, KVVMRenderType>& intentWords();

/// Declares on @p parser how gamuts are computed: --intent, --bpc, --adaptation, --grid.
void declareSettings(CLI::App& parser, KVGamut::Settings& settings);

/// Profiles and how their gamuts are computed: the options of the commands that draw.
struct ProfileOptions
{
    QStringList profiles;
    KVGamut::Settings settings;

    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);
};
