// SPDX-License-Identifier: Apache-2.0
#include "RenderCommand.h"

#include "GamutScene.h"
#include "commands/options/OptionValues.h"
#include "commands/process/ExitCode.h"
#include "commands/process/Fonts.h"
#include "commands/process/PictureScreen.h"
#include "commands/process/Say.h"
#include "commands/process/Screen.h"
#include "commands/process/Steps.h"
#include "model/export/OutputFile.h"
#include "model/pictures/BackgroundRemoval.h"
#include "model/pictures/Turntable.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>

#include <utility>

namespace {

constexpr QSize windowSize(64, 48); // the picture has a size of its own
constexpr int maxWaitMs = 120000;   // for a frame: some displays never show the window

/// Draws the scene on @p background and runs the event loop until the picture is up to date.
/// @return false on timeout
bool settleOn(KVGamutView& view, const QColor& background)
{
    KVViewTheme theme = view.theme();
    theme.background = background;
    view.setTheme(theme);
    const KVGamut3DViewer& viewer = *view.viewer();
    const auto isDrawn = [&viewer] { return viewer.isSettled() && !viewer.picture().isNull(); };
    QEventLoop loop;
    QObject::connect(&view, &KVGamutView::settled, &loop, [&] {
        if (isDrawn())
            loop.quit();
    });
    const QDeadlineTimer deadline(maxWaitMs);
    QTimer::singleShot(maxWaitMs, &loop, &QEventLoop::quit);
    // Events that come together with the last frame, as those of a new window, may ask for one more.
    while (!isDrawn() && !deadline.hasExpired())
        loop.exec();
    return isDrawn();
}

} // namespace

RenderCommand::RenderCommand(CLI::App& program)
    : Command(program, "render", "Draw gamuts into a picture file; needs no display")
{
    m_profiles.declare(parser());
    m_output.declare(parser());
    m_look.declare(parser());
    m_annotations.declare(parser());
    m_sections.declare(parser());
    parser()
        .add_option_function<std::string>(
            "--frame", [this](const std::string& word) { m_isFramed = word == "all"; },
            "all: fit gamuts, axes and points into the picture (the default, except with --camera); none: "
            "keep the distance of the camera")
        ->transform(OptionValues::oneOf({"all", "none"}))
        ->type_name("WHAT");
    parser()
        .add_flag("--no-background", m_transparent, "Make the background transparent")
        ->excludes(parser().get_option("--background"));
    m_items.declare(parser());
    m_reference.declare(parser());
    parser().final_callback([this] {
        const QColor background = m_look.state.theme.background;
        m_look.state.theme = m_annotations.theme();
        if (parser().count("--background") > 0)
            m_look.state.theme.background = background;
        m_look.check();
        m_annotations.loss.check(parser(), m_items.distances);
        m_annotations.part.check(m_profiles.profiles.size());
        if (m_annotations.part.body && (!m_annotations.loss.other.isEmpty() || !m_look.look.surface))
            throw CLI::ValidationError("--body", "it shows a surface in its own colours; do not use --loss "
                                                 "or --no-surface");
        if (!m_annotations.loss.other.isEmpty())
            for (const char* option : {"--color", "--mode", "--no-surface"})
                if (parser().count(option) > 0)
                    throw CLI::ValidationError("--loss",
                                               std::string("it colours surfaces; do not use ") + option);
        if (!m_annotations.loss.other.isEmpty() && m_annotations.lines)
            throw CLI::ValidationError("--loss", "it colours surfaces; do not use --look lines");
        m_output.check(m_transparent);
        if (m_output.turntable() > 0 && m_reference.isGiven())
            throw CLI::ValidationError("--reference", "a turn has no single picture to compare");
        if (!m_output.isGiven() && !m_reference.isGiven())
            throw CLI::RequiredError("--output");
        if (m_output.isGiven() && m_output.name() == m_reference.name())
            throw CLI::ValidationError("--reference", "the output would overwrite the reference");
    });
}

int RenderCommand::run(Arguments arguments)
{
    PictureScreen screen;
    if (const auto problem = screen.choose()) {
        say(*problem);
        return BadOutput;
    }
    // --size is in pixels of the picture, independent of the desktop's scale factor
    qunsetenv("QT_SCALE_FACTOR");
    qunsetenv("QT_SCREEN_SCALE_FACTORS");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    silenceLibraries();
    m_output.noteCommand(arguments);

    loadFonts();
    const QGuiApplication application(arguments.count, arguments.values);
    return draw();
}

int RenderCommand::draw()
{
    if (m_reference.isGiven() && !m_reference.load())
        return BadInput;
    KVGamut3DViewer viewer;
    // The window only provides OpenGL; it needs no frame of a window manager.
    viewer.setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    viewer.resize(windowSize);

    KVGamutView view(&viewer);
    if (const auto problem = Screen::drawingProblem(view)) {
        say(*problem);
        return BadOutput;
    }
    for (const QString& name : m_output.names())
        if (const auto problem = overwritesInput(name, files().inputs)) {
            say(*problem);
            return WrongUsage;
        }
    GamutScene scene(view, m_profiles, m_look, m_annotations);
    bool itemsRead = m_items.addTo(viewer);
    scene.load(m_items.colours.reading);
    if (scene.shownCount() == 0)
        return BadInput;
    itemsRead &= m_items.addZones(viewer, scene.firstGamut());
    scene.explain();
    view.setSection(m_sections.section(m_annotations.scales || m_annotations.legend));
    const std::vector<KVGamut::LabPoint> measured = m_items.pointsToMeasure(itemsRead);
    const auto loss = scene.showPart() ? scene.showLoss(measured) : std::nullopt;
    if (!loss)
        return BadInput;
    m_items.addMeasured(viewer, measured, loss->losses, loss->scale, m_look.state.theme.axes);

    QImage picture;
    if (const auto problem = drawPictures(view, scene.profileLines(), picture)) {
        say(*problem);
        return BadOutput;
    }
    for (const QString& name : m_output.names())
        Steps::wrote(name);
    if (m_reference.isGiven() && !m_reference.matches(picture))
        return Different;
    return scene.failedCount() > 0 || !itemsRead ? BadInput : Done;
}

/// Draws and writes the pictures. @param picture is set to the picture, or the first of a turn
std::optional<Problem> RenderCommand::drawPictures(KVGamutView& view, const QStringList& profiles,
                                                   QImage& picture) const
{
    view.viewer()->show();
    if (!frame(view))
        return whyNothingIsDrawn(view);
    const KVCamera camera = view.camera();
    const auto turned = [&](int index) {
        view.setCamera(Turntable::turned(camera, 360.0 * index / m_output.turntable()));
        return pictureOf(view);
    };
    picture = m_output.turntable() > 0 ? turned(0) : pictureOf(view);
    if (picture.isNull() || view.drawingProblem())
        return whyNothingIsDrawn(view);
    return m_output.turntable() > 0
               ? m_output.writeTurn(turned, profiles)
               : m_output.write(picture, profiles,
                                [&](QPainter& painter, const QRectF&) { drawAnnotations(view, painter); });
}

Problem RenderCommand::whyNothingIsDrawn(const KVGamutView& view) const
{
    const QStringList size{QString::number(m_look.size.width()), QString::number(m_look.size.height())};
    const auto problem = view.drawingProblem();
    return problem ? Problem(*problem) : Problem(ProblemCode::NothingDrawn, size);
}

/// Fits what is shown into the picture, if that is wanted. @return false if nothing is drawn
bool RenderCommand::frame(KVGamutView& view) const
{
    if (!m_isFramed.value_or(!m_look.hasCamera()))
        return true;
    if (!settleOn(view, m_look.state.theme.background)) // wireframes are made in the background
        return false;
    const KVFraming shown = view.shownFraming(m_look.size);
    const bool turns = m_output.turntable() > 0;
    view.setCamera(KVGamutView::framing(view.camera(), turns ? Turntable::swept(shown) : shown, m_look.size));
    return true;
}

/// The finished picture; null if nothing is drawn. Vector formats get the annotations as vectors, and on a
/// transparent ground they are drawn last, because their colours would change with the ground.
QImage RenderCommand::pictureOf(KVGamutView& view) const
{
    KVGamut3DViewer& viewer = *view.viewer();
    const KVViewTheme& theme = m_look.state.theme;
    if (!m_transparent && !m_output.isVector())
        return settleOn(view, theme.background) ? viewer.picture(m_look.size) : QImage();

    const KVAnnotations annotations = view.annotations();
    viewer.setDisplayAxes(viewer.displayAxes() && !annotations.scales);
    view.setAnnotations({});
    QImage picture = m_transparent ? transparentPicture(view) : QImage();
    if (!m_transparent && settleOn(view, theme.background))
        picture = viewer.picture(m_look.size);
    viewer.setDisplayAxes(m_look.state.axes);
    view.setTheme(theme);
    view.setAnnotations(annotations);
    if (!m_output.isVector() && !picture.isNull()) {
        QPainter painter(&picture);
        drawAnnotations(view, painter);
    }
    return picture;
}

QImage RenderCommand::transparentPicture(KVGamutView& view) const
{
    const KVGamut3DViewer& viewer = *view.viewer();
    if (!settleOn(view, Qt::black))
        return {};
    QImage onBlack = viewer.picture(m_look.size);
    if (!settleOn(view, Qt::white))
        return {};
    return withoutBackground(std::move(onBlack), viewer.picture(m_look.size));
}

void RenderCommand::drawAnnotations(const KVGamutView& view, QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    view.paintAnnotations(painter, m_look.size);
}
