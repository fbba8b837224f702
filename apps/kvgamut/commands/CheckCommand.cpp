// SPDX-License-Identifier: Apache-2.0
#include "CheckCommand.h"

#include "CheckTable.h"
#include "commands/options/OptionValues.h"
#include "commands/options/ProfileOptions.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Fonts.h"
#include "commands/process/Say.h"
#include "model/checks/ColorCheck.h"
#include "model/checks/PhotoCheck.h"
#include "model/checks/PhotoMarks.h"
#include "model/export/OutputFile.h"
#include "model/inputs/InputGate.h"
#include "model/pictures/PictureFile.h"
#include "model/reports/GamutWords.h"
#include "model/text/ListOf.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <cmath>

namespace {

constexpr float maxCheckTolerance = 100.0f;

} // namespace

CheckCommand::CheckCommand(CLI::App& program)
    : Command(program, "check", "Check whether photos and colours fit a device, and what is lost")
{
    declareInputs(parser(), m_profiles);
    const auto files = [](QStringList& to) {
        return [&to](const std::vector<std::string>& words) {
            for (const std::string& word : words)
                to.append(OptionValues::file(word));
        };
    };
    CLI::Option* photos =
        parser()
            .add_option_function<std::vector<std::string>>(
                "--photo", files(m_photos),
                "Photos: JPEG, PNG, TIFF, WebP (HEIF, JPEG XL), of which every pixel is counted")
            ->type_name("FILE");
    CLI::Option* colors =
        parser()
            .add_option_function<std::vector<std::string>>(
                "--colors", files(m_colorFiles), "Colours: CSV, CGATS, CxF and palettes, as inside --points")
            ->type_name("FILE");
    parser()
        .add_option_function<std::string>(
            "--photo-profile", [this](const std::string& word) { m_photoProfile = OptionValues::file(word); },
            "The profile of photos without an embedded one (default: sRGB for RGB and grey)")
        ->type_name("FILE");
    m_toleranceOption =
        parser()
            .add_option_function<std::string>(
                "--tolerance",
                [this](const std::string& word) {
                    m_tolerance = static_cast<double>(OptionValues::number(word, 0.0f, maxCheckTolerance));
                },
                "The edge: pixels at most this dE76 from the surface, colours at most this "
                "dE00 outside (default: "
                "1). If it is given, a colour beyond it makes the exit code 5")
            ->type_name("T");
    parser()
        .add_option_function<std::string>(
            "--fail-if-outside",
            [this](const std::string& word) {
                m_maxOutside = static_cast<double>(OptionValues::number(word, 0.0f, 100.0f)) / 100.0;
            },
            "Exit code 5 if more than this percentage of the pixels of a photo is outside")
        ->type_name("PERCENT");
    declareMarks(photos);
    m_colours.declare(parser());
    declareSettings(parser(), m_settings);
    m_intent = parser().get_option("--intent");
    m_report.declare(parser());
    parser().final_callback([this, photos, colors] {
        if (photos->empty() && colors->empty())
            throw CLI::ValidationError("nothing to check: give --photo FILE or --colors FILE");
        checkMarks();
    });
    ReportOptions::endHelp(parser(),
                           "Without --intent, photos are compared with the relative colorimetric gamut, in "
                           "which the paper is white,\n"
                           "and colours, which are measured, with the absolute colorimetric one.\n"
                           "dE00 is the CIEDE2000 difference to the colour of the gamut that has the "
                           "smallest; 0 inside. device is what\n"
                           "the profile makes of a colour, in percent, made the colour that this gives, "
                           "made_de00 its CIEDE2000;\n"
                           "made_de00_mean, _p95 and _max are the same over the pixels of a photo, with the "
                           "intent of the gamut.\n"
                           "Exit code 5: more is outside than --fail-if-outside or --tolerance allows.");
}

void CheckCommand::declareMarks(CLI::Option* photos)
{
    const auto declare = [&](const char* option, QString& name, const char* help) {
        parser()
            .add_option_function<std::string>(
                option, [&name](const std::string& word) { name = OptionValues::file(word); }, help)
            ->type_name("FILE")
            ->needs(photos);
    };
    declare(
        "--mask", m_mask,
        "Write the photo in grey with the pixels marked that are outside (one photo, one profile): png, jpg, "
        "tif or webp");
    declare("--map", m_map, "Write it with these pixels in the colours of their dE00: yellow to purple");
    parser()
        .add_option_function<std::string>(
            "--report", [this](const std::string& word) { m_reportFile = OptionValues::file(word); },
            "Write a page for people: html, self-contained, or pdf")
        ->type_name("FILE");
    parser()
        .add_option_function<std::string>(
            "--map-max",
            [this](const std::string& word) { m_mapMax = OptionValues::number(word, 0.1f, 1000.0f); },
            "The dE00 of the last colour of the map (default: 20)")
        ->type_name("D");
}

namespace {

bool isPdf(const QString& file)
{
    return file.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive);
}

bool isHtml(const QString& file)
{
    return file.endsWith(QLatin1String(".html"), Qt::CaseInsensitive) ||
           file.endsWith(QLatin1String(".htm"), Qt::CaseInsensitive);
}

} // namespace

void CheckCommand::addToReport(const QString& name, bool pass, const PhotoColors& colors,
                               const PhotoCheck& check, const GamutInputs::Input& input,
                               const PhotoReading& reading)
{
    if (m_reportFile.isEmpty())
        return;
    const auto mask = PhotoFile::open(name).and_then([&](PhotoFile photo) {
        return PhotoMarks::mask(photo, reading, *input.gamut, static_cast<float>(m_tolerance));
    });
    m_page.photos.append({name, input.name, GamutWords::intent(input.gamut->report()), pass, check,
                          colors.pixels, mask.value_or(QImage())});
}

void CheckCommand::noteInputs(const GamutInputs& gamuts)
{
    m_kinds += GamutInputs::kindLines(gamuts.usable());
    m_kinds.removeDuplicates();
    for (const GamutInputs::Input& input : gamuts.usable()) {
        const QString line = PictureNote::profileLine(input.name, input.source->hash());
        if (!m_page.inputs.contains(line))
            m_page.inputs.append(line);
    }
}

void CheckCommand::writeReport()
{
    if (m_reportFile.isEmpty())
        return;
    m_page.answer = summary();
    m_page.inputs += m_kinds;
    m_page.tolerance = m_tolerance;
    const QByteArray page = isPdf(m_reportFile) ? m_page.pdf() : m_page.html();
    if (const auto problem = writeOutput(m_reportFile, page)) {
        say(*problem);
        m_allWritten = false;
    }
}

void CheckCommand::checkMarks() const
{
    if (!m_reportFile.isEmpty() && !isPdf(m_reportFile) && !isHtml(m_reportFile))
        throw CLI::ValidationError("--report needs a name with the suffix .html or .pdf");
    const bool isReadAgain = !m_mask.isEmpty() || !m_map.isEmpty() || !m_reportFile.isEmpty();
    if (isReadAgain && m_photos.contains(QLatin1String("-")))
        throw CLI::ValidationError(
            "--mask, --map and --report read the photo again: give a file instead of -");
    for (const QString& name : {m_mask, m_map}) {
        if (name.isEmpty())
            continue;
        if (m_photos.size() != 1 || m_profiles.size() != 1)
            throw CLI::ValidationError("--mask and --map need exactly one photo and one profile");
        const auto format = PictureFile::formatOf(name);
        if (!format || *format == PictureFormat::Svg || *format == PictureFormat::Pdf)
            throw CLI::ValidationError("the mask and the map are pictures: png, jpg, tif or webp");
    }
}

void CheckCommand::writeMarks(const GamutInputs::Input& input, const PhotoReading& reading)
{
    const auto tolerance = static_cast<float>(m_tolerance);
    const auto& gamut = *input.gamut;
    const auto write = [&](const QString& name, const auto& draw) {
        if (name.isEmpty())
            return;
        const Result<QByteArray> bytes =
            PhotoFile::open(m_photos[0]).and_then(draw).and_then([&](const QImage& picture) {
                const PictureNote note{{}, {PictureNote::profileLine(input.name, input.source->hash())}};
                return PictureFile::bytes(picture, *PictureFile::formatOf(name), note);
            });
        if (!bytes) {
            say(bytes.error().about(m_photos[0]));
            m_allRead = false;
        } else if (const auto problem = writeOutput(name, *bytes)) {
            say(*problem);
            m_allWritten = false;
        }
    };
    write(m_mask, [&](PhotoFile photo) { return PhotoMarks::mask(photo, reading, gamut, tolerance); });
    const LossScale scale{tolerance, std::max(m_mapMax, tolerance + 0.1f)};
    write(m_map, [&](PhotoFile photo) { return PhotoMarks::map(photo, reading, gamut, scale); });
}

Command::Files CheckCommand::files() const
{
    QStringList inputs = m_profiles + m_photos + m_colorFiles + m_colours.files();
    if (!m_photoProfile.isEmpty())
        inputs.append(m_photoProfile);
    return {inputs, m_report.output};
}

KVGamut::Settings CheckCommand::settingsWith(KVVMRenderType intent) const
{
    KVGamut::Settings settings = m_settings;
    if (m_intent->empty())
        settings.intent = intent;
    return settings;
}

void CheckCommand::checkPhotos(const GamutInputs& gamuts, Table& table, Progress& progress)
{
    PhotoReading reading;
    reading.absolute = settingsWith(KVVMRenderRelativeColorimetric).intent == KVVMRenderAbsoluteColorimetric;
    if (!m_photoProfile.isEmpty()) {
        const Result<QByteArray> profile = InputGate::read(m_photoProfile, InputKind::Profile);
        if (!profile) {
            say(profile.error());
            m_allRead = false;
            return;
        }
        reading.defaultProfile = *profile;
    }
    for (const QString& name : m_photos) {
        progress.show(0.0f, QStringLiteral("photo"));
        const Result<PhotoColors> colors = PhotoFile::open(name).and_then(
            [&reading](PhotoFile photo) { return photoColors(photo, reading); });
        progress.clear();
        if (!colors) {
            say(colors.error().about(name));
            m_allRead = false;
            continue;
        }
        for (const Problem& about : colors->notes)
            note(about.about(name));
        for (const GamutInputs::Input& input : gamuts.usable()) {
            const auto device =
                DeviceRoundTrip::create(input.source->profile(), input.gamut->report().intent);
            const auto check =
                checkPhoto(*input.gamut, *colors, static_cast<float>(m_tolerance), device.get());
            if (!check)
                continue; // only a cancelled check fails
            const bool pass = check->outside <= m_maxOutside.value_or(0.0);
            m_passed = m_passed && (pass || !m_maxOutside);
            ++m_photosChecked;
            m_photosFitting += pass;
            table.rows.append(CheckTable::rowOf(name, pass, *colors, *check, input));
            progress.show(0.0f, QStringLiteral("picture"));
            writeMarks(input, reading);
            addToReport(name, pass, *colors, *check, input, reading);
            progress.clear();
        }
    }
}

void CheckCommand::checkColors(const GamutInputs& gamuts, Table& table, Progress& progress)
{
    for (const QString& file : m_colorFiles) {
        const std::optional<PointSet> set = m_colours.read(file, false);
        m_allRead = m_allRead && set && !set->partial;
        if (!set)
            continue;
        std::vector<KVGamut::LabPoint> colors;
        for (const MeasuredPoint& point : set->points)
            colors.push_back(point.lab);
        for (const GamutInputs::Input& input : gamuts.usable()) {
            const auto checks = ColorChecker(*input.gamut, input.source->profile())
                                    .checkAll(colors, m_tolerance, [&progress](float share) {
                                        progress.show(share, QStringLiteral("colours"));
                                    });
            for (qsizetype i = 0; i < set->points.size(); ++i) {
                const ColorCheck& check = checks[static_cast<std::size_t>(i)];
                const bool pass = check.zone != Side::Outside;
                m_passed = m_passed && (pass || m_toleranceOption->empty());
                ++m_colorsChecked;
                m_colorsPassed += pass;
                table.rows.append(CheckTable::rowOf(set->points[i], check, input));
                if (!m_reportFile.isEmpty())
                    m_page.colors.append({set->points[i].name, input.name,
                                          GamutWords::intent(input.gamut->report()), pass, set->points[i].lab,
                                          check});
            }
        }
    }
}

QString CheckCommand::summary() const
{
    QStringList sentences;
    if (m_photosChecked > 0)
        sentences.append(QStringLiteral("photos: %1 of %2 fit").arg(m_photosFitting).arg(m_photosChecked));
    if (m_colorsChecked > 0)
        sentences.append(QStringLiteral("colours: %1 of %2 pass").arg(m_colorsPassed).arg(m_colorsChecked));
    return sentences.join(QStringLiteral("; "));
}

int CheckCommand::run(Arguments arguments)
{
    if (!isPdf(m_reportFile)) {
        const QCoreApplication application(arguments.count, arguments.values);
        return check();
    }
    // a drawing needs fonts but no display
    qputenv("QT_QPA_PLATFORM", "offscreen");
    loadFonts();
    const QGuiApplication application(arguments.count, arguments.values);
    return check();
}

int CheckCommand::check()
{
    for (const QString& name : {m_mask, m_map, m_reportFile})
        if (const auto problem = overwritesInput(name, files().inputs)) {
            say(*problem);
            return WrongUsage;
        }
    Progress progress;
    Table table = CheckTable::empty(!m_photos.isEmpty(), !m_colorFiles.isEmpty());
    bool allUsed = true;
    if (!m_photos.isEmpty()) {
        const GamutInputs gamuts = GamutInputs::compute(
            m_profiles, settingsWith(KVVMRenderRelativeColorimetric), m_colours.reading, progress);
        progress.clear();
        allUsed = gamuts.sayProblems();
        noteInputs(gamuts);
        checkPhotos(gamuts, table, progress);
    }
    if (!m_colorFiles.isEmpty()) {
        const GamutInputs gamuts = GamutInputs::compute(
            m_profiles, settingsWith(KVVMRenderAbsoluteColorimetric), m_colours.reading, progress);
        progress.clear();
        allUsed = m_photos.isEmpty() ? gamuts.sayProblems() : allUsed;
        noteInputs(gamuts);
        checkColors(gamuts, table, progress);
    }
    progress.clear();
    table.summary = (QStringList(summary()) + m_kinds).join(QLatin1Char('\n'));
    writeReport();
    const int printed = m_report.print(table, allUsed && m_allRead);
    if (printed != BadOutput && !m_allWritten)
        return BadOutput;
    return printed == Done && !m_passed ? NotPassed : printed;
}
