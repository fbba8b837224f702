// SPDX-License-Identifier: Apache-2.0
#include "commands/process/PlatformPlugin.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

TEST(PlatformPlugin, isUsableIfInstalled)
{
    EXPECT_TRUE(PlatformPlugin::isUsable(QStringLiteral("xcb")));
    EXPECT_TRUE(PlatformPlugin::isUsable(QStringLiteral("offscreen")));
}

TEST(PlatformPlugin, isNotUsableIfMissing)
{
    EXPECT_FALSE(PlatformPlugin::isUsable(QStringLiteral("xcbx")));
    EXPECT_FALSE(PlatformPlugin::isUsable(QString()));
}

TEST(PlatformPlugin, isNotUsableIfItsFileIsDamaged)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("libqxcbx.so")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no library");
    file.close();
    qputenv("QT_QPA_PLATFORM_PLUGIN_PATH", QFile::encodeName(folder.path()));
    EXPECT_FALSE(PlatformPlugin::isUsable(QStringLiteral("xcbx")));
    EXPECT_TRUE(PlatformPlugin::isUsable(QStringLiteral("xcb")));
    qunsetenv("QT_QPA_PLATFORM_PLUGIN_PATH");
}
