// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/WindowManager.h"

#include <gmock/gmock.h>

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

namespace {

/// Keeps the settings of the user and the desktop out of the tests: language, dialogs, style, scaling, input
/// methods and the list of recent files.
void setEnvironment(const QTemporaryDir& configuration)
{
    for (const char* name : {"LANGUAGE", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "KDE_FULL_SESSION",
                             "GNOME_DESKTOP_SESSION_ID", "GTK_THEME", "GTK_MODULES", "QT_QPA_PLATFORMTHEME",
                             "QT_STYLE_OVERRIDE", "QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS",
                             "QT_AUTO_SCREEN_SCALE_FACTOR", "QT_FONT_DPI", "QT_IM_MODULE", "XMODIFIERS"})
        qunsetenv(name);
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8());
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    const QTemporaryDir configuration;
    setEnvironment(configuration);
    QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setStyle(QStringLiteral("Fusion"));
    kvtest::WindowManager windowManager; // without one no window gets the keyboard focus
    if (!windowManager.start())
        return EXIT_FAILURE;
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
