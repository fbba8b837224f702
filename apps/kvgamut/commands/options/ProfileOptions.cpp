// SPDX-License-Identifier: Apache-2.0
#include "ProfileOptions.h"

#include "OptionValues.h"
#include "model/inputs/BuiltInProfiles.h"

#include <map>
#include <string>
#include <vector>

std::string inputDescription()
{
    return "ICC profile, picture with an embedded profile (PNG, JPEG, TIFF), saved gamut, or a built-in "
           "profile: " +
           BuiltInProfiles::names().join(QStringLiteral(", ")).toStdString();
}

CLI::Option* declareInputs(CLI::App& parser, QStringList& inputs, const char* word)
{
    return parser
        .add_option_function<std::vector<std::string>>(
            word,
            [&inputs](const std::vector<std::string>& words) {
                for (const std::string& name : words)
                    inputs.append(OptionValues::file(name));
            },
            inputDescription())
        ->required()
        ->type_name("");
}

void declareSettings(CLI::App& parser, KVGamut::Settings& settings)
{
    static const std::map<std::string, KVVMRenderType> intents{
        {"perceptual", KVVMRenderPerceptual},
        {"relative", KVVMRenderRelativeColorimetric},
        {"saturation", KVVMRenderSaturation},
        {"absolute", KVVMRenderAbsoluteColorimetric},
    };
    parser
        .add_option_function<std::string>(
            "--intent", [&settings](const std::string& word) { settings.intent = intents.at(word); },
            "Rendering intent: perceptual, relative, saturation or absolute (the default)")
        ->check(CLI::IsMember(intents).description(""))
        ->type_name("INTENT");
    parser.add_flag("--bpc", settings.blackPointCompensation,
                    "Black point compensation; no effect on the absolute intent");
    parser
        .add_option("--grid", settings.gridPoints,
                    "Samples along each device axis, 3 to 129 (33; 17 from five channels on)")
        ->check(CLI::Range(3, 129).description(""))
        ->type_name("N");
}

void ProfileOptions::declare(CLI::App& parser)
{
    declareInputs(parser, profiles);
    declareSettings(parser, settings);
    parser.add_flag("--verbose", verbose, "Print OpenGL diagnostics to stderr");
}
