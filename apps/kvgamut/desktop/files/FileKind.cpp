// SPDX-License-Identifier: Apache-2.0
#include "FileKind.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

FileKind fileKind(const QString& name)
{
    static const QStringList points{QStringLiteral("csv"), QStringLiteral("tsv"), QStringLiteral("txt"),
                                    QStringLiteral("ti1"), QStringLiteral("ti3"), QStringLiteral("cgats"),
                                    QStringLiteral("cie"), QStringLiteral("it8"), QStringLiteral("cxf"),
                                    QStringLiteral("ase"), QStringLiteral("acb"), QStringLiteral("gpl")};
    const QString suffix = QFileInfo(name).suffix().toLower();
    if (suffix == QLatin1String("kvsession"))
        return FileKind::Session;
    return points.contains(suffix) ? FileKind::Points : FileKind::Gamut;
}
