// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "support/Spin.h"

#include <KVGamut3DViewer.h>

#include <QtCore/QString>
#include <QtGui/QImage>

#include <algorithm>
#include <cstdlib>

namespace kvtest {

inline const QString g = QStringLiteral("g");
inline const QString profile = QStringLiteral("/usr/share/color/icc/colord/AdobeRGB1998.icc");

/// A gamut, a marker and a camera that shows both.
inline void fill(KVGamut3DViewer& viewer)
{
    viewer.load(g, {{QStringLiteral("ProfilePath"), profile}}, nullptr);
    viewer.changeGamutAlpha(g, 0.6f, 0);
    viewer.setCamera(QVector3D(150, 300, 260), 0, QVector3D(50, 0, 0));
    viewer.addMarkerSet(QStringLiteral("m"), KVGamut3DViewer::Star, {{Qt::blue, {80, 40, 60}}}, 20, 0.5f);
}

/// The picture of the native window of the same size. The tests here use the libraries as hosts do.
inline QImage windowPicture(const QSize& size = {200, 150})
{
    KVGamut3DViewer window;
    fill(window);
    window.resize(size);
    window.show();
    spinUntil([&] { return window.isSettled() && !window.picture().isNull(); });
    return window.picture();
}

/// The largest difference of a channel of two pictures, 0..255; 256 if they differ in size.
inline int difference(const QImage& first, const QImage& second)
{
    if (first.size() != second.size() || first.isNull())
        return 256;
    int most = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            const QRgb a = first.pixel(x, y), b = second.pixel(x, y);
            most = std::max({most, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                             std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return most;
}

/// What a composed viewer may differ from the window. The numbers of its pixels are the same; a scene graph
/// may round them once.
constexpr int maxDifference = 1;

} // namespace kvtest
