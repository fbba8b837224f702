// SPDX-License-Identifier: Apache-2.0
#include "support/TestEnvironment.h"

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayList>

#include <cstring>

void kvtest::useTestEnvironment()
{
    if (qEnvironmentVariableIsSet("KV_TEST_ENVIRONMENT")) // ctest has set it
        return;
    const QByteArrayList names = QByteArray(KV_USER_VARIABLES).split(' ');
    for (const QByteArray& name : names)
        qunsetenv(name.constData());
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
}
