// SPDX-License-Identifier: Apache-2.0
// The viewer as a top-level window: a gamut, markers, and what is under the pointer.
//
//   example_window [profile.icc] [--picture FILE]
//
// With --picture the window closes by itself after it has written its picture.

#include "common/Profiles.h"
#include "common/WhenDrawn.h"

#include <KVGamutView.h>

#include <QtCore/QCommandLineParser>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

// L*, a*, b* of a printed sheet.
const QList<KVGamut3DViewer::ColoredPosition> measured{
    {Qt::white, {94, 0, -2}},
    {Qt::cyan, {55, -37, -50}},
    {Qt::magenta, {48, 74, -3}},
    {Qt::yellow, {89, -5, 93}},
};
constexpr float markerSize = 6;

void printHit(const KVHit& hit)
{
    if (hit.endsDrag || hit.kind == KVHit::Kind::Nothing)
        return;
    if (hit.kind == KVHit::Kind::Marker)
        std::printf("patch %d of %s: ", hit.index, qPrintable(hit.id));
    else
        std::printf("surface of %s: ", qPrintable(hit.id));
    std::printf("L* %g, a* %g, b* %g\n", hit.lab.x(), hit.lab.y(), hit.lab.z());
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

    // A viewer is a QWindow. All its methods may be called before it is shown.
    KVGamut3DViewer viewer;
    viewer.setTitle(QStringLiteral("A gamut"));
    viewer.resize(640, 480);
    viewer.setCamera({265, 160, -450}, 0, {40, 0, 0}); // eye, duration of the move, interest point
    viewer.addMarkerSet(QStringLiteral("measured"), KVGamut3DViewer::Sphere, measured, markerSize, 0.5f);

    KVGamutView view(&viewer);
    if (const auto problem = view.drawingProblem()) {
        std::fprintf(stderr, "The gamut cannot be drawn: %s\n", qPrintable(problem->text()));
        return 1;
    }
    QObject::connect(&view, &KVGamutView::clicked, &printHit);

    // The gamut is computed on a worker thread; the window stays responsive.
    const auto [id, request] = profilesToShow(parser.positionalArguments()).front();
    KVGamutLook look;
    look.opacity = 0.5f; // shows the markers inside
    view.setLook(id, look);
    view.load(id, request);
    QObject::connect(&view, &KVGamutView::failed, [](const QString& failed, const KVProblem& problem) {
        std::fprintf(stderr, "%s gives no gamut: %s\n", qPrintable(failed), qPrintable(problem.text()));
        QCoreApplication::exit(1);
    });
    QObject::connect(&view, &KVGamutView::loaded, [&] {
        if (!parser.isSet(QStringLiteral("picture")))
            return;
        whenDrawn(view, [&] {
            const bool written = viewer.picture().save(parser.value(QStringLiteral("picture")));
            QCoreApplication::exit(written ? 0 : 1);
        });
    });

    viewer.show();
    return QGuiApplication::exec();
}
