// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"
#include "support/TestEnvironment.h"

#include <gmock/gmock.h>

#include <QtGui/QGuiApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    kvtest::useTestEnvironment();
    QGuiApplication application(argc, argv);
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
