// SPDX-License-Identifier: Apache-2.0
#include "support/MessageCheck.h"

#include <gmock/gmock.h>

#include <QtGui/QGuiApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    QGuiApplication application(argc, argv);
    kvtest::installMessageCheck();
    return RUN_ALL_TESTS();
}
