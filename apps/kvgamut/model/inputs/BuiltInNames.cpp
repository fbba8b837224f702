// SPDX-License-Identifier: Apache-2.0
#include "BuiltInNames.h"

#include "BuiltInProfiles.h"

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
