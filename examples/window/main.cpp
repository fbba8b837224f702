// SPDX-License-Identifier: Apache-2.0
// The viewer as a window of its own: a gamut, markers, and what is under the mouse.
//
//   example_window [profile.icc] [--picture FILE]
//
// With --picture the window closes by itself once its picture is written.

#include "common/Profiles.h"
#include "common/WhenDrawn.h"

#include <KVGamut3DViewer.h>

#include <QtCore/QCommandLineParser>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

// Colours of a press sheet, say, as L*, a*, b*.
const QList<KVGamut3DViewer::ColoredPosition> measured{
    {Qt::white, {94, 0, -2}},
    {Qt::cyan, {55, -37, -50}},
    {Qt::magenta, {48, 74, -3}},
    {Qt::yellow, {89, -5, 93}},
};
constexpr float markerSize = 6;

/// Says which marker a click has hit: the one nearest to the eye whose ball the picking ray passes.
void reportHit(const QVector3D& origin, const QVector3D& direction)
{
    const KVGamut3DViewer::ColoredPosition* hit = nullptr;
    for (const auto& marker : measured) {
        const float distance2 = KVGamut3DViewer::squaredDistanceToRay(marker.second, {origin, direction});
        if (distance2 > markerSize * markerSize / 4)
            continue;
        if (!hit || origin.distanceToPoint(marker.second) < origin.distanceToPoint(hit->second))
            hit = &marker;
    }
    if (hit)
        std::printf("L* %g, a* %g, b* %g\n", hit->second.x(), hit->second.y(), hit->second.z());
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(
        {QStringLiteral("picture"), QStringLiteral("Write the picture and close."), QStringLiteral("file")});
    parser.addPositionalArgument(QStringLiteral("profile"), QStringLiteral("ICC profile to show"));
    parser.process(application);

    // A viewer is a QWindow. Everything may be asked of it before it is shown.
    KVGamut3DViewer viewer;
    viewer.setTitle(QStringLiteral("A gamut"));
    viewer.resize(640, 480);
    viewer.setCamera({265, 160, -450}, 0, {40, 0, 0}); // from there, looking at the middle of the L* axis
    viewer.addMarkerSet(QStringLiteral("measured"), KVGamut3DViewer::Sphere, measured, markerSize, 0.5f);
    QObject::connect(&viewer, &KVGamut3DViewer::click, &viewer,
                     [](QPoint, QVector3D origin, QVector3D direction) { reportHit(origin, direction); });

    // The gamut is computed on a thread of its own; the window can be used meanwhile.
    const auto [name, params] = profilesToShow(parser.positionalArguments()).front();
    viewer.load(name, params, [&](const QString& id, bool loaded) {
        if (!loaded) {
            std::fprintf(stderr, "%s gives no gamut\n", qPrintable(id));
            QCoreApplication::exit(1);
            return;
        }
        viewer.setGamutAmbientStrength(id, 0.55f); // some light from the side, to see the shape
        viewer.changeGamutAlpha(id, 0.5f, 300);    // the markers inside shine through
        if (parser.isSet(QStringLiteral("picture")))
            whenDrawn(viewer, [&] {
                const bool written = viewer.picture().save(parser.value(QStringLiteral("picture")));
                QCoreApplication::exit(written ? 0 : 1);
            });
    });

    viewer.show();
    return QGuiApplication::exec();
}
