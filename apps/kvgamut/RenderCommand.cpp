#include "RenderCommand.h"

#include "ExitCode.h"
#include "GamutScene.h"
#include "OutputFile.h"
#include "Say.h"
#include "Screen.h"

#include <QtCore/QBuffer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

#include <functional>

namespace {

constexpr int checkMs = 5;
constexpr int dotsPerMetre = 3780;    // 96 per inch, whatever the screen says: equal input, equal file
constexpr int longestWaitMs = 120000; // for the first frame; a big one is slow without a GPU

/// Runs the event loop until @p condition was met, at most @p limitMs if that is positive.
void waitUntil(const std::function<bool()>& condition, int limitMs)
{
    QEventLoop loop;
    QElapsedTimer elapsed;
    elapsed.start();
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (condition() || (limitMs > 0 && elapsed.elapsed() > limitMs))
            loop.quit();
    });
    check.start(checkMs);
    loop.exec();
}

QByteArray png(const QImage& picture)
{
    QImage plain = picture;
    plain.setDotsPerMeterX(dotsPerMetre);
    plain.setDotsPerMeterY(dotsPerMetre);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    plain.save(&buffer, "PNG");
    return buffer.data();
}

} // namespace

RenderCommand::RenderCommand(CLI::App& program)
    : Command(program, "render", "Draw gamuts into a PNG picture; needs no display")
{
    m_profiles.declare(parser());
    parser()
        .add_option_function<std::string>(
            "-o,--output", [this](const std::string& word) { m_output = QString::fromStdString(word); },
            "Picture to write (PNG); - for standard output")
        ->required()
        ->type_name("OUT.png");
    m_look.declare(parser());
    m_items.declare(parser());
}

int RenderCommand::run(Arguments arguments)
{
    if (!Screen::isPresent()) {
        say(Screen::runAgainOnVirtualScreen(arguments, m_look.size));
        return BadOutput;
    }
    Screen::choosePlatform();
    // --size counts pixels of the picture, whatever the desktop magnifies by
    qunsetenv("QT_SCALE_FACTOR");
    qunsetenv("QT_SCREEN_SCALE_FACTORS");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    silenceLibraries(m_profiles.verbose);

    const QGuiApplication application(arguments.count, arguments.values);
    const QString problem = Screen::openGLProblem();
    if (!problem.isEmpty()) {
        say(problem);
        return BadOutput;
    }
    return draw();
}

int RenderCommand::draw()
{
    KVGamut3DViewer viewer;
    // A window manager would give it a frame, and another size than the one asked for.
    viewer.setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    viewer.resize(m_look.size);

    GamutScene scene(viewer, m_profiles, m_look);
    scene.load();
    const bool itemsRead = m_items.addTo(viewer);
    waitUntil([&scene] { return scene.isComplete(); }, 0);
    if (scene.shownCount() == 0)
        return BadInput;

    const QImage picture = pictureOf(viewer);
    if (picture.isNull()) {
        say(QStringLiteral("nothing was drawn: the display shows no window of %1x%2 pixels")
                .arg(m_look.size.width())
                .arg(m_look.size.height()));
        return BadOutput;
    }
    const QString problem = writeOutput(m_output, png(picture));
    if (!problem.isEmpty()) {
        say(problem);
        return BadOutput;
    }
    return scene.failedCount() > 0 || !itemsRead ? BadInput : Done;
}

/// What the viewer shows once nothing moves any more; null when that never comes.
QImage RenderCommand::pictureOf(KVGamut3DViewer& viewer) const
{
    viewer.show();
    QImage picture;
    waitUntil(
        [&] {
            // taken at the moment at which it is up to date: the loop runs on a little after that
            if (viewer.isSettled())
                picture = viewer.picture();
            return picture.size() == m_look.size;
        },
        longestWaitMs);
    return picture.size() == m_look.size ? picture : QImage();
}
