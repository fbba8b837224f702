// SPDX-License-Identifier: Apache-2.0
#include "PictureOutput.h"

#include "OptionValues.h"
#include "commands/process/Progress.h"
#include "model/export/OutputFile.h"
#include "model/pictures/PictureSeries.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <cmath>

namespace {

constexpr float minDots = 1.0f;
constexpr float maxDots = 4800.0f;
constexpr float minTurn = 2.0f;
constexpr float maxTurn = 3600.0f;
constexpr qsizetype maxCommandLength = 1 << 16;

/// A folder, a device or a pipe. Their names have no suffix; the first cannot be written anyway.
bool isSpecial(const QString& name)
{
    const QFileInfo present(name);
    return name == QLatin1String("-") || (present.exists() && !present.isFile());
}

/// @p word as a shell reads it.
QString quoted(const QString& word)
{
    static const QRegularExpression plain(QStringLiteral("\\A[A-Za-z0-9_@%+=:,./-]+\\z"));
    if (plain.match(word).hasMatch())
        return word;
    return QLatin1Char('\'') + QString(word).replace(QLatin1Char('\''), QStringLiteral("'\\''")) +
           QLatin1Char('\'');
}

/// How many words from @p word on do not change the picture: 2 for an option and its value.
int wordsLeftOut(const QString& word)
{
    static const QStringList options{QStringLiteral("-o"), QStringLiteral("--output"),
                                     QStringLiteral("--format"), QStringLiteral("--reference"),
                                     QStringLiteral("--reference-threshold")};
    if (options.contains(word))
        return 2;
    const bool joined = word.startsWith(QLatin1String("-o")) || // a value without a space
                        options.contains(word.section(QLatin1Char('='), 0, 0));
    const bool isSpeech = word == QLatin1String("--verbose") || word == QLatin1String("--quiet");
    return joined || isSpeech ? 1 : 0;
}

std::optional<Problem> writeAll(const QList<std::pair<QString, QByteArray>>& files)
{
    QStringList made;
    for (const auto& [name, bytes] : files) {
        const bool isNew = !QFileInfo::exists(name);
        if (const auto problem = writeOutput(name, bytes)) {
            for (const QString& file : std::as_const(made))
                QFile::remove(file);
            return problem;
        }
        if (isNew)
            made.append(name);
    }
    return std::nullopt;
}

} // namespace

void PictureOutput::declare(CLI::App& parser)
{
    parser
        .add_option_function<std::string>(
            "-o,--output", [this](const std::string& word) { m_name = OptionValues::file(word); },
            "Output file; its suffix is the format: .png, .jpg, .tif, .webp, .svg or .pdf; - for standard "
            "output (PNG). Required without --reference")
        ->type_name("FILE");
    std::vector<std::string> words;
    for (const QString& suffix : PictureFile::suffixes())
        words.push_back(suffix.toStdString());
    parser
        .add_option_function<std::string>(
            "--format",
            [this](const std::string& word) {
                m_format = PictureFile::formatNamed(QString::fromStdString(word));
            },
            "png, jpg, tif, webp, svg or pdf, whatever the suffix of the output")
        ->transform(OptionValues::oneOf(words))
        ->type_name("FORMAT");
    parser
        .add_option_function<std::string>(
            "--dpi",
            OptionValues::named("--dpi",
                                [this](const std::string& word) {
                                    m_note.dotsPerInch =
                                        int(std::lround(OptionValues::number(word, minDots, maxDots)));
                                }),
            "Resolution that the file states, pixels per inch (96)")
        ->type_name("DPI");
    declareTurntable(parser);
}

void PictureOutput::declareTurntable(CLI::App& parser)
{
    parser
        .add_option_function<std::string>(
            "--turntable",
            OptionValues::named("--turntable",
                                [this](const std::string& word) {
                                    m_turntable =
                                        int(std::lround(OptionValues::number(word, minTurn, maxTurn)));
                                }),
            "Draw a turn around the L* axis in this many pictures: out-001.png, out-002.png... for -o "
            "out.png; "
            "an animation for -o out.webp")
        ->type_name("FRAMES")
        ->needs(parser.get_option("--output"));
}

void PictureOutput::check(bool transparent)
{
    if (!isGiven())
        return;
    if (!m_format)
        m_format = isSpecial(m_name) ? PictureFormat::Png : PictureFile::formatOf(m_name);
    if (!m_format)
        throw CLI::ValidationError("--output", "'" + m_name.toStdString() + "' has none of the suffixes " +
                                                   PictureFile::suffixList().toStdString() +
                                                   "; use --format");
    if (m_turntable > 0 && isSpecial(m_name) && *m_format != PictureFormat::WebP)
        throw CLI::ValidationError("--turntable", "a series of pictures needs the name of a file");
    if (transparent && !PictureFile::hasTransparency(*m_format))
        throw CLI::ValidationError("--no-background", "JPEG pictures have no transparency");
}

QStringList PictureOutput::names() const
{
    if (!isGiven())
        return {};
    return m_turntable > 0 ? PictureSeries::names(m_name, *m_format, m_turntable) : QStringList{m_name};
}

void PictureOutput::noteCommand(const Arguments& arguments)
{
    QStringList words{QStringLiteral("kvgamut")};
    for (int i = 1; i < arguments.count; ++i) {
        const QString word = OptionValues::file(arguments.values[i]);
        if (const int count = wordsLeftOut(word))
            i += count - 1;
        else
            words.append(quoted(word));
    }
    m_note.command = SafeText::shown(words.join(QLatin1Char(' ')), maxCommandLength);
}

std::optional<Problem> PictureOutput::writeTurn(const std::function<QImage(int)>& picture,
                                                const QStringList& profiles) const
{
    PictureNote note = m_note;
    note.profiles = profiles;
    PictureSeries series(m_name, *m_format, note, m_turntable);
    Progress progress;
    for (int i = 0; i < m_turntable; ++i) {
        progress.show(static_cast<float>(i) / static_cast<float>(m_turntable), QStringLiteral("pictures"));
        const QImage next = picture(i);
        const std::optional<Problem> problem =
            next.isNull() ? Problem(ProblemCode::NoPictureToSave) : series.add(next);
        if (problem)
            return problem->about(m_name);
    }
    progress.clear();
    const auto files = series.files();
    return files ? writeAll(*files) : files.error().about(m_name);
}

bool PictureOutput::isVector() const
{
    return m_turntable == 0 && (m_format == PictureFormat::Svg || m_format == PictureFormat::Pdf);
}

std::optional<Problem> PictureOutput::write(const QImage& picture, const QStringList& profiles,
                                            const PictureOverlay& overlay) const
{
    if (!isGiven())
        return std::nullopt;
    PictureNote note = m_note;
    note.profiles = profiles;
    const Result<QByteArray> bytes =
        PictureFile::bytes(picture, *m_format, note, isVector() ? overlay : PictureOverlay());
    if (!bytes)
        return bytes.error().about(m_name);
    return writeOutput(m_name, *bytes);
}
