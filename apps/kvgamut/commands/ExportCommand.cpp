// SPDX-License-Identifier: Apache-2.0
#include "ExportCommand.h"

#include "commands/options/ProfileOptions.h"
#include "commands/options/ReportOptions.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Say.h"
#include "model/export/MeshFormat.h"
#include "model/export/OutputFile.h"
#include "model/inputs/SavedGamut.h"

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

/// The format that the suffix of @p output names.
QString formatOf(const QString& output)
{
    QString suffix = QFileInfo(output).suffix().toLower();
    if (suffix == savedSuffix || MeshFormat::ofSuffix(suffix))
        return suffix;
    std::string known;
    for (const std::string& name : formatNames())
        known += (known.empty() ? "." : ", .") + name;
    throw CLI::ValidationError("--output", "'" + output.toStdString() + "' ends in none of " + known +
                                               "; --format says what to write");
}

} // namespace

ExportCommand::ExportCommand(CLI::App& program)
    : Command(program, "export", "Write a gamut's surface for other programs, or save it to be loaded again")
{
    declareInputs(parser(), m_names)->expected(1);
    declareSettings(parser(), m_settings);
    parser()
        .add_option_function<std::string>(
            "-o,--output", [this](const std::string& name) { m_output = QString::fromStdString(name); },
            "File to write, whole or not at all; - for standard output")
        ->required()
        ->type_name("FILE");
    parser()
        .add_option_function<std::string>(
            "--format", [this](const std::string& word) { m_format = QString::fromStdString(word); },
            "ply, obj, stl, gltf, x3d, json or kvgamut (what the name of the output ends in)")
        ->check(CLI::IsMember(formatNames()).description(""))
        ->type_name("FORMAT");
    parser().add_flag("--quiet", m_quiet, "No progress bar, which a terminal shows after half a second");
    parser().final_callback([this] {
        if (m_format.isEmpty())
            m_format = formatOf(m_output);
    });
    ReportOptions::endHelp(
        parser(),

        "The surface is closed, its corners shared (but in STL, which has none), in units of Lab\n"
        "(D50), with the colours of sRGB screens. x, y, z are a*, b*, L* in PLY, OBJ and STL;\n"
        "a*, L*, -b* in glTF and X3D. .kvgamut is loaded by every command instead of a profile.");
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
    return MeshFormat::ofSuffix(m_format)->write(ColoredMesh::of(input.gamut->mesh()),
                                                 {profile, input.gamut->report()});
}
