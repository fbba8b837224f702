#include "ProfileOptions.h"

#include "BuiltInProfiles.h"

#include <map>
#include <string>
#include <vector>

void ProfileOptions::declare(CLI::App& parser)
{
    static const std::map<std::string, KVVMRenderType> intents{
        {"perceptual", KVVMRenderPerceptual},
        {"relative", KVVMRenderRelativeColorimetric},
        {"saturation", KVVMRenderSaturation},
        {"absolute", KVVMRenderAbsoluteColorimetric},
    };

    parser
        .add_option_function<std::vector<std::string>>(
            "PROFILE",
            [this](const std::vector<std::string>& words) {
                for (const std::string& word : words)
                    profiles.append(QString::fromStdString(word));
            },
            "ICC profile file, or a built-in one: " +
                BuiltInProfiles::names().join(QStringLiteral(", ")).toStdString())
        ->required()
        ->type_name("");
    parser
        .add_option_function<std::string>(
            "--intent", [this](const std::string& word) { intent = intents.at(word); },
            "Rendering intent: perceptual, relative, saturation or absolute (the default)")
        ->check(CLI::IsMember(intents).description(""))
        ->type_name("INTENT");
    parser.add_flag("--bpc", blackPointCompensation, "Black point compensation");
    parser
        .add_option("--grid", gridPoints, "Samples along each device axis, 3 to 129 (33, or 17 of many inks)")
        ->check(CLI::Range(3, 129).description(""))
        ->type_name("N");
    parser.add_flag("--verbose", verbose, "Say on standard error what is drawn with");
}
