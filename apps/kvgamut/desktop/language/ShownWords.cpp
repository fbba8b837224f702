// SPDX-License-Identifier: Apache-2.0
#include "ShownWords.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

#include <cmath>
#include <numbers>

namespace {

class Words
{
    Q_DECLARE_TR_FUNCTIONS(ShownWords)
};

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
    return words;
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
