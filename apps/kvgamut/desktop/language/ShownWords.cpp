// SPDX-License-Identifier: Apache-2.0
#include "ShownWords.h"

#include "model/reports/GamutWords.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

#include <cmath>
#include <numbers>

namespace {

using KVGamut::Adaptation;

class Words
{
    Q_DECLARE_TR_FUNCTIONS(ShownWords)
};

QString shownLab(const KVGamut::LabPoint& lab)
{
    return ShownWords::lab({lab.L, lab.a, lab.b});
}

/// With one decimal, and no sign before a zero.
QString number(double value)
{
    return QLocale().toString(std::round(value * 10.0) / 10.0 + 0.0, 'f', 1);
}

} // namespace

QString ShownWords::intent(KVVMRenderType intent)
{
    switch (intent) {
    case KVVMRenderPerceptual:
        return Words::tr("Perceptual");
    case KVVMRenderRelativeColorimetric:
        return Words::tr("Relative colorimetric");
    case KVVMRenderSaturation:
        return Words::tr("Saturation");
    case KVVMRenderAbsoluteColorimetric:
        return Words::tr("Absolute colorimetric");
    }
    return {};
}

QString ShownWords::settings(const KVGamut::Settings& settings)
{
    QString words = intent(settings.intent);
    if (settings.blackPointCompensation && settings.intent != KVVMRenderAbsoluteColorimetric)
        words += Words::tr(", black point compensated");
    if (settings.adaptation != Adaptation::Full && settings.intent == KVVMRenderAbsoluteColorimetric)
        words += settings.adaptation == Adaptation::None ? Words::tr(", not adapted")
                                                         : Words::tr(", not adapted, relative to D65");
    return words;
}

QString ShownWords::basis(const KVGamut::Settings& computedWith, KVGamut::Method method)
{
    if (method == KVGamut::Method::GivenSurface)
        return Words::tr("Given surface");
    if (method == KVGamut::Method::ConvexHull)
        return Words::tr("Convex hull");
    return settings(computedWith);
}

QString ShownWords::adaptation(KVGamut::Adaptation adaptation)
{
    switch (adaptation) {
    case Adaptation::Full:
        return Words::tr("As in the profile");
    case Adaptation::None:
        return Words::tr("None");
    case Adaptation::NoneD65:
        return Words::tr("None, relative to D65");
    }
    return {};
}

QString ShownWords::conversion(const KVGamut::Report& report)
{
    const KVGamut::Conversion& conversion = report.conversion;
    QStringList lines;
    if (!conversion.table.isEmpty())
        lines.append(conversion.tableIsFallback
                         ? Words::tr("Table: %1; the profile has none for this intent").arg(conversion.table)
                         : Words::tr("Table: %1").arg(conversion.table));
    if (conversion.mediaWhite)
        lines.append(Words::tr("Media white: %1").arg(shownLab(*conversion.mediaWhite)));
    if (conversion.adaptationSource != KVGamut::AdaptationSource::None)
        lines.append(conversion.adaptation == Adaptation::Full
                         ? Words::tr("Adapted to D50 by the profile")
                         : Words::tr("The profile's adaptation to D50 is undone"));
    else if (conversion.adaptation != Adaptation::Full)
        lines.append(Words::tr("The profile contains no adaptation to undo"));
    if (conversion.mappedBlack)
        lines.append(Words::tr("Mapped to L* 0: %1").arg(shownLab(*conversion.mappedBlack)));
    if (conversion.cicp) {
        lines.append(Words::tr("Encoding (cicp): %1").arg(GamutWords::encoding(*conversion.cicp)));
        if (GamutWords::isHighDynamicRange(*conversion.cicp))
            lines.append(
                Words::tr("The volume is relative to the profile's white; brighter light is not counted"));
    }
    if (GamutWords::missesMixtures(report))
        lines.append(
            Words::tr("With more than %1 channels, colours of mixtures beyond the sampled ones are not "
                      "looked for; the uncertainty does not include them")
                .arg(GamutWords::maxSearchedChannels));
    return lines.join(QLatin1Char('\n'));
}

QString ShownWords::lab(const QVector3D& lab)
{
    return QStringLiteral("L* %1   a* %2   b* %3").arg(number(lab.x()), number(lab.y()), number(lab.z()));
}

QString ShownWords::lch(const QVector3D& lab)
{
    const double chroma = std::hypot(static_cast<double>(lab.y()), static_cast<double>(lab.z()));
    double hue =
        std::atan2(static_cast<double>(lab.z()), static_cast<double>(lab.y())) * 180.0 / std::numbers::pi;
    if (hue < 0.0)
        hue += 360.0;
    constexpr double neutral = 0.05; // below this chroma the colour is grey and has no hue
    return QStringLiteral("L* %1   C* %2   h %3")
        .arg(number(lab.x()), number(chroma),
             chroma < neutral ? QStringLiteral("–") : number(hue) + QStringLiteral("°"));
}

QString ShownWords::distance(float distance, const QString& gamut)
{
    const QString number = QLocale().toString(std::fabs(static_cast<double>(distance)), 'f', 2);
    return distance < 0.0f ? Words::tr("%1 ΔE inside %2").arg(number, gamut)
                           : Words::tr("%1 ΔE outside %2").arg(number, gamut);
}
