// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/TestEnvironment.h"
#include "support/WindowManager.h"

#include <gmock/gmock.h>

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    const QTemporaryDir configuration, states;
    kvtest::useTestEnvironment();
    qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8()); // settings and the list of recent files
    qputenv("XDG_STATE_HOME", states.path().toUtf8());         // unsaved changes
    QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setStyle(QStringLiteral("Fusion"));
    kvtest::WindowManager windowManager; // without one no window gets the keyboard focus
    if (!windowManager.start())
        return EXIT_FAILURE;
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
