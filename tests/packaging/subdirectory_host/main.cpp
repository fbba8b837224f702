// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <QtCore/QFile>
#include <QtGui/QGuiApplication>

// Uses only the public header. The exit code is 0 if the viewer works and its resources are in place.
int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    KVGamut3DViewer viewer;
    if (!viewer.displayGrid() || viewer.camera() != QVector3D(522.48712f, 0, -1.1920929e-7f))
        return 1;
    const QString resources = QCoreApplication::applicationDirPath() + QLatin1String("/../Resources/");
    for (const char* file : {"Shaders/simple.vert", "Shaders/simple.frag", "Images/gamut.png"})
        if (!QFile::exists(resources + QLatin1String(file)))
            return 2;
    return 0;
}
