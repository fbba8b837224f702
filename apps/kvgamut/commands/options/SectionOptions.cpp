// SPDX-License-Identifier: Apache-2.0
#include "SectionOptions.h"

#include "OptionValues.h"

#include <string>

void SectionOptions::declare(CLI::App& parser)
{
    parser
        .add_option_function<std::string>(
            "--section", [this](const std::string& word) { lids = word == "lid"; },
            "With --clip: lid: close the gamuts with the colours of that L*, where colours outside sRGB are "
            "shown in their hue (the default, except with --annotate none); outline: leave them open")
        ->transform(OptionValues::oneOf({"lid", "outline"}))
        ->type_name("WHAT");
    parser
        .add_option_function<std::string>(
            "--section-at",
            OptionValues::named(
                "--section-at",
                [this](const std::string& word) { plane = OptionValues::number(word, 0.0f, 100.0f); }),
            "Show the section at this L*, 0 to 100, without cutting: its outline on the surface, its colours "
            "inside translucent gamuts")
        ->type_name("L");
    parser
        .add_option_function<std::string>(
            "--section-hue",
            OptionValues::named(
                "--section-hue",
                [this](const std::string& word) { hue = OptionValues::number(word, -360.0f, 360.0f); }),
            "Show the colours of this hue angle, in degrees, from the L* axis outwards: their outline on the "
            "surface, the colours inside translucent gamuts")
        ->type_name("DEG");
}

KVSection SectionOptions::section(bool isAnnotated) const
{
    return {lids.value_or(isAnnotated), plane, hue};
}
