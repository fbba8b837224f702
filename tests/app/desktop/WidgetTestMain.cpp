// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/WindowManager.h"

#include <gmock/gmock.h>

#include <QtWidgets/QApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setStyle(QStringLiteral("Fusion"));
    kvtest::WindowManager windowManager; // windows get the keyboard from one only
    if (!windowManager.start())
        return EXIT_FAILURE;
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
