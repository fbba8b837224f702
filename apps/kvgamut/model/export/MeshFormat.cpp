// SPDX-License-Identifier: Apache-2.0
#include "MeshFormat.h"

#include "model/reports/GamutWords.h"

#include <algorithm>

QStringList MeshNote::lines() const
{
    const KVGamut::LabPoint& white = report.white;
    QStringList lines{QStringLiteral("gamut of: %1").arg(profile)};
    if (!part.isEmpty())
        lines.append(QStringLiteral("part: %1").arg(part));
    return lines << QStringList{
               QStringLiteral("intent: %1%2")
                   .arg(GamutWords::intent(report), GamutWords::blackPointCompensated(report)
                                                        ? QStringLiteral(", with black point compensation")
                                                        : QString()),
               QStringLiteral("white: L* %1, a* %2, b* %3")
                   .arg(double(white.L), 0, 'f', 3)
                   .arg(double(white.a), 0, 'f', 3)
                   .arg(double(white.b), 0, 'f', 3),
               QStringLiteral("volume: %1 dE76 cubed")
                   .arg(GamutWords::writtenVolume(report.volume), 0, 'f', GamutWords::volumeDecimals),
               QStringLiteral("coordinates: CIE L*a*b* (D50)")};
}

QString MeshNote::line() const
{
    return lines().join(QStringLiteral("; "));
}

const QList<MeshFormat>& MeshFormat::all()
{
    static const QList<MeshFormat> formats{{"ply", MeshWriters::ply}, {"obj", MeshWriters::obj},
                                           {"stl", MeshWriters::stl}, {"gltf", MeshWriters::gltf},
                                           {"x3d", MeshWriters::x3d}, {"json", MeshWriters::json},
                                           {"icc", MeshWriters::icc}};
    return formats;
}

const MeshFormat* MeshFormat::ofSuffix(const QString& suffix)
{
    const QList<MeshFormat>& formats = all();
    const auto found = std::find_if(formats.cbegin(), formats.cend(), [&](const MeshFormat& format) {
        return suffix.compare(QLatin1String(format.suffix), Qt::CaseInsensitive) == 0;
    });
    return found == formats.cend() ? nullptr : &*found;
}
