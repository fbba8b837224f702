// SPDX-License-Identifier: Apache-2.0
#include "Surfaceless.h"
#include "SurfacelessPlatform.h"

#include <QtGui/qpa/qplatformintegrationplugin.h>

/// Makes the platform known to Qt. Part of the program, so that no file needs to be installed.
class SurfacelessPlugin : public QPlatformIntegrationPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QPlatformIntegrationFactoryInterface_iid FILE "surfaceless.json")
public:
    QPlatformIntegration* create(const QString& name, const QStringList&) override
    {
        return name == QLatin1String(Surfaceless::name) ? new SurfacelessPlatform : nullptr;
    }
};

#include "SurfacelessPlugin.moc"
