// SPDX-License-Identifier: Apache-2.0
#include "ProfileOptions.h"

#include "OptionValues.h"
#include "model/inputs/BuiltInNames.h"
#include "model/inputs/BuiltInProfiles.h"

#include <map>
#include <string>
#include <vector>

std::string inputDescription()
{
    return "ICC profile, picture with an embedded profile (PNG, JPEG, TIFF), saved gamut, chart with device "
           "values (CGATS, TI3, CxF), list of colours (the same, CSV, ASE, ACB, GPL), surface (.gam), or a "
           "built-in "
           "profile: " +
           BuiltInProfiles::names().join(QStringLiteral(", ")).toStdString() +
           "; or a reference body: " + BuiltInNames::bodies().join(QStringLiteral(", ")).toStdString() +
           ". Its own intent can follow: printer.icc@relative; "
           "photo.tif@pixels is the hull of the photo's colours, profile.icc@boundary the boundary in it";
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

const std::map<std::string, KVVMRenderType>& intentWords()
{
    static const std::map<std::string, KVVMRenderType> intents{
        {"perceptual", KVVMRenderPerceptual},
        {"relative", KVVMRenderRelativeColorimetric},
        {"saturation", KVVMRenderSaturation},
        {"absolute", KVVMRenderAbsoluteColorimetric},
    };
    return intents;
}

void declareSettings(CLI::App& parser, KVGamut::Settings& settings)
{
    parser
        .add_option_function<std::string>(
            "--intent", [&settings](const std::string& word) { settings.intent = intentWords().at(word); },
            "Rendering intent: perceptual, relative, saturation or absolute (the default)")
        ->transform(OptionValues::oneOf(intentWords()))
        ->type_name("INTENT");
    parser.add_flag("--bpc", settings.blackPointCompensation,
                    "Black point compensation; no effect on the absolute intent");
    static const std::map<std::string, KVGamut::Adaptation> adaptations{
        {"full", KVGamut::Adaptation::Full},
        {"none", KVGamut::Adaptation::None},
        {"none-d65", KVGamut::Adaptation::NoneD65},
    };
    parser
        .add_option_function<std::string>(
            "--adaptation",
            [&settings](const std::string& word) { settings.adaptation = adaptations.at(word); },
            "Adaptation of absolute colours to D50: full (as in the profile, the default), none (undone, Lab "
            "relative to D50) or none-d65 (undone, Lab relative to D65)")
        ->transform(OptionValues::oneOf(adaptations))
        ->type_name("MODE");
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
}
