// SPDX-License-Identifier: Apache-2.0
#include "PicturePoints.h"

#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/LittleCms.h"
#include "model/inputs/PictureProfile.h"

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QImage>
#include <QtGui/QImageReader>

#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

using LittleCms::Profile;

namespace {

constexpr float cellEdge = 4.0f;
constexpr qsizetype maxDrawnPoints = 1200; // each is drawn as a small sphere
constexpr qsizetype maxSamples = 250000;   // the conversion takes about 0.1 s

struct TransformDeleter
{
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using TransformHandle = std::unique_ptr<void, TransformDeleter>;

/// A regular sample of the pixels, as device values 0..1: three for each pixel, or one with a grey profile.
std::vector<double> sampled(const QImage& picture, bool grey)
{
    const QImage image = picture.convertToFormat(QImage::Format_RGBA64);
    const auto pixels = static_cast<double>(image.width()) * image.height();
    const int step = std::max(1, static_cast<int>(std::ceil(std::sqrt(pixels / maxSamples))));
    constexpr double full = 65535.0;
    std::vector<double> values;
    for (int y = step / 2; y < image.height(); y += step) {
        const auto* line = reinterpret_cast<const QRgba64*>(image.constScanLine(y));
        for (int x = step / 2; x < image.width(); x += step) {
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

std::vector<KVGamut::LabPoint> converted(cmsHTRANSFORM transform, const std::vector<double>& values,
                                         std::size_t channels)
{
    const std::size_t count = values.size() / channels;
    std::vector<cmsCIELab> labs(count);
    cmsDoTransform(transform, values.data(), labs.data(), static_cast<cmsUInt32Number>(count));
    std::vector<KVGamut::LabPoint> colours;
    colours.reserve(count);
    for (const cmsCIELab& lab : labs)
        colours.push_back({static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)});
    return colours;
}

Result<QImage> decoded(const QString& file)
{
    QImageReader reader(file);
    QImage picture = reader.read();
    if (!picture.isNull())
        return picture;
    return failure(reader.error() == QImageReader::UnsupportedFormatError ? ProblemCode::PictureFormatUnknown
                                                                          : ProblemCode::PictureDataInvalid);
}

/// The pixels of @p picture, or a regular sample of them, converted with the profile @p icc.
Result<std::vector<KVGamut::LabPoint>> labsOf(const QImage& picture, const QByteArray& icc)
{
    const Profile profile(cmsOpenProfileFromMem(icc.constData(), static_cast<cmsUInt32Number>(icc.size())));
    if (!profile)
        return failure(ProblemCode::PictureProfileInvalid);
    const cmsColorSpaceSignature space = cmsGetColorSpace(profile.get());
    const bool grey = space == cmsSigGrayData;
    if (space != cmsSigRgbData && !grey)
        return failure(ProblemCode::PictureSpaceUnknown);
    const Profile lab(cmsCreateLab4Profile(nullptr));
    const TransformHandle transform(cmsCreateTransform(profile.get(), grey ? TYPE_GRAY_DBL : TYPE_RGB_DBL,
                                                       lab.get(), TYPE_Lab_DBL, INTENT_ABSOLUTE_COLORIMETRIC,
                                                       cmsFLAGS_NOCACHE));
    if (!transform)
        return failure(ProblemCode::PictureProfileHasNoLab);
    const std::vector<double> values = sampled(picture, grey);
    if (values.empty())
        return failure(ProblemCode::PictureTransparent);
    return converted(transform.get(), values, grey ? 1 : 3);
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

Result<PointSet> readPicturePoints(const QString& file)
{
    PointSet set;
    set.file = file;
    const Result<QImage> picture = decoded(file);
    if (!picture)
        return failure(picture.error().about(file));
    Result<QByteArray> icc = PictureProfile::read(file);
    if (!icc) {
        icc = BuiltInProfiles::profile(QStringLiteral("sRGB"));
        set.note = Problem(ProblemCode::PictureTakenAsSrgb).about(file);
    }
    const auto labs = labsOf(*picture, *icc);
    if (!labs)
        return failure(labs.error().about(file));
    set.points = gatherColours(*labs, cellEdge, maxDrawnPoints);
    return set;
}
