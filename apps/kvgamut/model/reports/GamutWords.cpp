// SPDX-License-Identifier: Apache-2.0
#include "GamutWords.h"

#include <cmath>
#include <map>

namespace {

using KVGamut::Adaptation;
using KVGamut::AdaptationSource;

// ITU-T H.273, table 2
QString primaries(int code)
{
    static const std::map<int, QString> names{
        {1, QStringLiteral("BT.709")},        {4, QStringLiteral("BT.470 M")},
        {5, QStringLiteral("BT.470 BG")},     {6, QStringLiteral("BT.601")},
        {7, QStringLiteral("SMPTE 240M")},    {8, QStringLiteral("film")},
        {9, QStringLiteral("BT.2020")},       {10, QStringLiteral("XYZ")},
        {11, QStringLiteral("DCI-P3")},       {12, QStringLiteral("Display P3")},
        {22, QStringLiteral("EBU Tech 3213")}};
    const auto known = names.find(code);
    return known == names.end() ? QString::number(code) : known->second;
}

// ITU-T H.273, table 3
QString transfer(int code)
{
    static const std::map<int, QString> names{
        {1, QStringLiteral("BT.709 curve")},        {4, QStringLiteral("gamma 2.2")},
        {5, QStringLiteral("gamma 2.8")},           {6, QStringLiteral("BT.601 curve")},
        {7, QStringLiteral("SMPTE 240M curve")},    {8, QStringLiteral("linear")},
        {13, QStringLiteral("sRGB curve")},         {14, QStringLiteral("BT.2020 curve")},
        {15, QStringLiteral("BT.2020 curve")},      {16, QStringLiteral("PQ")},
        {17, QStringLiteral("SMPTE ST 428 curve")}, {18, QStringLiteral("HLG")}};
    const auto known = names.find(code);
    return known == names.end() ? QStringLiteral("transfer %1").arg(code) : known->second;
}

QString labText(const KVGamut::LabPoint& lab)
{
    const auto decimal = [](float value) {
        return QString::number(std::round(static_cast<double>(value) * 10.0) / 10.0 + 0.0, 'f', 1);
    };
    return QStringLiteral("L* %1, a* %2, b* %3").arg(decimal(lab.L), decimal(lab.a), decimal(lab.b));
}

QString adaptationNote(const KVGamut::Conversion& conversion)
{
    const QString white =
        conversion.adaptation == Adaptation::NoneD65 ? QStringLiteral("D65") : QStringLiteral("D50");
    switch (conversion.adaptationSource) {
    case AdaptationSource::None:
        return QStringLiteral("The profile contains no adaptation; Lab is relative to %1.").arg(white);
    case AdaptationSource::Tag:
        return QStringLiteral("The adaptation of the tag 'chad' is undone; Lab is relative to %1.")
            .arg(white);
    case AdaptationSource::MediaWhite:
        return QStringLiteral(
                   "The adaptation from the media white is undone (Bradford); Lab is relative to %1.")
            .arg(white);
    }
    return {};
}

QString encodingNote(const KVGamut::CodePoints& cicp)
{
    const QString start = QStringLiteral("The tag 'cicp' says %1. ").arg(GamutWords::encoding(cicp));
    if (GamutWords::isHighDynamicRange(cicp))
        return start + QStringLiteral("The volume is that of the profile's transform, relative to its white; "
                                      "brighter light (HDR) is not counted.");
    return start +
           QStringLiteral("The volume is that of the profile's transform; the tag does not change it.");
}

} // namespace

QString GamutWords::intent(KVVMRenderType intent)
{
    switch (intent) {
    case KVVMRenderPerceptual:
        return QStringLiteral("perceptual");
    case KVVMRenderRelativeColorimetric:
        return QStringLiteral("relative");
    case KVVMRenderSaturation:
        return QStringLiteral("saturation");
    case KVVMRenderAbsoluteColorimetric:
        return QStringLiteral("absolute");
    }
    return {};
}

QString GamutWords::method(KVGamut::Method method)
{
    switch (method) {
    case KVGamut::Method::None:
        break;
    case KVGamut::Method::DeviceMesh:
        return QStringLiteral("device mesh");
    case KVGamut::Method::RadialHull:
        return QStringLiteral("radial hull");
    case KVGamut::Method::LatticeSurface:
        return QStringLiteral("lattice surface");
    case KVGamut::Method::GivenSurface:
        return QStringLiteral("given surface");
    case KVGamut::Method::ConvexHull:
        return QStringLiteral("convex hull");
    }
    return {};
}

bool GamutWords::hasIntent(const KVGamut::Report& report)
{
    return report.method != KVGamut::Method::GivenSurface && report.method != KVGamut::Method::ConvexHull;
}

QString GamutWords::intent(const KVGamut::Report& report)
{
    return hasIntent(report) ? intent(report.intent) : QStringLiteral("none");
}

QString GamutWords::basis(const KVGamut::Report& report)
{
    return hasIntent(report) ? QStringLiteral("%1 intent").arg(intent(report.intent)) : method(report.method);
}

bool GamutWords::blackPointCompensated(const KVGamut::Report& report)
{
    return report.blackPointCompensation && report.intent != KVVMRenderAbsoluteColorimetric;
}

double GamutWords::writtenVolume(double volume)
{
    const double unit = std::pow(10.0, volumeDecimals);
    return std::round(volume * unit) / unit + 0.0; // no negative zero
}

QString GamutWords::adaptation(KVGamut::Adaptation adaptation)
{
    switch (adaptation) {
    case Adaptation::Full:
        return QStringLiteral("full");
    case Adaptation::None:
        return QStringLiteral("none");
    case Adaptation::NoneD65:
        return QStringLiteral("none-d65");
    }
    return {};
}

QString GamutWords::adaptedBy(KVGamut::AdaptationSource source)
{
    switch (source) {
    case AdaptationSource::None:
        break;
    case AdaptationSource::Tag:
        return QStringLiteral("chad");
    case AdaptationSource::MediaWhite:
        return QStringLiteral("wtpt");
    }
    return {};
}

QString GamutWords::encoding(const KVGamut::CodePoints& cicp)
{
    constexpr int matrixOfRgb = 0;
    QString text = QStringLiteral("%1 primaries, %2").arg(primaries(cicp.primaries), transfer(cicp.transfer));
    if (cicp.matrix != matrixOfRgb)
        text += QStringLiteral(", matrix %1").arg(cicp.matrix);
    return text + (cicp.fullRange ? QStringLiteral(", full range") : QStringLiteral(", narrow range"));
}

bool GamutWords::isHighDynamicRange(const KVGamut::CodePoints& cicp)
{
    constexpr int pq = 16, hlg = 18;
    return cicp.transfer == pq || cicp.transfer == hlg;
}

bool GamutWords::missesMixtures(const KVGamut::Report& report)
{
    return report.channels > maxSearchedChannels && !report.problem;
}

QStringList GamutWords::notes(const KVGamut::Report& report)
{
    const KVGamut::Conversion& conversion = report.conversion;
    QStringList notes;
    if (conversion.tableIsFallback)
        notes.append(QStringLiteral("The profile has no table for the %1 intent; %2 is used.")
                         .arg(intent(report.intent), conversion.table));
    if (conversion.mappedBlack)
        notes.append(QStringLiteral("Black point compensation maps %1 to L* 0; darker colours are clipped.")
                         .arg(labText(*conversion.mappedBlack)));
    if (conversion.adaptation != Adaptation::Full)
        notes.append(adaptationNote(conversion));
    if (conversion.cicp)
        notes.append(encodingNote(*conversion.cicp));
    if (missesMixtures(report))
        notes.append(
            QStringLiteral("With more than %1 channels, colours of mixtures beyond the sampled ones are "
                           "not looked for; the uncertainty does not include them.")
                .arg(maxSearchedChannels));
    return notes;
}
