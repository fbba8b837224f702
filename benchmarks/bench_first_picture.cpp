// SPDX-License-Identifier: Apache-2.0
// Time from the start of a process to the first picture of a gamut, compared with an empty Qt window with
// OpenGL.
//
//     xvfb-run bench_first_picture [runs]
//
// The parent starts itself as a child, alternately with an empty window and with the viewer, so that both
// run under the same load. It measures the time until the child reports its first picture. Held
// constant: sRGB, default grid, 640 x 480, warm shader caches.

#include <KVGamut3DViewer.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtGui/QGuiApplication>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLWindow>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr QSize windowSize(640, 480);

/// Reports the first picture to the parent and exits.
void done()
{
    std::puts("done");
    std::fflush(stdout);
    std::_Exit(0); // skips destructors, which must not be measured
}

class EmptyWindow : public QOpenGLWindow
{
public:
    /// A window of the same kind as the viewer's, or a QOpenGLWindow with default settings if @p plain.
    explicit EmptyWindow(bool plain) : QOpenGLWindow(plain ? NoPartialUpdate : PartialUpdateBlit)
    {
        if (!plain) {
            QSurfaceFormat format;
            format.setDepthBufferSize(24);
            format.setStencilBufferSize(8);
            format.setSamples(8);
            format.setVersion(1, 2);
            format.setProfile(QSurfaceFormat::CoreProfile);
            setFormat(format);
        }
        connect(this, &QOpenGLWindow::frameSwapped, this, done);
    }

protected:
    void paintGL() override { QOpenGLContext::currentContext()->functions()->glClear(GL_COLOR_BUFFER_BIT); }
};

int showEmptyWindow(bool plain)
{
    EmptyWindow window(plain);
    window.resize(windowSize);
    window.show();
    return QGuiApplication::exec();
}

int showGamut(const QString& profile)
{
    KVGamut3DViewer viewer;
    viewer.resize(windowSize);
    bool loaded = false;
    viewer.load(QStringLiteral("g"), {{QStringLiteral("ProfilePath"), profile}},
                [&](const QString&, bool ok) { loaded = ok; });
    // the OpenGL window inside the viewer
    QObject::connect(viewer.findChild<QOpenGLWindow*>(), &QOpenGLWindow::frameSwapped, [&] {
        if (loaded && viewer.isSettled())
            done();
    });
    viewer.show();
    return QGuiApplication::exec();
}

/// Milliseconds until the child with @p arguments reports its picture; negative if it fails.
double timeOf(const QStringList& arguments)
{
    QProcess child;
    QElapsedTimer timer;
    timer.start();
    child.start(QCoreApplication::applicationFilePath(), arguments);
    if (!child.waitForReadyRead(60000) || !child.readAllStandardOutput().startsWith("done"))
        return -1;
    const double elapsed = static_cast<double>(timer.nsecsElapsed()) * 1e-6;
    child.waitForFinished();
    return elapsed;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QString profile = QStringLiteral("/usr/share/color/icc/colord/sRGB.icc");
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("plain"))
        return showEmptyWindow(true);
    if (arguments.value(1) == QLatin1String("empty"))
        return showEmptyWindow(false);
    if (arguments.value(1) == QLatin1String("gamut"))
        return showGamut(profile);

    const int runs = std::max(1, arguments.value(1, QStringLiteral("15")).toInt());
    std::vector<double> plain, empty, gamut, over;
    for (int i = -1; i < runs; ++i) {
        const double p = timeOf({QStringLiteral("plain")}), e = timeOf({QStringLiteral("empty")}),
                     g = timeOf({QStringLiteral("gamut")});
        if (p < 0 || e < 0 || g < 0) {
            std::fputs("a child drew nothing\n", stderr);
            return 1;
        }
        if (i < 0)
            continue;
        plain.push_back(p);
        empty.push_back(e);
        gamut.push_back(g);
        over.push_back(g - e);
    }
    std::printf(
        "medians of %d, ms: plain empty window %.0f, antialiased empty window %.0f, first picture of a "
        "gamut %.0f, over the latter window %.0f\n",
        runs, median(plain), median(empty), median(gamut), median(over));
}
