// SPDX-License-Identifier: Apache-2.0
#include "WindowManager.h"

#include "Spin.h"

#include <QtCore/QStringList>

kvtest::WindowManager::~WindowManager()
{
    m_process.terminate();
    m_process.waitForFinished();
}

bool kvtest::WindowManager::start()
{
    m_process.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable"), QStringLiteral("--startup"),
                                                QStringLiteral("echo ready")});
    QByteArray said;
    return m_process.waitForStarted() && spinUntil([&] {
               said += m_process.readAllStandardOutput();
               return said.contains("ready");
           });
}
