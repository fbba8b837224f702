// SPDX-License-Identifier: Apache-2.0
#include "GamutSource.h"

#include "BuiltInNames.h"
#include "BuiltInProfiles.h"
#include "InputGate.h"
#include "InputName.h"
#include "PictureProfile.h"
#include "SavedGamut.h"
#include "model/bodies/BoundaryTag.h"
#include "model/bodies/ColourHull.h"
#include "model/bodies/GamSurface.h"
#include "model/bodies/ReferenceBodies.h"
#include "model/charts/ChartProfile.h"
#include "model/points/PointFile.h"
#include "model/problems/ProblemText.h"
#include "model/reports/GamutWords.h"

#include <QtCore/QCryptographicHash>

#include <algorithm>

namespace {

// Every ICC profile has this signature at this offset.
constexpr int iccSignatureOffset = 36;
constexpr QByteArrayView iccSignature("acsp");
static_assert(InputGate::startSize >= iccSignatureOffset + iccSignature.size());
static_assert(InputGate::startSize >= SavedGamut::markerSize);

bool isControl(char c)
{
    return c >= 0 && c < ' ' && c != '\t' && c != '\n' && c != '\r' && c != '\f';
}

/// Swatch exchange files and colour books.
bool isPalette(const QByteArray& start)
{
    return start.startsWith("ASEF") || start.startsWith("8BCB");
}

/// Whether a file that begins like this can be a table of colours.
bool isTable(const QByteArray& start)
{
    return isPalette(start) || start.startsWith("\xFF\xFE") || start.startsWith("\xFE\xFF") ||
           std::none_of(start.begin(), start.end(), isControl);
}

/// Whether @p bytes say themselves that they are measured colours; any text can be CSV.
bool saysThatItIsATable(const QByteArray& bytes)
{
    return bytes.contains("BEGIN_DATA") || bytes.contains("CxF") || bytes.startsWith("GIMP Palette") ||
           isPalette(bytes);
}

std::optional<InputKind> kindOf(const QByteArray& start)
{
    if (PictureProfile::isPicture(start))
        return InputKind::Picture;
    if (SavedGamut::isSavedGamut(start))
        return InputKind::SavedGamut;
    if (start.isEmpty() || start.mid(iccSignatureOffset, iccSignature.size()) == iccSignature)
        return InputKind::Profile; // the engine reports an empty file
    if (isTable(start))
        return InputKind::Points;
    return {};
}

/// Whether a computation can give such numbers. The surface itself is checked by the engine.
bool isPossible(const KVGamut::Report& report)
{
    constexpr int minGridPoints = 2;
    constexpr int maxGridPoints = 129;
    return report.volumeUncertainty >= 0.0 && report.volumeUncertainty <= report.volume &&
           report.foldShare >= 0.0 && report.foldShare <= 1.0 && report.seconds >= 0.0 &&
           (report.gridPoints >= minGridPoints || !GamutWords::hasIntent(report)) && report.gridPoints >= 0 &&
           report.gridPoints <= maxGridPoints;
}

QString hashOf(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

/// The profile for pixels without one: a built-in one, or a file.
Result<QByteArray> spaceOfPixels(const QString& space, const KVCompletionProtocolPtr& task)
{
    const QByteArray builtIn = BuiltInProfiles::profile(space);
    return builtIn.isEmpty() ? InputGate::read(space, InputKind::Profile, task) : builtIn;
}

/// A missing file and a folder have the codes of the engine, which hosts know.
Problem readProblem(const Problem& problem)
{
    if (problem.cause && problem.cause->code == Problem::Code(ProblemCode::NoSuchFile)) {
        const QString near = BuiltInNames::near(problem.subject);
        return near.isEmpty() ? Problem(KVProblemCode::FileNotFound, {}, problem.subject)
                              : Problem(ProblemCode::NoSuchInput, {near}, problem.subject);
    }
    if (problem.cause && problem.cause->code == Problem::Code(ProblemCode::IsDirectory))
        return Problem(KVProblemCode::NotAFile, {}, problem.subject);
    return problem;
}

} // namespace

Result<GamutSource> GamutSource::open(const QString& name, const KVCompletionProtocolPtr& task,
                                      const PointOptions& reading)
{
    const Result<InputName> input = InputName::of(name);
    if (!input)
        return failure(input.error());
    if (input->part == InputName::Part::Pixels)
        return ofPixels(name, input->file, task, reading);
    if (input->part == InputName::Part::Boundary)
        return ofBoundary(name, input->file, task);
    return openFile(name, input->file, task, reading)
        .and_then([&input](GamutSource source) -> Result<GamutSource> {
            if (const Result<void> checked = source.checkIntent(input->intent); !checked)
                return failure(checked.error().about(source.m_name));
            source.m_intent = input->intent;
            return source;
        });
}

/// Whether the gamut can have the intent that is part of the name.
Result<void> GamutSource::checkIntent(std::optional<KVVMRenderType> intent) const
{
    if (!intent || m_profile)
        return {};
    const KVGamut::Report report = m_given.report();
    if (!GamutWords::hasIntent(report))
        return failure(ProblemCode::InputWithoutIntent, {GamutWords::intent(*intent)});
    if (*intent != report.intent)
        return failure(ProblemCode::SavedIntentDiffers, {GamutWords::intent(report.intent)});
    return {};
}

Result<GamutSource> GamutSource::openFile(const QString& name, const QString& file,
                                          const KVCompletionProtocolPtr& task, const PointOptions& options)
{
    const bool isBuiltIn = BuiltInNames::isMeant(file);
    const QByteArray builtIn = isBuiltIn ? BuiltInProfiles::profile(file) : QByteArray();
    if (!builtIn.isEmpty())
        return ofProfileData(name, builtIn).map([](GamutSource source) {
            source.m_hash.clear(); // the name says everything
            return source;
        });
    if (const auto body = isBuiltIn ? ReferenceBodies::create(file, task) : std::nullopt)
        return ofGiven(name, *body);
    const Result<QByteArray> content = InputGate::read(file, kindOf, task);
    if (!content)
        return failure(readProblem(content.error()));
    return ofKind(kindOf(*content).value_or(InputKind::Profile), name, *content, task, options);
}

Result<GamutSource> GamutSource::ofKind(InputKind kind, const QString& name, const QByteArray& content,
                                        const KVCompletionProtocolPtr& task, const PointOptions& options)
{
    switch (kind) {
    case InputKind::Picture:
        return ofPicture(name, content);
    case InputKind::SavedGamut:
        return ofSavedGamut(name, content);
    case InputKind::Points:
        return ofChart(name, content, task, options);
    default:
        return ofProfileData(name, content);
    }
}

Result<GamutSource> GamutSource::ofContent(const QString& name, const QByteArray& content,
                                           const KVCompletionProtocolPtr& task, const PointOptions& reading)
{
    const std::optional<InputKind> kind = kindOf(content.left(InputGate::startSize));
    if (!kind)
        return failure(Problem(ProblemCode::UnknownFormat).about(name));
    const qint64 limit = InputLimits::maxBytes(*kind);
    if (content.size() > limit)
        return failure(Problem(ProblemCode::InputTooLarge, {QString::number(limit >> 20)}).about(name));
    return ofKind(*kind, name, content, task, reading);
}

/// @param profile the result of the engine; if null, KVProfileProblem() says why
Result<GamutSource> GamutSource::ofProfile(const QString& name, const KVProfilePtr& profile)
{
    if (!profile)
        return failure(Problem(KVProfileProblem().value_or(KVProblem())).about(name));
    GamutSource source(name);
    source.m_profile = profile;
    return source;
}

Result<GamutSource> GamutSource::ofProfileData(const QString& name, const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return failure(Problem(KVProblemCode::NotAProfile).about(name));
    return ofProfile(name,
                     KVProfilePtr(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())),
                                  KVProfileRelease))
        .map([&bytes](GamutSource source) {
            source.m_hash = hashOf(bytes);
            return source;
        });
}

Result<GamutSource> GamutSource::ofPicture(const QString& name, const QByteArray& bytes)
{
    const Result<QByteArray> icc = PictureProfile::read(bytes);
    if (!icc)
        return failure(icc.error().about(name));
    return ofProfileData(name, *icc).map([](GamutSource source) {
        source.m_title = QStringLiteral("profile of a picture");
        source.m_notes.append(QStringLiteral("This is the gamut of the profile that is embedded in the "
                                             "picture, not of its colours; for those add @pixels to its "
                                             "name."));
        return source;
    });
}

Result<GamutSource> GamutSource::ofPixels(const QString& name, const QString& file,
                                          const KVCompletionProtocolPtr& task, const PointOptions& options)
{
    PhotoReading reading;
    reading.absolute = true;
    if (!options.space.isEmpty()) {
        const Result<QByteArray> space = spaceOfPixels(options.space, task);
        if (!space)
            return failure(space.error());
        reading.defaultProfile = *space;
    }
    QByteArray hash;
    const Result<PhotoColors> colors = PhotoFile::open(file, task).and_then([&](PhotoFile photo) {
        hash = photo.hash(task);
        return photoColors(photo, reading, task);
    });
    if (!colors)
        return failure(readProblem(colors.error().about(name)));
    return ofGiven(name, ColourHull::ofPhoto(*colors, task)).map([&hash](GamutSource source) {
        source.m_hash = QString::fromLatin1(hash.toHex());
        return source;
    });
}

Result<GamutSource> GamutSource::ofBoundary(const QString& name, const QString& file,
                                            const KVCompletionProtocolPtr& task)
{
    const Result<QByteArray> content = InputGate::read(file, InputKind::Profile, task);
    if (!content)
        return failure(readProblem(content.error().about(name)));
    return ofGiven(name, BoundaryTag::read(*content, task), *content);
}

Result<GamutSource> GamutSource::ofChart(const QString& name, const QByteArray& bytes,
                                         const KVCompletionProtocolPtr& task, const PointOptions& options)
{
    if (GamSurface::isIn(bytes))
        return ofGiven(name, GamSurface::read(bytes, task), bytes);
    const Result<PointSet> set = pointsOfText(bytes, task, options);
    if (!set) {
        // columns of RGB or CMYK say what they are, too, and so does who declares their space
        const bool isTable = saysThatItIsATable(bytes) || !options.space.isEmpty() ||
                             set.error().code == Problem::Code(ProblemCode::PointSpaceNeeded);
        return failure((isTable ? set.error() : Problem(ProblemCode::UnknownFormat)).about(name));
    }
    return ofPoints(name, *set, task).map([&bytes](GamutSource source) {
        source.m_hash = hashOf(bytes);
        return source;
    });
}

Result<GamutSource> GamutSource::ofPoints(const QString& name, const PointSet& set,
                                          const KVCompletionProtocolPtr& task)
{
    if (set.points.size() > InputLimits::maxPoints) {
        const QString limit = QString::number(InputLimits::maxPoints);
        return failure(Problem(ProblemCode::TooManyPoints, {limit}).about(name));
    }
    if (!DeviceChart::isIn(set))
        return ofGiven(name, ColourHull::ofList(set, task));
    const Result<ChartProfile> made = ChartProfile::of(set, task);
    if (!made)
        return failure(made.error().about(name));
    return ofProfileData(name, made->bytes).map([&](GamutSource source) {
        source.m_hash.clear(); // no file
        source.m_chart = made->facts;
        source.m_measured = made->chart;
        source.m_notes = made->facts.notes();
        for (const Problem& note : set.allNotes())
            source.m_notes.append(ProblemText::english(note));
        return source;
    });
}

/// @param bytes of the file; empty if there is none, or if it is not in memory
Result<GamutSource> GamutSource::ofGiven(const QString& name, const Result<GivenGamut>& given,
                                         const QByteArray& bytes)
{
    if (!given)
        return failure(given.error().about(name));
    GamutSource source(name);
    source.m_given = given->gamut;
    source.m_title = given->title;
    source.m_hash = bytes.isEmpty() ? QString() : hashOf(bytes);
    source.m_notes = QStringList(given->title + QLatin1Char('.')) + given->notes;
    return source;
}

QString GamutSource::kind() const
{
    if (isSaved())
        return QStringLiteral("saved gamut");
    if (m_chart)
        return m_chart->title();
    return m_title.isEmpty() ? QStringLiteral("profile") : m_title;
}

Result<GamutSource> GamutSource::ofSavedGamut(const QString& name, const QByteArray& bytes)
{
    const Result<SavedGamut> saved = SavedGamut::read(bytes);
    if (!saved)
        return failure(saved.error().about(name));
    GamutSource source(name);
    source.m_given.deserialize(saved->gamut);
    source.m_savedProfile = saved->profile;
    source.m_hash = hashOf(bytes);
    if (source.m_given.faceCount() == 0)
        return failure(Problem(source.m_given.problem().value_or(KVProblem())).about(name));
    if (!isPossible(source.m_given.report()))
        return failure(Problem(KVProblemCode::SavedGamutInvalidValues).about(name));
    return source;
}

KVGamut::Settings GamutSource::settings(const KVGamut::Settings& general) const
{
    KVGamut::Settings settings = general;
    settings.intent = m_intent.value_or(general.intent);
    return settings;
}

Result<KVGamut::GamutObject> GamutSource::compute(const KVGamut::Settings& general,
                                                  KVCompletionProtocolPtr* protocol,
                                                  KVGamut::Construction construction) const
{
    if (!m_profile)
        return m_given;
    KVGamut::GamutObject gamut;
    if (!gamut.init(m_profile, settings(general), construction, protocol))
        return failure(Problem(gamut.problem().value_or(KVProblem())).about(m_name));
    return gamut;
}
