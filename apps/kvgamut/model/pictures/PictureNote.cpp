// SPDX-License-Identifier: Apache-2.0
#include "PictureNote.h"

QString PictureNote::software()
{
    return QStringLiteral("kvgamut " KVGAMUT_VERSION);
}

QString PictureNote::profileLine(const QString& name, const QString& hash)
{
    return hash.isEmpty() ? QStringLiteral("built in  %1").arg(name)
                          : QStringLiteral("%1  %2").arg(hash, name);
}
