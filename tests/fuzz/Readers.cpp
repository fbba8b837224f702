// SPDX-License-Identifier: Apache-2.0
#include "Readers.h"

#include "Require.h"
#include "desktop/files/RecentFiles.h"
#include "desktop/files/Session.h"
#include "desktop/files/WindowMemory.h"
#include "model/bodies/BoundaryTag.h"
#include "model/bodies/GamSurface.h"
#include "model/charts/DeviceChart.h"
#include "model/inputs/GamutSource.h"
#include "model/inputs/InputGate.h"
#include "model/inputs/PictureProfile.h"
#include "model/inputs/ProfileFacts.h"
#include "model/inputs/SavedGamut.h"
#include "model/photos/PhotoFile.h"
#include "model/pictures/CameraText.h"
#include "model/pictures/PngPicture.h"
#include "model/points/PointInput.h"
#include "model/points/PointReaders.h"
#include "model/points/PointText.h"
#include "model/problems/ProblemText.h"
#include "model/reports/GamutWords.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cmath>
#include <sys/mman.h>
#include <unistd.h>

namespace kvfuzz {
namespace {

/// A file in memory, with a name by which it can be opened.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray& bytes) : m_file(memfd_create("input", MFD_CLOEXEC))
    {
        require(m_file >= 0, "a file in memory can be made");
        const auto written = write(m_file, bytes.constData(), static_cast<std::size_t>(bytes.size()));
        require(written == bytes.size(), "a file in memory can be written");
    }
    ~MemoryFile() { close(m_file); }
    Q_DISABLE_COPY_MOVE(MemoryFile)

    QString name() const { return QStringLiteral("/proc/self/fd/%1").arg(m_file); }

private:
    const int m_file;
};

/// Whether a terminal shows @p c as a character of its place: no control character, no mark of writing
/// direction.
bool isShowable(QChar c)
{
    switch (c.direction()) {
    case QChar::DirLRE:
    case QChar::DirLRO:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirPDF:
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
    case QChar::DirPDI:
        return false;
    default:
        return c.category() != QChar::Other_Control && c.category() != QChar::Separator_Line &&
               c.category() != QChar::Separator_Paragraph &&
               !QStringLiteral("\u200E\u200F\u061C").contains(c);
    }
}

void requireSentence(const Problem& problem)
{
    constexpr qsizetype maxLength = 20000;
    for (const QString& line : {ProblemText::english(problem), ProblemText::translated(problem)}) {
        require(!line.isEmpty(), "each problem has a sentence");
        require(line.size() <= maxLength, "sentences have a limited length");
        require(std::all_of(line.begin(), line.end(), isShowable), "sentences have no control characters");
    }
}

/// The chart that the colours make, if they have device values.
void requireChart(const PointSet& set)
{
    const Result<DeviceChart> chart = DeviceChart::isIn(set) ? DeviceChart::of(set) : DeviceChart();
    if (!chart)
        return requireSentence(chart.error());
    for (std::size_t i = 0; i < chart->patches.size(); ++i) {
        const DeviceChart::Patch& patch = chart->patches[i];
        for (const double value : patch.device)
            require(value >= 0.0 && value <= 1.0, "device values are from 0 to 1");
        require(std::isfinite(patch.lab.L) && std::isfinite(patch.lab.a) && std::isfinite(patch.lab.b),
                "patches have a colour");
        require(i == 0 || chart->patches[i - 1].device < patch.device, "patches are different");
    }
}

void requirePoints(const Result<PointSet>& set)
{
    if (!set)
        return requireSentence(set.error());
    require(set->points.size() <= InputLimits::maxPoints, "the number of points is limited");
    for (const MeasuredPoint& point : set->points) {
        require(std::isfinite(point.lab.L) && std::isfinite(point.lab.a) && std::isfinite(point.lab.b),
                "colours are finite");
        require(point.name.size() <= InputLimits::maxNameLength, "names have a limited length");
    }
    require(set->partial == (set->note && set->partial), "what is left out is noted");
    for (const Problem& note : set->allNotes())
        requireSentence(note);
    requireChart(*set);
}

/// RGB values are those of sRGB.
PointOptions inSrgb()
{
    PointOptions options;
    options.space = QStringLiteral("sRGB");
    return options;
}

bool isFinite(const QVector3D& v)
{
    return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z());
}

void requireGamut(const KVGamut::GamutObject& gamut)
{
    const KVGamut::Report report = gamut.report();
    require(gamut.faceCount() > 0 && !gamut.problem(), "an opened gamut is not empty");
    require(report.volumeUncertainty >= 0.0 && report.volumeUncertainty <= report.volume,
            "the uncertainty is part of the volume");
    require(GamutWords::hasIntent(report) ? report.gridPoints >= 2 && report.gridPoints <= 129
                                          : report.gridPoints == 0 && report.channels == 0,
            "the grid is a possible one");
}

/// The number of pixels that @p bytes declare.
double pixelsOf(const QByteArray& bytes)
{
    if (PictureProfile::formatOf(bytes) == "png") { // libpng would allocate what each chunk declares
        const auto sideAt = [&bytes](qsizetype at) {
            return qFromBigEndian<quint32>(bytes.mid(at, 4).leftJustified(4));
        };
        return double(sideAt(16)) * double(sideAt(20));
    }
    const Result<PhotoFile> photo = PhotoFile::ofContent(bytes);
    const QSize size = photo ? photo->facts().size : QSize(0, 0);
    return double(size.width()) * double(size.height());
}

void picture(const QByteArray& bytes, const char* format)
{
    // Larger pictures are tested elsewhere: here they would take almost all of the time.
    constexpr double maxPixels = 100'000;
    if (PictureProfile::formatOf(bytes) != format)
        return;
    const MemoryFile file(bytes);
    const Result<GamutSource> source = GamutSource::open(file.name());
    if (!source)
        requireSentence(source.error());
    else
        require(ProfileFacts::of(source->profile()->bytes).channels > 0, "an opened profile has channels");
    if (pixelsOf(bytes) <= maxPixels)
        requirePoints(readPoints(file.name()));
}

/// The settings file of the program, in a folder of its own.
void writeSettings(const QByteArray& bytes)
{
    // in memory, where there is such a folder
    static const QTemporaryDir folder(QDir(QStringLiteral("/dev/shm")).exists()
                                          ? QStringLiteral("/dev/shm/kvgamut-XXXXXX")
                                          : QDir::temp().filePath(QStringLiteral("kvgamut-XXXXXX")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    require(QDir(folder.path()).mkpath(QStringLiteral("kvgamut")), "a folder can be made");
    QFile file(folder.filePath(QStringLiteral("kvgamut/recent-files")));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "a file can be written");
}

} // namespace

void readers::acb(const QByteArray& bytes)
{
    requirePoints(PointReaders::readAcb(bytes, inSrgb()));
}

void readers::ase(const QByteArray& bytes)
{
    requirePoints(PointReaders::readAse(bytes, inSrgb()));
}

void readers::gpl(const QByteArray& bytes)
{
    if (InputGate::isText(bytes))
        requirePoints(PointReaders::readGpl(PointText::of(bytes).utf8, inSrgb()));
}

void readers::cgats(const QByteArray& bytes)
{
    if (InputGate::isText(bytes))
        requirePoints(PointReaders::readCgats(PointText::of(bytes).utf8, inSrgb()));
}

void readers::csv(const QByteArray& bytes)
{
    if (InputGate::isText(bytes))
        requirePoints(PointReaders::readCsv(PointText::of(bytes).utf8, inSrgb()));
}

void readers::cxf(const QByteArray& bytes)
{
    if (InputGate::isText(bytes))
        requirePoints(PointReaders::readCxf(bytes, inSrgb()));
}

void readers::session(const QByteArray& bytes)
{
    const QDir folder(QStringLiteral("/folder"));
    const Result<Session> session = Session::fromJson(bytes, folder);
    if (!session)
        return requireSentence(session.error());
    require(session->gamuts.size() <= InputLimits::maxSessionFiles &&
                session->points.size() <= InputLimits::maxSessionFiles,
            "the number of files is limited");
    require(session->active >= 0 && session->active <= std::max<qsizetype>(0, session->gamuts.size() - 1),
            "the active gamut is one of the gamuts");
    require(isFinite(session->view.camera.position) && isFinite(session->view.camera.interestPoint) &&
                session->view.camera.position != session->view.camera.interestPoint &&
                isFinite(session->view.light),
            "the camera is a possible one");
    for (const QDir& writtenTo : {folder, QDir(QStringLiteral("/other/folder"))}) {
        const Result<Session> again = Session::fromJson(session->toJson(writtenTo), writtenTo);
        require(again.has_value(), "a written session can be read");
        require(*again == *session, "a written session is read without change");
    }
}

void readers::saved_gamut(const QByteArray& bytes)
{
    if (!SavedGamut::isSavedGamut(bytes))
        return;
    const MemoryFile file(bytes);
    const Result<GamutSource> source = GamutSource::open(file.name());
    if (!source)
        return requireSentence(source.error());
    requireGamut(source->givenGamut());
    const QByteArray written = SavedGamut{source->givenGamut().serialize(), source->savedProfile()}.bytes();
    const MemoryFile writtenFile(written);
    const Result<GamutSource> again = GamutSource::open(writtenFile.name());
    require(again.has_value(), "a written gamut can be read");
    require(again->givenGamut().faces() == source->givenGamut().faces() &&
                again->savedProfile() == source->savedProfile() &&
                SavedGamut{again->givenGamut().serialize(), again->savedProfile()}.bytes() == written,
            "a written gamut is read without change");
}

void readers::gam(const QByteArray& bytes)
{
    if (!GamSurface::isIn(bytes))
        return;
    const MemoryFile file(bytes);
    const Result<GamutSource> source = GamutSource::open(file.name());
    if (!source)
        return requireSentence(source.error());
    requireGamut(source->givenGamut());
}

void readers::boundary(const QByteArray& bytes)
{
    const Result<GivenGamut> given = BoundaryTag::read(bytes);
    if (!given)
        return requireSentence(given.error());
    requireGamut(given->gamut);
    require(!given->title.isEmpty() && !given->notes.isEmpty(), "a boundary says what it is");
}

void readers::settings(const QByteArray& bytes)
{
    constexpr qsizetype maxCount = 9;
    if (bytes.contains("proc")) // these files come and go while the test runs
        return;
    writeSettings(bytes);
    const QStringList before = RecentFiles::list();
    require(before.size() <= maxCount, "the number of recent files is limited");
    const QString opened = QStringLiteral("/dev/null");
    RecentFiles::add(opened);
    QStringList expected = before;
    expected.removeAll(opened);
    expected.prepend(opened);
    require(RecentFiles::list() == expected.mid(0, maxCount),
            "an added file is the first, then those before");
    RecentFiles::clear();
    require(RecentFiles::list().isEmpty(), "the list can be cleared");
    const WindowMemory memory = WindowMemory::fromJson(bytes);
    require(WindowMemory::fromJson(memory.toJson()) == memory, "what is kept is read again without change");
}

void readers::camera(const QByteArray& bytes)
{
    const auto camera = CameraText::read(QString::fromUtf8(bytes));
    if (!camera)
        return;
    require(isFinite(camera->position) && isFinite(camera->interestPoint) &&
                camera->position != camera->interestPoint && camera->viewingAngle >= 1.0f &&
                camera->viewingAngle <= 150.0f,
            "the camera is a possible one");
    const auto again = CameraText::read(CameraText::write(*camera));
    require(!again || again->orthogonal == camera->orthogonal,
            "a written camera is read with its projection");
}

void readers::reference(const QByteArray& bytes)
{
    constexpr double maxPixels = 1'000'000;
    if (PictureProfile::formatOf(bytes) == "png" && pixelsOf(bytes) > maxPixels)
        return;
    const MemoryFile file(bytes);
    const Result<QImage> picture = readPng(file.name());
    if (!picture)
        return requireSentence(picture.error());
    require(!picture->isNull(), "a picture that was read has pixels");
}

void readers::png(const QByteArray& bytes)
{
    picture(bytes, "png");
}

void readers::jpeg(const QByteArray& bytes)
{
    picture(bytes, "jpeg");
}

void readers::tiff(const QByteArray& bytes)
{
    picture(bytes, "tiff");
}

} // namespace kvfuzz
