// SPDX-License-Identifier: Apache-2.0
#include "CheckCommand.h"

#include "ProvenanceColumns.h"

#include "commands/options/OptionValues.h"
#include "commands/options/ProfileOptions.h"
#include "commands/process/ExitCode.h"
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

#include <cmath>

namespace {

using Kind = Table::Kind;

/// All keys are in every row, so that scripts find them; titles only for what was asked.
Table emptyTable(bool photos, bool colors)
{
    const auto ofPhotos = [photos](const char* title) { return photos ? title : ""; };
    const auto ofColors = [colors](const char* title) { return colors ? title : ""; };
    Table table;
    table.add("kind", "", Kind::Word);
    table.add("name", "name", Kind::Word);
    table.add("pass", "pass", Kind::Flag);
    table.add("profile", "profile", Kind::Word);
    table.add("intent", "intent", Kind::Word);
    table.add("pixels", "", Kind::Number);
    table.add("inside_share", ofPhotos("inside"), Kind::Share, 6, 2);
    table.add("edge_share", ofPhotos("edge"), Kind::Share, 6, 2);
    table.add("outside_share", ofPhotos("outside"), Kind::Share, 6, 2);
    table.add("de00_mean", ofPhotos("dE00 mean"), Kind::Number, 4, 2);
    table.add("de00_p95", ofPhotos("95 %"), Kind::Number, 4, 2);
    table.add("de00_max", ofPhotos("max"), Kind::Number, 4, 2);
    table.add("de76_mean", "", Kind::Number, 4, 2);
    table.add("de76_p95", "", Kind::Number, 4, 2);
    table.add("de76_max", "", Kind::Number, 4, 2);
    table.add("made_de00_mean", "", Kind::Number, 4, 2);
    table.add("made_de00_p95", "", Kind::Number, 4, 2);
    table.add("made_de00_max", "", Kind::Number, 4, 2);
    table.add("zone", ofColors("zone"), Kind::Word);
    table.add("lab", ofColors("L* a* b*"), Kind::Colour, 4, 2);
    table.add("de00", ofColors("dE00"), Kind::Number, 4, 2);
    table.add("de76", ofColors("dE76"), Kind::Number, 4, 2);
    table.add("nearest", ofColors("nearest"), Kind::Colour, 4, 2);
    table.add("nearest_same_hue", "", Kind::Colour, 4, 2);
    table.add("de00_same_hue", "", Kind::Number, 4, 2);
    table.add("device", ofColors("device %"), Kind::Numbers, 2, 0);
    table.add("made", "", Kind::Colour, 4, 2);
    table.add("made_de00", "", Kind::Number, 4, 2);
    table.add("device_inverted", "", Kind::Numbers, 2, 0);
    table.add("inverted_de00", "", Kind::Number, 4, 2);
    ProvenanceColumns::add(table);
    return table;
}

QString zoneWord(Side side)
{
    switch (side) {
    case Side::Inside:
        return QStringLiteral("in");
    case Side::Edge:
        return QStringLiteral("edge");
    case Side::Outside:
        break;
    }
    return QStringLiteral("out");
}

/// The first columns of a row.
Table::Row rowOf(const char* kind, const QString& name, bool pass, const GamutInputs::Input& input)
{
    return {QString::fromLatin1(kind), name, pass, input.name,
            GamutWords::intent(input.gamut->report().intent)};
}

QVariant colourOrUnknown(const KVGamut::LabPoint& lab)
{
    return std::isfinite(lab.L) ? Table::colour(lab) : QVariant();
}

Table::Row colorRow(const MeasuredPoint& point, const ColorCheck& check, const GamutInputs::Input& input)
{
    Table::Row row = rowOf("color", point.name, check.zone != Side::Outside, input);
    constexpr int ofPhotos = 13;
    row += QVariantList(ofPhotos, QVariant());
    const auto listed = [](const std::vector<double>& values) {
        return QVariant(QVariantList(values.begin(), values.end()));
    };
    const bool isMade = !check.device.empty();
    row += Table::Row{zoneWord(check.zone),
                      Table::colour(point.lab),
                      check.de00,
                      check.de76,
                      colourOrUnknown(check.nearest),
                      colourOrUnknown(check.nearestAtHue),
                      check.de00AtHue,
                      isMade ? listed(check.device) : QVariant(),
                      colourOrUnknown(check.made),
                      isMade ? QVariant(check.madeDe00) : QVariant(),
                      isMade ? listed(check.inverted) : QVariant(),
                      isMade ? QVariant(check.invertedDe00) : QVariant()};
    return row + ProvenanceColumns::of(input);
}

Table::Row photoRow(const QString& name, bool pass, const PhotoColors& colors, const PhotoCheck& check,
                    const GamutInputs::Input& input)
{
    Table::Row row = rowOf("photo", name, pass, input);
    row += Table::Row{double(colors.pixels), check.inside,   check.edge,      check.outside,  check.de00.mean,
                      check.de00.p95,        check.de00.max, check.de76.mean, check.de76.p95, check.de76.max};
    for (double PixelDifferences::*part :
         {&PixelDifferences::mean, &PixelDifferences::p95, &PixelDifferences::max})
        row.append(check.made ? QVariant((*check.made).*part) : QVariant());
    constexpr int ofColors = 12;
    row += QVariantList(ofColors, QVariant());
    return row + ProvenanceColumns::of(input);
}

constexpr float maxTolerance = 100.0f;

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
    m_toleranceOption = parser()
                            .add_option_function<std::string>(
                                "--tolerance",
                                [this](const std::string& word) {
                                    m_tolerance =
                                        static_cast<double>(OptionValues::number(word, 0.0f, maxTolerance));
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
            "--map-max",
            [this](const std::string& word) { m_mapMax = OptionValues::number(word, 0.1f, 1000.0f); },
            "The dE00 of the last colour of the map (default: 20)")
        ->type_name("D");
}

void CheckCommand::checkMarks() const
{
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
        for (const Problem& note : colors->notes)
            say(note.about(name));
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
            table.rows.append(photoRow(name, pass, *colors, *check, input));
            progress.show(0.0f, QStringLiteral("picture"));
            writeMarks(input, reading);
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
                table.rows.append(colorRow(set->points[i], check, input));
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
    const QCoreApplication application(arguments.count, arguments.values);
    for (const QString& name : {m_mask, m_map})
        if (const auto problem = overwritesInput(name, files().inputs)) {
            say(*problem);
            return WrongUsage;
        }
    Progress progress(m_report.quiet);
    Table table = emptyTable(!m_photos.isEmpty(), !m_colorFiles.isEmpty());
    bool allUsed = true;
    if (!m_photos.isEmpty()) {
        const GamutInputs gamuts =
            GamutInputs::compute(m_profiles, settingsWith(KVVMRenderRelativeColorimetric), progress);
        progress.clear();
        allUsed = gamuts.sayProblems();
        checkPhotos(gamuts, table, progress);
    }
    if (!m_colorFiles.isEmpty()) {
        const GamutInputs gamuts =
            GamutInputs::compute(m_profiles, settingsWith(KVVMRenderAbsoluteColorimetric), progress);
        progress.clear();
        allUsed = m_photos.isEmpty() ? gamuts.sayProblems() : allUsed;
        checkColors(gamuts, table, progress);
    }
    progress.clear();
    table.summary = summary();
    const int printed = m_report.print(table, allUsed && m_allRead);
    if (printed != BadOutput && !m_allWritten)
        return BadOutput;
    return printed == Done && !m_passed ? NotPassed : printed;
}
