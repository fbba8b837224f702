// SPDX-License-Identifier: Apache-2.0
#include "PicturePoints.h"

#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/InputGate.h"
#include "model/inputs/LittleCms.h"
#include "model/inputs/PictureProfile.h"
#include "model/inputs/PngChunks.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QBuffer>
#include <QtGui/QImage>
#include <QtGui/QImageReader>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <utility>
#include <vector>

using LittleCms::Context;
using LittleCms::Profile;

namespace {

constexpr KVVMRenderType usedIntent = KVVMRenderAbsoluteColorimetric;
constexpr float cellEdge = 4.0f;
constexpr qsizetype maxDrawnPoints = 1200; // each is drawn as a small sphere
constexpr qsizetype maxSamples = 250000;   // the conversion takes about 0.1 s
constexpr std::size_t pixelsPerBlock = 1024;
constexpr int maxPictureMegabytes = 1024; // 16 bits for each of four channels, and some more

struct TransformDeleter
{
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using TransformHandle = std::unique_ptr<void, TransformDeleter>;

/// A regular sample of the pixels, as device values 0..1: three for each pixel, or one with a grey profile.
std::vector<double> sampled(const QImage& picture, bool grey)
{
    const auto pixels = static_cast<double>(picture.width()) * picture.height();
    const int step = std::max(1, static_cast<int>(std::ceil(std::sqrt(pixels / maxSamples))));
    constexpr double full = 65535.0;
    std::vector<double> values;
    for (int y = step / 2; y < picture.height(); y += step) {
        // row by row, because the wider format takes twice the memory
        const QImage row = picture.copy(0, y, picture.width(), 1).convertToFormat(QImage::Format_RGBA64);
        const auto* line = reinterpret_cast<const QRgba64*>(row.constScanLine(0));
        for (int x = step / 2; x < row.width(); x += step) {
            if (line[x].alpha() == 0)
                continue;
            values.push_back(line[x].red() / full);
            if (grey)
                continue;
            values.push_back(line[x].green() / full);
            values.push_back(line[x].blue() / full);
        }
    }
    return values;
}

bool isPossible(const cmsCIELab& lab)
{
    constexpr double max = 10000.0; // far beyond any colour
    return std::abs(lab.L) <= max && std::abs(lab.a) <= max && std::abs(lab.b) <= max; // false for NaN
}

/// Converts in blocks, so that it can be cancelled within a few milliseconds.
Result<std::vector<KVGamut::LabPoint>> converted(cmsHTRANSFORM transform, const std::vector<double>& values,
                                                 std::size_t channels, const KVCompletionProtocolPtr& task)
{
    const std::size_t count = values.size() / channels;
    std::vector<cmsCIELab> labs(pixelsPerBlock);
    std::vector<KVGamut::LabPoint> colours;
    colours.reserve(count);
    for (std::size_t start = 0; start < count; start += pixelsPerBlock) {
        if (InputGate::isCancelled(task))
            return failure(KVProblemCode::Cancelled);
        const std::size_t size = std::min(pixelsPerBlock, count - start);
        cmsDoTransform(transform, values.data() + start * channels, labs.data(),
                       static_cast<cmsUInt32Number>(size));
        for (const cmsCIELab& lab : std::span(labs).first(size)) {
            if (!isPossible(lab))
                return failure(KVProblemCode::LabOutOfRange);
            colours.push_back(
                {static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)});
        }
        if (task)
            task->setProgress(static_cast<float>(start + size) / static_cast<float>(count));
    }
    return colours;
}

/// A file in memory that ends early after a cancellation, so that a decoder stops, too.
class CancellableFile : public QBuffer
{
public:
    CancellableFile(const QByteArray& content, KVCompletionProtocolPtr task) : m_task(std::move(task))
    {
        setData(content);
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char* to, qint64 count) override
    {
        return InputGate::isCancelled(m_task) ? -1 : QBuffer::readData(to, count);
    }

private:
    const KVCompletionProtocolPtr m_task;
};

/// Refuses a picture before its pixels are decoded.
Result<void> checkSize(const QImageReader& reader)
{
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() <= InputLimits::maxPictureMegapixels * 1'000'000)
        return {};
    return failure(ProblemCode::TooManyPixels, {QString::number(InputLimits::maxPictureMegapixels)});
}

Result<QImage> decoded(const QByteArray& content, const KVCompletionProtocolPtr& task)
{
    const QByteArray format = PictureProfile::formatOf(content);
    const auto pixels = format == "png" ? PngChunks::ofPixels(content) : content;
    if (!pixels)
        return failure(ProblemCode::PictureDataInvalid);
    CancellableFile file(*pixels, task);
    QImageReader reader(&file, format);
    if (const Result<void> checked = checkSize(reader); !checked)
        return failure(checked.error());
    QImageReader::setAllocationLimit(maxPictureMegabytes);
    QImage picture = reader.read();
    if (InputGate::isCancelled(task))
        return failure(KVProblemCode::Cancelled);
    if (!picture.isNull())
        return picture;
    return failure(reader.error() == QImageReader::UnsupportedFormatError ? ProblemCode::PictureFormatUnknown
                                                                          : ProblemCode::PictureDataInvalid);
}

/// The profile in the bytes @p icc, opened and checked by the engine. Little CMS alone would open a small
/// profile whose conversion takes hours.
Result<KVProfilePtr> checkedProfile(const QByteArray& icc)
{
    KVProfilePtr profile(KVProfileCreateWithData(icc.constData(), static_cast<int>(icc.size())),
                         KVProfileRelease);
    const auto problem = profile ? KVProfileTableProblem(*profile, usedIntent) : KVProfileProblem();
    if (problem)
        return failure(Problem(ProblemCode::PictureProfileInvalid).because(Problem(*problem)));
    return profile;
}

/// The pixels of @p picture, or a regular sample of them, converted with the profile @p checked.
Result<std::vector<KVGamut::LabPoint>> labsOf(const QImage& picture, const KVProfilePtr& checked,
                                              const KVCompletionProtocolPtr& task)
{
    const Context context(cmsCreateContext(nullptr, nullptr));
    const Profile profile(cmsOpenProfileFromMemTHR(context.get(), checked->bytes.constData(),
                                                   static_cast<cmsUInt32Number>(checked->bytes.size())));
    if (!profile)
        return failure(ProblemCode::PictureProfileInvalid);
    const cmsUInt32Number space = cmsGetColorSpace(profile.get()); // may be none of the enumeration
    const bool grey = space == cmsSigGrayData;
    if (space != cmsSigRgbData && !grey)
        return failure(ProblemCode::PictureSpaceUnknown);
    const Profile lab(cmsCreateLab4ProfileTHR(context.get(), nullptr));
    const TransformHandle transform(cmsCreateTransformTHR(context.get(), profile.get(),
                                                          grey ? TYPE_GRAY_DBL : TYPE_RGB_DBL, lab.get(),
                                                          TYPE_Lab_DBL, usedIntent, cmsFLAGS_NOCACHE));
    if (!transform)
        return failure(ProblemCode::PictureProfileHasNoLab);
    const std::vector<double> values = sampled(picture, grey);
    if (values.empty())
        return failure(ProblemCode::PictureTransparent);
    return converted(transform.get(), values, grey ? 1 : 3, task);
}

} // namespace

QList<MeasuredPoint> gatherColours(std::span<const KVGamut::LabPoint> colours, float edge,
                                   qsizetype maxPoints)
{
    struct Cell
    {
        std::array<double, 3> sum{};
        qsizetype count = 0;
    };
    std::map<std::array<int, 3>, Cell> cells;
    const auto indexOf = [edge](float value) { return static_cast<int>(std::floor(value / edge)); };
    for (const auto& [L, a, b] : colours) {
        Cell& cell = cells[{indexOf(L), indexOf(a), indexOf(b)}];
        cell.sum[0] += static_cast<double>(L);
        cell.sum[1] += static_cast<double>(a);
        cell.sum[2] += static_cast<double>(b);
        ++cell.count;
    }
    if (static_cast<qsizetype>(cells.size()) > maxPoints)
        return gatherColours(colours, edge * 1.25f, maxPoints);

    QList<MeasuredPoint> points;
    for (const auto& [place, cell] : cells) {
        const auto n = static_cast<double>(cell.count);
        const KVGamut::LabPoint mean{static_cast<float>(cell.sum[0] / n), static_cast<float>(cell.sum[1] / n),
                                     static_cast<float>(cell.sum[2] / n)};
        points.append({mean, QColor(), QString(), n / static_cast<double>(colours.size())});
    }
    return points;
}

Result<PointSet> pointsOfPicture(const QByteArray& content, const KVCompletionProtocolPtr& task)
{
    PointSet set;
    const Result<QImage> picture = decoded(content, task);
    if (!picture)
        return failure(picture.error());
    Result<QByteArray> icc = PictureProfile::read(content);
    if (!icc) {
        icc = BuiltInProfiles::profile(QStringLiteral("sRGB"));
        set.note = Problem(ProblemCode::PictureTakenAsSrgb);
    }
    const auto labs = checkedProfile(*icc).and_then(
        [&](const KVProfilePtr& profile) { return labsOf(*picture, profile, task); });
    if (!labs)
        return failure(labs.error());
    set.points = gatherColours(*labs, cellEdge, maxDrawnPoints);
    return set;
}
