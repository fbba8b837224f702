// SPDX-License-Identifier: Apache-2.0
#include "LossOptions.h"

#include "OptionValues.h"

void LossOptions::declare(CLI::App& parser)
{
    const auto number = [&parser](const char* name, auto& target, float min, float max, const char* help) {
        return parser
            .add_option_function<std::string>(
                name,
                OptionValues::named(name,
                                    [&target, min, max](const std::string& word) {
                                        target = OptionValues::number(word, min, max);
                                    }),
                help)
            ->type_name("X");
    };
    parser
        .add_option_function<std::string>(
            "--loss", [this](const std::string& word) { other = OptionValues::file(word); },
            "Colour the surfaces by the distance by which they lie outside this profile or saved "
            "gamut, with a scale bar: where colours are lost")
        ->type_name("PROFILE");
    parser
        .add_option_function<std::string>(
            "--metric",
            [this](const std::string& word) {
                metric = word == "de76" ? ColourMetric::DE76 : ColourMetric::Ciede2000;
            },
            "The distance of --loss and --point-colors: ciede2000 (the default) or de76")
        ->transform(OptionValues::oneOf({"ciede2000", "de76"}))
        ->type_name("METRIC");
    number("--loss-threshold", threshold, 0.0f, 100.0f, "Smaller distances count as inside and are grey (1)");
    number("--loss-max", largest, 0.1f, 1000.0f,
           "The distance of the darkest colour, also for larger ones (the largest one, rounded up)");
}

void LossOptions::check(const CLI::App& parser, bool hasPoints) const
{
    if (other.isEmpty() && !hasPoints)
        for (const char* option : {"--metric", "--loss-threshold", "--loss-max"})
            if (parser.count(option) > 0)
                throw CLI::RequiresError(option, "--loss or --point-colors distance");
    if (largest && *largest <= threshold)
        throw CLI::ValidationError("--loss-max", "it must be above --loss-threshold");
}

LossScale LossOptions::scaleOf(const std::vector<float>& distances) const
{
    LossScale scale = LossScale::forDistances(distances, threshold);
    scale.largest = largest.value_or(scale.largest);
    return scale;
}
