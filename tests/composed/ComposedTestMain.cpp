// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/TestEnvironment.h"
#include "support/WindowManager.h"

#include <gmock/gmock.h>

#include <QtWidgets/QApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    kvtest::useTestEnvironment();
    QApplication application(argc, argv);
    kvtest::WindowManager windowManager; // without one no window gets the keyboard focus
    if (!windowManager.start())
        return EXIT_FAILURE;
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
