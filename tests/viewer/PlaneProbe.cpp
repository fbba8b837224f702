// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/KVGLWidget.h>

#include <QtCore/QFile>
#include <QtGui/QGuiApplication>

// The viewer reads the image of its ab plane beside the folder of the application's binary, which a
// process cannot choose for itself. Copied to a folder of a test's choice, this program writes the
// vertices of the plane that a viewer builds there to the file that it is given.
int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const KVGamut3DViewer viewer;
    const KV3DObject& root = viewer.findChild<KVGLWidget*>()->root();
    const QList<float>& vertices = root.child(QStringLiteral("Plane"))->vertices();
    QFile file(application.arguments().value(1));
    const qint64 bytes = vertices.size() * static_cast<qint64>(sizeof(float));
    return file.open(QIODevice::WriteOnly) &&
                   file.write(reinterpret_cast<const char*>(vertices.constData()), bytes) == bytes
               ? 0
               : 1;
}
