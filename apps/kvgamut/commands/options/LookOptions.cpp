// SPDX-License-Identifier: Apache-2.0
#include "LookOptions.h"

#include "OptionValues.h"
#include "model/pictures/CameraText.h"

#include <algorithm>
#include <functional>
#include <map>

namespace {

QList<KVGamut3DViewer::DisplayMode> modesOf(const std::string& words)
{
    static const QHash<QString, KVGamut3DViewer::DisplayMode> modes{
        {QStringLiteral("0"), KVGamut3DViewer::Solid},
        {QStringLiteral("solid"), KVGamut3DViewer::Solid},
        {QStringLiteral("1"), KVGamut3DViewer::Smooth},
        {QStringLiteral("smooth"), KVGamut3DViewer::Smooth},
        {QStringLiteral("2"), KVGamut3DViewer::Flat},
        {QStringLiteral("flat"), KVGamut3DViewer::Flat},
        {QStringLiteral("3"), KVGamut3DViewer::Wireframe},
        {QStringLiteral("wireframe"), KVGamut3DViewer::Wireframe},
    };
    QList<KVGamut3DViewer::DisplayMode> result;
    const QStringList parts = QString::fromStdString(words).split(QLatin1Char(','));
    for (const QString& part : parts) {
        const QString word = part.toLower();
        if (!modes.contains(word))
            throw CLI::ValidationError(OptionValues::notOneOf(
                part.toStdString(), {"solid", "smooth", "flat", "wireframe", "0", "1", "2", "3"}));
        result.append(modes.value(word));
    }
    return result;
}

/// The direction (L*, a*, b*) from which each named view looks at the middle of the L* axis. Without one: the
/// oblique view, and the presets of the viewer.
const std::map<std::string, std::optional<QVector3D>>& namedViews()
{
    static const std::map<std::string, std::optional<QVector3D>> views{
        {"front", QVector3D(0, 0, -1)}, {"back", QVector3D(0, 0, 1)}, {"left", QVector3D(0, -1, 0)},
        {"right", QVector3D(0, 1, 0)},  {"top", std::nullopt},        {"bottom", std::nullopt},
        {"oblique", std::nullopt}};
    return views;
}

CLI::Option* addOption(CLI::App& parser, const std::string& name, const char* type,
                       const std::function<void(const std::string&)>& take, const std::string& help)
{
    return parser.add_option_function<std::string>(name, OptionValues::named(name, take), help)
        ->type_name(type);
}

} // namespace

void LookOptions::declare(CLI::App& parser)
{
    addOption(
        parser, "--size", "WxH", [this](const std::string& w) { size = OptionValues::size(w); },
        "Size in pixels (" + std::to_string(size.width()) + "x" + std::to_string(size.height()) + ")");
    declareCamera(parser);
    declareSurfaces(parser);
    declareSurroundings(parser);
}

void LookOptions::takeCamera(const std::string& word)
{
    wholeCamera = CameraText::read(QString::fromStdString(word));
    if (!wholeCamera)
        camera = OptionValues::lab(word);
}

void LookOptions::declareCamera(CLI::App& parser)
{
    CLI::Option* viewOption =
        addOption(
            parser, "--view", "VIEW", [this](const std::string& w) { view = QString::fromStdString(w); },
            "Look from the front, back, left, right, top or bottom; oblique is the default")
            ->transform(OptionValues::oneOf(namedViews()));
    CLI::Option* cameraOption =
        addOption(
            parser, "--camera", "L,a,b", [this](const std::string& w) { takeCamera(w); },
            "Look from this point; or a camera as the window copies it: 'kvgamut camera ...'")
            ->excludes(viewOption);
    addOption(
        parser, "--look-at", "L,a,b", [this](const std::string& w) { lookAt = OptionValues::lab(w); },
        "With --camera: look at this point (50,0,0)")
        ->needs(cameraOption);
    parser.add_flag("--orthogonal", state.camera.orthogonal, "Parallel projection instead of perspective");
    addOption(
        parser, "--angle", "DEGREES",
        [this](const std::string& w) { angle = OptionValues::number(w, 1.0f, 150.0f); },
        "Vertical field of view (30)");
}

void LookOptions::declareSurfaces(CLI::App& parser)
{
    addOption(
        parser, "--mode", "MODE[,MODE...]", [this](const std::string& w) { modes = modesOf(w); },
        "solid, smooth (the default), flat or wireframe, or 0 to 3, for each gamut in order; the last one "
        "holds for "
        "all that follow");
    addOption(
        parser, "--alpha", "X[,X...]", [this](const std::string& w) { opacities = OptionValues::shares(w); },
        "Opacity of the gamuts in order, 0 to 1; those that are not given are 0.35, the first 1");
    addOption(
        parser, "--color", "C[,C...]", [this](const std::string& w) { colors = OptionValues::colors(w); },
        "One colour for each gamut in order, instead of its own colours");
    addOption(
        parser, "--ambient", "X",
        [this](const std::string& w) { look.ambientStrength = OptionValues::number(w, 0.0f, 1.0f); },
        "Ambient light, 0 to 1; 1 shows pure colours without shading (0.55)");
}

void LookOptions::declareSurroundings(CLI::App& parser)
{
    addOption(
        parser, "--light", "L,a,b", [this](const std::string& w) { state.light = OptionValues::lab(w); },
        "Position of the light (300,0,0)");
    addOption(
        parser, "--light-color", "C",
        [this](const std::string& w) { state.lightColor = OptionValues::color(w); },
        "Colour of the light (white)");
    addOption(
        parser, "--background", "C",
        [this](const std::string& w) { state.theme.background = OptionValues::color(w); },
        "Background colour (gray)");
    parser.add_flag_callback(
        "--no-grid", [this] { state.grid = false; }, "Hide the grid");
    parser.add_flag_callback(
        "--no-axes", [this] { state.axes = false; }, "Hide the axes, or the scales in their place");
    parser.add_flag("--plane", state.plane, "Show the coloured ab plane below the gamuts");
    addOption(
        parser, "--clip", "L",
        [this](const std::string& w) { state.clipping = OptionValues::number(w, 0.0f, 100.0f); },
        "Cut the gamuts off above this lightness, 0 to 100");
    parser.add_flag("--primaries", look.primaries, "Show the ramps of the colorants");
    parser.add_flag_callback(
        "--no-projection", [this] { look.projection = false; }, "Hide the gamuts' outlines on the ab plane");
    parser.add_flag_callback(
        "--no-surface", [this] { look.surface = false; }, "Hide the gamuts' surfaces");
}

void LookOptions::check() const
{
    if (camera && *camera == lookAt)
        throw CLI::ValidationError("--camera and --look-at are the same point");
    const QVector3D unchanged = LookOptions().lookAt;
    if (wholeCamera && lookAt != unchanged)
        throw CLI::ValidationError("--look-at", "the camera names the point that it looks at");
}

KVViewState LookOptions::viewState() const
{
    const float aspect = static_cast<float>(size.width()) / static_cast<float>(size.height());
    const auto named = namedViews().find(view.toStdString());
    KVViewState result = state;
    if (wholeCamera) {
        result.camera = *wholeCamera;
    } else if (camera) {
        result.camera.position = *camera;
        result.camera.interestPoint = lookAt;
    } else if (named != namedViews().end() && named->second) {
        result.camera = cameraFrom(*named->second, aspect);
    } else if (!isPreset()) {
        result.camera = obliqueCamera(aspect);
    }
    result.camera.orthogonal |= state.camera.orthogonal;
    result.camera.viewingAngle = angle.value_or(result.camera.viewingAngle);
    return result;
}

void LookOptions::applyTo(KVGamutView& target) const
{
    target.setState(viewState());
    if (isPreset())
        target.viewer()->resetCamera(
            view == QLatin1String("top") ? KVGamut3DViewer::Top : KVGamut3DViewer::Bottom, 0);
}

KVGamutLook LookOptions::lookOf(qsizetype position, bool isFirst) const
{
    KVGamutLook result = look;
    if (!modes.isEmpty())
        result.mode = modes[std::min(position, modes.size() - 1)];
    result.opacity = opacities.value(position, isFirst ? look.opacity : KVGamutLook::translucentOpacity);
    result.color = colors.value(position);
    return result;
}
