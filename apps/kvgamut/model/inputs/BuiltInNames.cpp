// SPDX-License-Identifier: Apache-2.0
#include "BuiltInNames.h"

#include "BuiltInProfiles.h"
#include "FileName.h"
#include "model/text/NearWord.h"

#include <QtCore/QDir>

QStringList BuiltInNames::bodies()
{
    return {QStringLiteral("OptimalColors"), QStringLiteral("SurfaceColors"),
            QStringLiteral("SpectralLimit")};
}

QStringList BuiltInNames::all()
{
    return BuiltInProfiles::names() + bodies();
}

bool BuiltInNames::contains(const QString& name)
{
    return all().contains(name, Qt::CaseInsensitive);
}

bool BuiltInNames::isMeant(const QString& name)
{
    return all().contains(name) || (contains(name) && !FileName::exists(name));
}

QString BuiltInNames::near(const QString& name)
{
    if (QDir::fromNativeSeparators(name).contains(QLatin1Char('/')))
        return {};
    QString word = name.section(QLatin1Char('@'), 0, 0);
    for (const char* suffix : {".icc", ".icm"})
        if (word.endsWith(QLatin1String(suffix), Qt::CaseInsensitive))
            word.chop(4);
    return contains(word) ? QString() : nearWord(word, all()); // "sRGB@pixels" has no pixels
}
