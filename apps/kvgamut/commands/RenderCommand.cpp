// SPDX-License-Identifier: Apache-2.0
#include "RenderCommand.h"

#include "GamutScene.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Say.h"
#include "commands/process/Screen.h"
#include "model/export/OutputFile.h"
#include "model/pictures/BackgroundRemoval.h"

#include <QtCore/QBuffer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

#include <functional>
#include <utility>

namespace {

constexpr int checkMs = 5;
constexpr QSize windowSize(64, 48);   // of the window; the picture has its own
constexpr int dotsPerMetre = 3780;    // 96 per inch, whatever the screen says: equal input, equal file
constexpr int longestWaitMs = 120000; // for the first frame

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

/// Draws @p viewer on @p background and waits until it is done; false when that never comes.
bool settleOn(KVGamut3DViewer& viewer, const QColor& background)
{
    viewer.setBackground(background);
    bool drawn = false;
    waitUntil(
        [&] {
            drawn = viewer.isSettled() && !viewer.picture().isNull();
            return drawn;
        },
        longestWaitMs);
    return drawn;
}

QByteArray png(QImage picture)
{
    picture.setDotsPerMeterX(dotsPerMetre);
    picture.setDotsPerMeterY(dotsPerMetre);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
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
            "Picture to write (PNG); - for standard output. Needed unless --reference is given")
        ->type_name("OUT.png");
    m_look.declare(parser());
    parser()
        .add_flag("--no-background", m_transparent, "A transparent picture: only what is drawn is opaque")
        ->excludes(parser().get_option("--background"));
    m_items.declare(parser());
    m_reference.declare(parser());
    parser().final_callback([this] {
        m_look.check();
        if (m_output.isEmpty() && !m_reference.isGiven())
            throw CLI::RequiredError("--output");
        if (!m_output.isEmpty() && m_output == m_reference.name())
            throw CLI::ValidationError("--reference", "the picture would be written over its reference");
    });
}

int RenderCommand::run(Arguments arguments)
{
    if (!Screen::isPresent()) {
        say(Screen::runAgainOnVirtualScreen(arguments));
        return BadOutput;
    }
    Screen::choosePlatform();
    // --size counts pixels of the picture, whatever the desktop magnifies by
    qunsetenv("QT_SCALE_FACTOR");
    qunsetenv("QT_SCREEN_SCALE_FACTORS");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    silenceLibraries(m_profiles.verbose);

    const QGuiApplication application(arguments.count, arguments.values);
    if (!Screen::hasOpenGL()) {
        say(Problem(ProblemCode::NoOpenGL));
        return BadOutput;
    }
    return draw();
}

int RenderCommand::draw()
{
    if (m_reference.isGiven() && !m_reference.load())
        return BadInput;
    KVGamut3DViewer viewer;
    // A window manager would give it a frame; it is there for its OpenGL only.
    viewer.setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    viewer.resize(windowSize);

    GamutScene scene(viewer, m_profiles, m_look);
    scene.load();
    const bool itemsRead = m_items.addTo(viewer);
    waitUntil([&scene] { return scene.isComplete(); }, 0);
    if (scene.shownCount() == 0)
        return BadInput;

    const QImage picture = pictureOf(viewer);
    if (picture.isNull()) {
        say(Problem(ProblemCode::NothingDrawn,
                    {QString::number(m_look.size.width()), QString::number(m_look.size.height())}));
        return BadOutput;
    }
    if (const auto problem = write(picture)) {
        say(*problem);
        return BadOutput;
    }
    if (m_reference.isGiven() && !m_reference.holds(picture))
        return Different;
    return scene.failedCount() > 0 || !itemsRead ? BadInput : Done;
}

/// What the viewer shows once nothing moves any more; null when that never comes.
QImage RenderCommand::pictureOf(KVGamut3DViewer& viewer) const
{
    viewer.show();
    if (!m_transparent)
        return settleOn(viewer, m_look.background) ? viewer.picture(m_look.size) : QImage();
    if (!settleOn(viewer, Qt::black))
        return {};
    QImage onBlack = viewer.picture(m_look.size);
    if (!settleOn(viewer, Qt::white))
        return {};
    return withoutBackground(std::move(onBlack), viewer.picture(m_look.size));
}

std::optional<Problem> RenderCommand::write(const QImage& picture) const
{
    if (m_output.isEmpty())
        return std::nullopt;
    return writeOutput(m_output, png(picture));
}
