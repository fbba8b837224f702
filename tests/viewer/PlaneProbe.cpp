// SPDX-License-Identifier: Apache-2.0
#include <KVGamut3DViewer.h>

#include <glwindow/KVGLWidget.h>

#include <QtCore/QFile>
#include <QtGui/QGuiApplication>

// The viewer reads the image of its ab plane from a path relative to the application's binary, which a
// process cannot change. So a test copies this program to a temporary folder and runs it there. The program
// writes the vertices of the plane to the file that its argument names.
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
