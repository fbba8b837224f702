// SPDX-License-Identifier: Apache-2.0
#include "ExportCommand.h"

#include "commands/options/OptionValues.h"
#include "commands/options/ProfileOptions.h"
#include "commands/options/ReportOptions.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Say.h"
#include "commands/process/Steps.h"
#include "model/export/GamutPage.h"
#include "model/export/MeshFormat.h"
#include "model/export/OutputFile.h"
#include "model/inputs/SavedGamut.h"
#include "model/text/GamutTitles.h"
#include "model/text/SafeText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

#include <string>
#include <vector>

namespace {

constexpr QLatin1String savedSuffix("kvgamut");
constexpr QLatin1String pageSuffix("html");

std::vector<std::string> formatNames()
{
    std::vector<std::string> names;
    for (const MeshFormat& format : MeshFormat::all())
        names.emplace_back(format.suffix);
    names.push_back(savedSuffix.data());
    names.push_back(pageSuffix.data());
    return names;
}

/// The format for the suffix of @p output.
QString formatOf(const QString& output)
{
    QString suffix = QFileInfo(output).suffix().toLower();
    if (suffix == savedSuffix || suffix == pageSuffix || MeshFormat::ofSuffix(suffix))
        return suffix;
    std::string known;
    for (const std::string& name : formatNames())
        known += (known.empty() ? "." : ", .") + name;
    throw CLI::ValidationError("--output", "'" + output.toStdString() + "' has none of the suffixes " +
                                               known + "; use --format");
}

/// The profile that a gamut was computed from, as it was named.
QString profileOf(const GamutInputs::Input& input)
{
    const QString saved = input.source->savedProfile();
    return saved.isEmpty() ? input.name : saved;
}

QList<GamutPage::Gamut> pageGamuts(const QList<GamutInputs::Input>& inputs)
{
    QStringList profiles;
    for (const GamutInputs::Input& input : inputs)
        profiles.append(profileOf(input));
    const QStringList titles = gamutTitles(profiles);
    QList<GamutPage::Gamut> gamuts;
    for (qsizetype i = 0; i < inputs.size(); ++i)
        gamuts.append({titles[i], GamutPage::descriptionOf(*inputs[i].source), {}, {}, *inputs[i].gamut});
    GamutPage::chooseKeys(gamuts);
    GamutPage::chooseOpacities(gamuts);
    return gamuts;
}

/// @p gamuts, faint, and a body that was made of them.
QList<GamutPage::Gamut> withBody(QList<GamutPage::Gamut> gamuts, const QString& title,
                                 const KVGamut::GamutObject& body)
{
    for (GamutPage::Gamut& gamut : gamuts)
        gamut.opacity = GamutPage::faint;
    gamuts.append({title, {}, {}, {}, body});
    GamutPage::chooseKeys(gamuts);
    return gamuts;
}

QByteArray pageOf(const QList<GamutPage::Gamut>& gamuts, Progress& progress)
{
    return GamutPage::of(gamuts,
                         [&progress](float share) { progress.show(share, QStringLiteral("comparisons")); });
}

} // namespace

ExportCommand::ExportCommand(CLI::App& program)
    : Command(program, "export",
              "Write a gamut's surface in a mesh format, save it to load it again, or write a page to send")
{
    declareInputs(parser(), m_names);
    declareSettings(parser(), m_settings);
    m_colours.declare(parser());
    parser()
        .add_option_function<std::string>(
            "-o,--output", [this](const std::string& name) { m_output = OptionValues::file(name); },
            "Output file, written completely or not at all; - for standard output")
        ->required()
        ->type_name("FILE");
    parser()
        .add_option_function<std::string>(
            "--format", [this](const std::string& word) { m_format = QString::fromStdString(word); },
            "ply, obj, stl, gltf, x3d, json, icc (a gamut boundary), kvgamut or html (default: the suffix of "
            "the output)")
        ->transform(OptionValues::oneOf(formatNames()))
        ->type_name("FORMAT");
    m_part.declare(parser(), "Write a body instead, from two profiles");
    parser().final_callback([this] { checkFormat(); });
    ReportOptions::endHelp(
        parser(),

        "The surface is closed, with shared vertices (except in STL), in Lab units (D50), with sRGB\n"
        "colours. x, y, z are a*, b*, L* in PLY, OBJ and STL; a*, L*, -b* in glTF and X3D. Every\n"
        "command accepts a .kvgamut file instead of a profile.\n"
        "A page (.html) takes several profiles. It shows their gamuts in a browser, with their numbers, and\n"
        "loads nothing from a network. With --body it shows the body inside its two gamuts.");
}

bool ExportCommand::isPage() const
{
    return m_format == pageSuffix;
}

void ExportCommand::checkFormat()
{
    if (m_format.isEmpty())
        m_format = formatOf(m_output);
    m_part.check(m_names.size());
    if (m_part.body && m_format == savedSuffix)
        throw CLI::ValidationError("--body", "." + m_format.toStdString() + " contains whole gamuts");
    if (m_names.size() > 1 && !isPage() && !m_part.body)
        throw CLI::ValidationError("PROFILE", "only .html shows several gamuts; ." + m_format.toStdString() +
                                                  " contains one");
}

int ExportCommand::run(Arguments arguments)
{
    const QCoreApplication application(arguments.count, arguments.values);
    Progress progress;
    const GamutInputs inputs = GamutInputs::compute(m_names, m_settings, m_colours.reading, progress);
    const QList<GamutInputs::Input> usable = inputs.usable();
    QByteArray bytes;
    if (isPage() && !m_part.body && !usable.isEmpty())
        bytes = pageOf(pageGamuts(usable), progress);
    progress.clear();
    const bool allUsed = inputs.sayProblems();
    if (usable.isEmpty())
        return BadInput;
    if (m_part.body)
        return usable.size() < 2 ? int(BadInput) : writeBody(usable, progress);
    return write(isPage() ? bytes : fileOf(usable.first()), allUsed ? Done : BadInput);
}

/// Writes the output. @return @p exitCode, or BadOutput
int ExportCommand::write(const QByteArray& bytes, int exitCode) const
{
    if (const auto problem = writeOutput(m_output, bytes)) {
        say(*problem);
        return BadOutput;
    }
    Steps::wrote(m_output);
    return exitCode;
}

int ExportCommand::writeBody(const QList<GamutInputs::Input>& inputs, Progress& progress) const
{
    const QStringList titles = gamutTitles({profileOf(inputs[0]), profileOf(inputs[1])});
    const auto body = m_part.of(*inputs[0].gamut, *inputs[1].gamut, titles);
    if (!body) {
        say(body.error());
        return BadInput;
    }
    const QString title = m_part.titleOf(titles);
    if (!isPage())
        return write(fileOf(inputs[0], *body, SafeText::shown(title)), Done);
    const QByteArray page = pageOf(withBody(pageGamuts(inputs), title, *body), progress);
    progress.clear();
    return write(page, Done);
}

QByteArray ExportCommand::fileOf(const GamutInputs::Input& input) const
{
    if (m_format == savedSuffix)
        return SavedGamut{input.gamut->serialize(), profileOf(input)}.bytes();
    return fileOf(input, *input.gamut, {});
}

QByteArray ExportCommand::fileOf(const GamutInputs::Input& input, const KVGamut::GamutObject& gamut,
                                 const QString& part) const
{
    return MeshFormat::ofSuffix(m_format)->write(
        ColoredMesh::of(gamut.mesh()),
        {SafeText::shown(profileOf(input), SafeText::maxPathLength), gamut.report(), part});
}
