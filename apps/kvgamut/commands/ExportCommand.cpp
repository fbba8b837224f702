// SPDX-License-Identifier: Apache-2.0
#include "ExportCommand.h"

#include "commands/options/OptionValues.h"
#include "commands/options/ProfileOptions.h"
#include "commands/options/ReportOptions.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Say.h"
#include "model/export/MeshFormat.h"
#include "model/export/OutputFile.h"
#include "model/inputs/SavedGamut.h"
#include "model/text/SafeText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

#include <string>
#include <vector>

namespace {

constexpr QLatin1String savedSuffix("kvgamut");

std::vector<std::string> formatNames()
{
    std::vector<std::string> names;
    for (const MeshFormat& format : MeshFormat::all())
        names.emplace_back(format.suffix);
    names.push_back(savedSuffix.data());
    return names;
}

/// The format for the suffix of @p output.
QString formatOf(const QString& output)
{
    QString suffix = QFileInfo(output).suffix().toLower();
    if (suffix == savedSuffix || MeshFormat::ofSuffix(suffix))
        return suffix;
    std::string known;
    for (const std::string& name : formatNames())
        known += (known.empty() ? "." : ", .") + name;
    throw CLI::ValidationError("--output", "'" + output.toStdString() + "' has none of the suffixes " +
                                               known + "; use --format");
}

} // namespace

ExportCommand::ExportCommand(CLI::App& program)
    : Command(program, "export", "Write a gamut's surface in a mesh format, or save it to load it again")
{
    declareInputs(parser(), m_names)->expected(1);
    declareSettings(parser(), m_settings);
    parser()
        .add_option_function<std::string>(
            "-o,--output", [this](const std::string& name) { m_output = OptionValues::file(name); },
            "Output file, written completely or not at all; - for standard output")
        ->required()
        ->type_name("FILE");
    parser()
        .add_option_function<std::string>(
            "--format", [this](const std::string& word) { m_format = QString::fromStdString(word); },
            "ply, obj, stl, gltf, x3d, json or kvgamut (default: the suffix of the output)")
        ->check(CLI::IsMember(formatNames()).description(""))
        ->type_name("FORMAT");
    parser().add_flag("--quiet", m_quiet, "Show no progress bar (terminals show one after half a second)");
    parser().final_callback([this] {
        if (m_format.isEmpty())
            m_format = formatOf(m_output);
    });
    ReportOptions::endHelp(
        parser(),

        "The surface is closed, with shared vertices (except in STL), in Lab units (D50), with sRGB\n"
        "colours. x, y, z are a*, b*, L* in PLY, OBJ and STL; a*, L*, -b* in glTF and X3D. Every\n"
        "command accepts a .kvgamut file instead of a profile.");
}

int ExportCommand::run(Arguments arguments)
{
    const QCoreApplication application(arguments.count, arguments.values);
    Progress progress(m_quiet);
    const GamutInputs inputs = GamutInputs::compute(m_names, m_settings, progress);
    progress.clear();
    if (!inputs.sayProblems())
        return BadInput;
    if (const auto problem = writeOutput(m_output, fileOf(inputs.all.first()))) {
        say(*problem);
        return BadOutput;
    }
    return Done;
}

QByteArray ExportCommand::fileOf(const GamutInputs::Input& input) const
{
    const QString saved = input.source->savedProfile();
    const QString profile = saved.isEmpty() ? input.name : saved;
    if (m_format == savedSuffix)
        return SavedGamut{input.gamut->serialize(), profile}.bytes();
    return MeshFormat::ofSuffix(m_format)->write(
        ColoredMesh::of(input.gamut->mesh()),
        {SafeText::shown(profile, SafeText::maxPathLength), input.gamut->report()});
}
