// SPDX-License-Identifier: Apache-2.0
#include "LookOptions.h"

#include "OptionValues.h"
#include "model/pictures/ObliqueView.h"

#include <algorithm>
#include <functional>
#include <map>

namespace {

constexpr float laterAlpha = 0.35f;

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
        if (!modes.contains(part))
            throw CLI::ValidationError("'" + part.toStdString() +
                                       "' is not solid, smooth, flat or wireframe, nor 0 to 3");
        result.append(modes.value(part));
    }
    return result;
}

/// As the viewer takes the position of the light.
QVector3D inScene(const QVector3D& lab)
{
    return {-lab.y(), lab.x(), lab.z()};
}

} // namespace

void LookOptions::declare(CLI::App& parser)
{
    static const std::map<std::string, KVGamut3DViewer::View> views{
        {"top", KVGamut3DViewer::Top},
        {"bottom", KVGamut3DViewer::Bottom},
    };
    const auto option = [&parser](const std::string& name, const char* type,
                                  const std::function<void(const std::string&)>& take, const char* help) {
        const auto takeOrRefuse = [name, take](const std::string& word) {
            try {
                take(word);
            } catch (const CLI::ValidationError& refusal) {
                throw CLI::ValidationError(name, refusal.what());
            }
        };
        return parser.add_option_function<std::string>(name, takeOrRefuse, help)->type_name(type);
    };

    option(
        "--size", "WxH", [this](const std::string& w) { size = OptionValues::size(w); },
        ("Size in pixels (" + std::to_string(size.width()) + "x" + std::to_string(size.height()) + ")")
            .c_str());
    CLI::Option* viewOption = option(
                                  "--view", "VIEW", [this](const std::string& w) { view = views.at(w); },
                                  "Look from the top or the bottom, not from the front")
                                  ->check(CLI::IsMember(views).description(""));
    CLI::Option* cameraOption =
        option(
            "--camera", "L,a,b", [this](const std::string& w) { camera = OptionValues::lab(w); },
            "Look from this point")
            ->excludes(viewOption);
    option(
        "--look-at", "L,a,b", [this](const std::string& w) { lookAt = OptionValues::lab(w); },
        "With --camera: look at this point (50,0,0)")
        ->needs(cameraOption);
    parser.add_flag("--orthogonal", orthogonal, "Parallel projection instead of perspective");
    option(
        "--angle", "DEGREES", [this](const std::string& w) { angle = OptionValues::number(w, 1.0f, 150.0f); },
        "Vertical field of view (30)");
    option(
        "--mode", "MODE[,MODE...]", [this](const std::string& w) { modes = modesOf(w); },
        "solid, smooth (the default), flat or wireframe, or 0 to 3; of the gamuts in order, the last one for "
        "all that follow");
    option(
        "--alpha", "X[,X...]", [this](const std::string& w) { alphas = OptionValues::shares(w); },
        "Opacity of the gamuts in order, 0 to 1 (1, then 0.35)");
    option(
        "--color", "C[,C...]", [this](const std::string& w) { colors = OptionValues::colors(w); },
        "One colour for each gamut in order, instead of its own colours");
    option(
        "--ambient", "X", [this](const std::string& w) { ambient = OptionValues::number(w, 0.0f, 1.0f); },
        "Light from everywhere, 0 to 1; 1 shows pure colours (0.55)");
    option(
        "--light", "L,a,b", [this](const std::string& w) { light = OptionValues::lab(w); },
        "The light comes from this point (300,0,0)");
    option(
        "--light-color", "C", [this](const std::string& w) { lightColor = OptionValues::color(w); },
        "Colour of the light (white)");
    option(
        "--background", "C", [this](const std::string& w) { background = OptionValues::color(w); },
        "Colour behind everything (gray)");
    parser.add_flag_callback(
        "--no-grid", [this] { grid = false; }, "Without the grid");
    parser.add_flag_callback(
        "--no-axes", [this] { axes = false; }, "Without the axes");
    parser.add_flag("--plane", plane, "With the coloured floor of the ab plane");
    option(
        "--clip", "L", [this](const std::string& w) { clip = OptionValues::number(w, -1000.0f, 1000.0f); },
        "Cut the gamuts off above this lightness");
    parser.add_flag("--primaries", primaries, "With the ramps of the colorants");
    parser.add_flag_callback(
        "--no-projection", [this] { projection = false; }, "Without the outlines on the floor");
    parser.add_flag_callback(
        "--no-surface", [this] { surface = false; }, "Without the gamuts' surfaces");
}

void LookOptions::check() const
{
    if (camera && *camera == lookAt)
        throw CLI::ValidationError("--camera and --look-at are the same point");
}

void LookOptions::applyTo(KVGamut3DViewer& viewer) const
{
    viewer.setBackground(background);
    viewer.setLightPos(inScene(light));
    viewer.setLightColor(lightColor);
    viewer.setDisplayGrid(grid);
    viewer.setDisplayAxes(axes);
    viewer.setabPlane(plane);
    if (clip)
        viewer.setClipping(*clip);
    viewer.setViewingAngle(angle, 0);
    viewer.setOrthogonalProjection(orthogonal, 0);
    if (view) {
        viewer.resetCamera(*view, 0);
    } else if (camera) {
        viewer.setCamera(*camera, 0, lookAt);
    } else {
        const float aspect = static_cast<float>(size.width()) / static_cast<float>(size.height());
        const ObliqueView oblique = ObliqueView::inAspect(aspect);
        viewer.setCamera(oblique.eye, 0, oblique.lookAt);
    }
}

KVGamut3DViewer::DisplayMode LookOptions::mode(qsizetype position) const
{
    return modes[std::min(position, modes.size() - 1)];
}

float LookOptions::alpha(qsizetype position, bool first) const
{
    return alphas.value(position, first ? 1.0f : laterAlpha);
}

QColor LookOptions::color(qsizetype position) const
{
    return colors.value(position);
}
