// SPDX-License-Identifier: Apache-2.0
#include <platform/KVCoreCommon.h>

#include <QtCore/QLoggingCategory>

namespace {
Q_LOGGING_CATEGORY(kvCore, "kv.core")
}

void KVLogDebug(const QString& message)
{
    qCDebug(kvCore).noquote() << message;
}

KVBackgroundTaskBase::~KVBackgroundTaskBase() = default;
