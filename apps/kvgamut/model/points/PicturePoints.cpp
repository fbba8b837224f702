// SPDX-License-Identifier: Apache-2.0
#include "PicturePoints.h"

#include "model/inputs/BuiltInProfiles.h"
#include "model/inputs/PictureProfile.h"

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QImage>
#include <QtGui/QImageReader>

#include <lcms2.h>

#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

namespace {

constexpr float cellEdge = 4.0f;
constexpr qsizetype mostPoints = 1200;    // each is drawn as a small ball
constexpr qsizetype mostSamples = 250000; // a tenth of a second of conversion

struct ProfileCloser
{
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
struct TransformDeleter
{
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using ProfileHandle = std::unique_ptr<void, ProfileCloser>;
using TransformHandle = std::unique_ptr<void, TransformDeleter>;

/// A regular sample of the pixels, as device values 0..1: three for each pixel, or one of a grey profile.
std::vector<double> sampled(const QImage& picture, bool grey)
{
    const QImage image = picture.convertToFormat(QImage::Format_RGBA64);
    const auto pixels = static_cast<double>(image.width()) * image.height();
    const int step = std::max(1, static_cast<int>(std::ceil(std::sqrt(pixels / mostSamples))));
    constexpr double full = 65535.0;
    std::vector<double> values;
    for (int y = step / 2; y < image.height(); y += step) {
        const auto* line = reinterpret_cast<const QRgba64*>(image.constScanLine(y));
        for (int x = step / 2; x < image.width(); x += step) {
            if (line[x].alpha() == 0) // nothing is to be seen there
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

QList<QVector3D> converted(cmsHTRANSFORM transform, const std::vector<double>& values, std::size_t channels)
{
    const std::size_t count = values.size() / channels;
    std::vector<cmsCIELab> labs(count);
    cmsDoTransform(transform, values.data(), labs.data(), static_cast<cmsUInt32Number>(count));
    QList<QVector3D> colours;
    colours.reserve(static_cast<qsizetype>(count));
    for (const cmsCIELab& lab : labs)
        colours.append(
            QVector3D(static_cast<float>(lab.L), static_cast<float>(lab.a), static_cast<float>(lab.b)));
    return colours;
}

QColor shownColour(const QVector3D& lab)
{
    const QList<float> rgb = KVColorConversionHelper::KVHLab2RGB({lab.x(), lab.y(), lab.z()});
    return QColor(qRound(rgb.value(0)), qRound(rgb.value(1)), qRound(rgb.value(2)));
}

} // namespace

QList<MeasuredPoint> gatherColours(const QList<QVector3D>& colours, float edge, qsizetype most)
{
    struct Cell
    {
        std::array<double, 3> sum{};
        qsizetype count = 0;
    };
    std::map<std::array<int, 3>, Cell> cells;
    for (const QVector3D& lab : colours) {
        std::array<int, 3> place{};
        for (int i = 0; i < 3; ++i)
            place[static_cast<std::size_t>(i)] = static_cast<int>(std::floor(lab[i] / edge));
        Cell& cell = cells[place];
        for (int i = 0; i < 3; ++i)
            cell.sum[static_cast<std::size_t>(i)] += static_cast<double>(lab[i]);
        ++cell.count;
    }
    if (static_cast<qsizetype>(cells.size()) > most)
        return gatherColours(colours, edge * 1.25f, most);

    QList<MeasuredPoint> points;
    for (const auto& [place, cell] : cells) {
        const auto n = static_cast<double>(cell.count);
        const QVector3D mean(static_cast<float>(cell.sum[0] / n), static_cast<float>(cell.sum[1] / n),
                             static_cast<float>(cell.sum[2] / n));
        points.append({QString(), mean, shownColour(mean), n / static_cast<double>(colours.size())});
    }
    return points;
}

PointSet readPicturePoints(const QString& file)
{
    PointSet set;
    set.file = file;
    const auto refused = [&](const QString& reason) {
        set.problem = QStringLiteral("'%1': %2").arg(file, reason);
        return set;
    };
    QImageReader reader(file);
    const QImage picture = reader.read();
    if (picture.isNull())
        return refused(reader.errorString());

    QByteArray bytes = PictureProfile::read(file).icc;
    if (bytes.isEmpty()) {
        bytes = BuiltInProfiles::profile(QStringLiteral("sRGB"));
        set.note = QStringLiteral("'%1' has no profile: its colours count as sRGB").arg(file);
    }
    const ProfileHandle profile(
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size())));
    if (!profile)
        return refused(QStringLiteral("its profile cannot be read"));
    const cmsColorSpaceSignature space = cmsGetColorSpace(profile.get());
    const bool grey = space == cmsSigGrayData;
    if (space != cmsSigRgbData && !grey)
        return refused(QStringLiteral("only the pixels of RGB and grey pictures can be shown"));

    const ProfileHandle lab(cmsCreateLab4Profile(nullptr));
    const TransformHandle transform(cmsCreateTransform(profile.get(), grey ? TYPE_GRAY_DBL : TYPE_RGB_DBL,
                                                       lab.get(), TYPE_Lab_DBL, INTENT_ABSOLUTE_COLORIMETRIC,
                                                       cmsFLAGS_NOCACHE));
    if (!transform)
        return refused(QStringLiteral("its profile gives no colours"));
    const std::vector<double> values = sampled(picture, grey);
    if (values.empty())
        return refused(QStringLiteral("all of it is transparent"));
    set.points = gatherColours(converted(transform.get(), values, grey ? 1 : 3), cellEdge, mostPoints);
    return set;
}
