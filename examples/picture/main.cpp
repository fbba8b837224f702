// SPDX-License-Identifier: Apache-2.0
// A picture of gamuts in any size, for a report. A virtual display is enough:
//   xvfb-run -a -s "-screen 0 1280x1024x24" example_picture ...
//
//   example_picture [profile.icc ...] --picture FILE [--size 1600x1200]

#include "common/Profiles.h"
#include "common/WhenDrawn.h"

#include <KVGamutView.h>

#include <QtCore/QCommandLineParser>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

/// Parses "800x600"; empty if it is not a size.
QSize sizeFrom(const QString& text)
{
    const QStringList numbers = text.split(QLatin1Char('x'));
    return numbers.size() == 2 ? QSize(numbers[0].toInt(), numbers[1].toInt()) : QSize();
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(
        {QStringLiteral("picture"), QStringLiteral("Where to write it."), QStringLiteral("file")});
    parser.addOption({QStringLiteral("size"), QStringLiteral("Its size."), QStringLiteral("size"),
                      QStringLiteral("1600x1200")});
    parser.addPositionalArgument(QStringLiteral("profiles"), QStringLiteral("ICC profiles to show"));
    parser.process(application);

    const QString file = parser.value(QStringLiteral("picture"));
    const QSize size = sizeFrom(parser.value(QStringLiteral("size")));
    if (file.isEmpty() || size.isEmpty()) {
        std::fprintf(stderr, "Pass --picture FILE, and a size such as 800x600.\n");
        return 2;
    }

    // The window provides the OpenGL context and may be small: the picture is rendered anew in its own
    // size. The same aspect ratio gives the same view.
    KVGamut3DViewer viewer;
    viewer.resize(size.scaled(320, 240, Qt::KeepAspectRatio));
    viewer.setBackground(Qt::white);
    viewer.setCamera({300, 180, -500}, 0, {45, 0, 0});

    // The first gamut is opaque, the others are translucent around it. Looks may be set before a load.
    KVGamutView view(&viewer);
    if (const auto problem = view.drawingProblem()) {
        std::fprintf(stderr, "The gamut cannot be drawn: %s\n", qPrintable(problem->text()));
        return 1;
    }
    KVGamutLook look;
    look.ambientStrength = 1.0f; // pure colours, without shading
    for (const auto& [id, request] : profilesToShow(parser.positionalArguments())) {
        view.setLook(id, look);
        view.load(id, request);
        look.opacity = KVGamutLook::translucentOpacity;
    }
    QObject::connect(&view, &KVGamutView::failed, [](const QString& id, const KVProblem& problem) {
        std::fprintf(stderr, "%s gives no gamut: %s\n", qPrintable(id), qPrintable(problem.text()));
        QCoreApplication::exit(1);
    });
    QObject::connect(&view, &KVGamutView::loadingChanged, [&] {
        if (!view.isLoading())
            whenDrawn(view, [&] { QCoreApplication::exit(viewer.picture(size).save(file) ? 0 : 1); });
    });

    viewer.show();
    return QGuiApplication::exec();
}
