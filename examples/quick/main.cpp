// SPDX-License-Identifier: Apache-2.0
// The viewer as an item of Qt Quick: Gamuts.qml with the named profiles.
//
//   example_quick profile.icc ... [--qml FILE] [--picture FILE]
//
// With --picture the window closes by itself after it has written its picture. The module is looked for where
// it is installed, in QML_IMPORT_PATH, and where this example was built.

#include <QtCore/QCommandLineParser>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickView>

#include <KVGamutQuickView.h>

#include <cstdio>

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(
        {QStringLiteral("picture"), QStringLiteral("Write the picture and close."), QStringLiteral("file")});
    parser.addOption({QStringLiteral("qml"), QStringLiteral("What is shown."), QStringLiteral("file"),
                      QStringLiteral(EXAMPLE_QML)});
    parser.addPositionalArgument(QStringLiteral("profile"), QStringLiteral("ICC profiles to show"));
    parser.process(application);

    QStringList profiles;
    for (const QString& file : parser.positionalArguments())
        profiles.append(QUrl::fromLocalFile(file).toString());
    QQuickView window;
    window.engine()->addImportPath(QStringLiteral(EXAMPLE_IMPORT_PATH));
    window.rootContext()->setContextProperty(QStringLiteral("profiles"), profiles);
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.setSource(QUrl::fromLocalFile(parser.value(QStringLiteral("qml"))));
    auto* view = qobject_cast<KVGamutQuickView*>(window.rootObject());
    if (!view)
        return 1; // the engine has printed why
    QObject::connect(view, &KVGamutQuickView::failed, [](const QString&, const QString& text) {
        std::fprintf(stderr, "There is no gamut: %s\n", qPrintable(text));
        QCoreApplication::exit(1);
    });
    const auto write = [&] {
        if (parser.isSet(QStringLiteral("picture")) && !view->isLoading() && view->isSettled())
            QCoreApplication::exit(window.grabWindow().save(parser.value(QStringLiteral("picture"))) ? 0 : 1);
    };
    QObject::connect(view, &KVGamutQuickView::settledChanged, write);
    QObject::connect(view, &KVGamutQuickView::loadingChanged, write);
    window.setTitle(QStringLiteral("Gamuts"));
    window.show();
    return QGuiApplication::exec();
}
