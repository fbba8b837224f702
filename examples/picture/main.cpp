// SPDX-License-Identifier: Apache-2.0
// A picture of gamuts in any size, as for a report. No window stays; no display is needed beyond
//   xvfb-run -a -s "-screen 0 1280x1024x24" example_picture ...
//
//   example_picture [profile.icc ...] --picture FILE [--size 1600x1200]

#include "common/Profiles.h"
#include "common/WhenDrawn.h"

#include <KVGamut3DViewer.h>

#include <QtCore/QCommandLineParser>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

/// "800x600" as a size; empty when it is none.
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
        std::fprintf(stderr, "say where with --picture, and a size such as 800x600\n");
        return 2;
    }

    // The window only lends its graphics context and may be small: the picture is drawn anew in its own
    // size. It has the picture's shape, so that it is the same view.
    KVGamut3DViewer viewer;
    viewer.resize(size.scaled(320, 240, Qt::KeepAspectRatio));
    viewer.setBackground(Qt::white);
    viewer.setCamera({300, 180, -500}, 0, {45, 0, 0});

    // Without a callback a load runs to its end inside the call. The first gamut is solid, the others
    // are translucent around it.
    float alpha = 1;
    for (const auto& [name, params] : profilesToShow(parser.positionalArguments())) {
        viewer.load(name, params, nullptr);
        viewer.changeGamutAlpha(name, alpha, 0);
        alpha = 0.4f;
    }

    viewer.show();
    whenDrawn(viewer, [&] { QCoreApplication::exit(viewer.picture(size).save(file) ? 0 : 1); });
    return QGuiApplication::exec();
}
