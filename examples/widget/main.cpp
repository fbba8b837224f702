// SPDX-License-Identifier: Apache-2.0
// The viewer as a widget that Qt composes with others: a caption lies on top of it, under rounded corners.
//
//   example_widget [profile.icc] [--picture FILE]
//
// With --picture the window closes by itself after it has written a picture of all of it.

#include "common/Profiles.h"
#include "common/WhenDrawn.h"

#include <KVGamutGLWidget.h>

#include <QtCore/QCommandLineParser>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(
        {QStringLiteral("picture"), QStringLiteral("Write the picture and close."), QStringLiteral("file")});
    parser.addPositionalArgument(QStringLiteral("profile"), QStringLiteral("ICC profile to show"));
    parser.process(application);

    KVGamutGLWidget gamut;
    gamut.setWindowTitle(QStringLiteral("A gamut"));
    gamut.viewer()->setCamera({265, 160, -450}, 0, {40, 0, 0});
    auto* layout = new QVBoxLayout(&gamut); // on top of the view
    auto* caption = new QLabel;
    caption->setStyleSheet(
        QStringLiteral("background: #c0202020; color: white; border-radius: 12px; padding: 8px"));
    caption->setAttribute(Qt::WA_TransparentForMouseEvents);
    layout->addWidget(caption, 0, Qt::AlignBottom | Qt::AlignHCenter);
    gamut.resize(640, 480);
    gamut.show();

    const auto [id, request] = profilesToShow(parser.positionalArguments()).front();
    KVGamutView& view = *gamut.view();
    view.load(id, request);
    QObject::connect(&view, &KVGamutView::failed, [](const QString& failed, const KVProblem& problem) {
        std::fprintf(stderr, "%s gives no gamut: %s\n", qPrintable(failed), qPrintable(problem.text()));
        QCoreApplication::exit(1);
    });
    QObject::connect(&view, &KVGamutView::loaded, [&](const QString& loaded) {
        const KVGamut::Report report = view.gamut(loaded).report();
        caption->setText(QStringLiteral("%1: %L2 ± %L3 dE76³")
                             .arg(loaded)
                             .arg(report.volume, 0, 'f', 0)
                             .arg(report.volumeUncertainty, 0, 'f', 0));
        if (parser.isSet(QStringLiteral("picture")))
            whenDrawn(view, [&] {
                QCoreApplication::exit(gamut.grab().save(parser.value(QStringLiteral("picture"))) ? 0 : 1);
            });
    });
    return QApplication::exec();
}
