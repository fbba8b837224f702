// SPDX-License-Identifier: Apache-2.0
#include "PointColourOptions.h"

#include "OptionValues.h"
#include "ProfileOptions.h"
#include "commands/process/Say.h"
#include "commands/process/Steps.h"
#include "model/inputs/BuiltInProfiles.h"
#include "model/points/PointFile.h"
#include "model/points/PointInput.h"
#include "model/points/PointWhite.h"

void PointColourOptions::declare(CLI::App& parser)
{
    parser
        .add_option_function<std::string>(
            "--points-space", [this](const std::string& word) { reading.space = OptionValues::file(word); },
            "Colour space of RGB or CMYK values in files of colours, and of @pixels without a profile: an "
            "ICC profile, or one of " +
                BuiltInProfiles::names().join(QStringLiteral(", ")).toStdString())
        ->type_name("SPACE");
    parser
        .add_option_function<std::string>(
            "--points-intent", [this](const std::string& word) { reading.intent = intentWords().at(word); },
            "Intent with which they are converted: perceptual, relative, saturation or absolute (the "
            "default)")
        ->transform(OptionValues::oneOf(intentWords()))
        ->type_name("INTENT");
    std::vector<std::string> whites;
    for (const QString& name : PointWhite::names())
        whites.push_back(name.toStdString());
    parser
        .add_option_function<std::string>(
            "--points-white",
            [this](const std::string& word) { reading.white = QString::fromStdString(word); },
            "White of Lab, LCh and XYZ values in files of colours: " +
                PointWhite::names().join(QStringLiteral(", ")).toStdString() +
                " (as in the file, or else D50)")
        ->transform(OptionValues::oneOf(whites))
        ->type_name("WHITE");
    parser
        .add_option_function<std::string>(
            "--points-white-y",
            [this](const std::string& word) { reading.whiteY = word == "1" ? 1.0 : 100.0; },
            "Y of white in XYZ values: 1 or 100")
        ->transform(OptionValues::oneOf({"1", "100"}))
        ->type_name("Y");
}

QStringList PointColourOptions::files() const
{
    const bool isFile =
        !reading.space.isEmpty() && !BuiltInProfiles::names().contains(reading.space, Qt::CaseInsensitive);
    return isFile ? QStringList(reading.space) : QStringList();
}

std::optional<PointSet> PointColourOptions::read(const QString& file, bool picturesToo) const
{
    QElapsedTimer clock;
    clock.start();
    Result<PointSet> set = picturesToo ? readPoints(file, {}, reading) : readPointFile(file, {}, reading);
    if (!set) {
        say(set.error());
        return {};
    }
    Steps::readColours(file, set->points.size(), set->reading.values, clock);
    for (const Problem& assumption : set->allNotes())
        note(assumption);
    return *std::move(set);
}
