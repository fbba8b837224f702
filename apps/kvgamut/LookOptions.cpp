#include "LookOptions.h"

#include "OptionValues.h"

#include <algorithm>
#include <functional>
#include <map>

namespace {

constexpr float laterAlpha = 0.35f;

// The oblique view: from the front, where a* runs to the right, a little from the side and from
// above, so that all three axes are told apart.
const QVector3D obliqueEye(265.0f, 160.0f, -450.0f);
const QVector3D obliqueInterest(40.0f, 0.0f, 0.0f);
// Narrower pictures than this are taken from farther away, so that the grid stays in them.
constexpr float fullAspect = 1.25f;

} // namespace

void LookOptions::declare(CLI::App& parser)
{
    static const std::map<std::string, KVGamut3DViewer::View> views{
        {"top", KVGamut3DViewer::Top},
        {"bottom", KVGamut3DViewer::Bottom},
    };
    static const std::map<std::string, KVGamut3DViewer::DisplayMode> modes{
        {"0", KVGamut3DViewer::Solid},     {"solid", KVGamut3DViewer::Solid},
        {"1", KVGamut3DViewer::Smooth},    {"smooth", KVGamut3DViewer::Smooth},
        {"2", KVGamut3DViewer::Flat},      {"flat", KVGamut3DViewer::Flat},
        {"3", KVGamut3DViewer::Wireframe}, {"wireframe", KVGamut3DViewer::Wireframe},
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
        "Size in pixels (1024x768)");
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
        "--mode", "MODE", [this](const std::string& w) { mode = modes.at(w); },
        "solid, smooth (the default), flat or wireframe, or 0 to 3")
        ->check(CLI::IsMember(modes).description(""));
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
    parser.final_callback([this] {
        if (camera && *camera == lookAt)
            throw CLI::ValidationError("--camera and --look-at are the same point");
    });
}

void LookOptions::applyTo(KVGamut3DViewer& viewer) const
{
    viewer.setBackground(background);
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
        const float farther = std::max(1.0f, fullAspect / aspect);
        viewer.setCamera(obliqueInterest + (obliqueEye - obliqueInterest) * farther, 0, obliqueInterest);
    }
}

float LookOptions::alpha(qsizetype position, bool first) const
{
    return alphas.value(position, first ? 1.0f : laterAlpha);
}

QColor LookOptions::color(qsizetype position) const
{
    return colors.value(position);
}
