// SPDX-License-Identifier: Apache-2.0
#include "ViewState.h"

#include "model/pictures/ObliqueView.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr float nothingCut = 1000000.0f; // the viewer's own value for it
constexpr float narrowest = 1.0f;
constexpr float widest = 150.0f;

QString textOf(const QVector3D& lab)
{
    return QStringLiteral("%1,%2,%3").arg(lab.x()).arg(lab.y()).arg(lab.z());
}

std::optional<QVector3D> labOf(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3)
        return {};
    QVector3D lab;
    for (int i = 0; i < 3; ++i) {
        bool ok = false;
        lab[i] = parts[i].toFloat(&ok);
        if (!ok || !std::isfinite(lab[i]))
            return {};
    }
    return lab;
}

} // namespace

ViewCamera ViewCamera::of(const KVGamut3DViewer& viewer)
{
    return {viewer.camera(), viewer.interestPt(), viewer.orthogonalProjection(), viewer.viewingAngle()};
}

void ViewCamera::applyTo(KVGamut3DViewer& viewer, int durationMs) const
{
    // each change is a move and replaces the one before it: only the last may take its time
    viewer.setViewingAngle(angle, 0);
    viewer.setOrthogonalProjection(orthogonal, 0);
    viewer.setCamera(eye, durationMs, interest);
}

ViewCamera obliqueCamera(float aspect)
{
    const ObliqueView view = ObliqueView::inAspect(aspect);
    ViewCamera camera;
    camera.interest = view.lookAt;
    camera.eye = view.eye;
    return camera;
}

ViewCamera framing(const ViewCamera& camera, const QList<QVector3D>& positions, float aspect)
{
    if (positions.isEmpty())
        return camera;
    QVector3D least = positions.first();
    QVector3D most = positions.first();
    for (const QVector3D& p : positions) {
        for (int i = 0; i < 3; ++i) {
            least[i] = std::min(least[i], p[i]);
            most[i] = std::max(most[i], p[i]);
        }
    }
    const QVector3D centre = (least + most) / 2.0f;
    float radius = 0.0f;
    for (const QVector3D& p : positions)
        radius = std::max(radius, (p - centre).length());

    // the ball around them touches the nearer pair of the view's edges
    constexpr float air = 1.03f;
    const float tangent = std::tan(camera.angle / 2.0f * std::numbers::pi_v<float> / 180.0f);
    const float half = std::atan(tangent * std::min(1.0f, aspect));
    const float distance = std::max(2.0f, air * radius / std::sin(half));
    ViewCamera framed = camera;
    framed.interest = centre;
    framed.eye = centre + (camera.eye - camera.interest).normalized() * distance;
    return framed;
}

QString ViewCamera::toText() const
{
    return QStringLiteral("kvgamut camera %1 look at %2 angle %3 %4")
        .arg(textOf(eye), textOf(interest))
        .arg(angle)
        .arg(orthogonal ? QStringLiteral("orthogonal") : QStringLiteral("perspective"));
}

std::optional<ViewCamera> ViewCamera::fromText(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("\\Akvgamut camera (\\S+) look at (\\S+) angle (\\S+) (perspective|orthogonal)\\z"));
    const auto match = form.match(text.simplified());
    const auto eye = labOf(match.captured(1));
    const auto interest = labOf(match.captured(2));
    const float angle = match.captured(3).toFloat();
    if (!eye || !interest || *eye == *interest || !(angle >= narrowest && angle <= widest))
        return {};
    return ViewCamera{*eye, *interest, match.captured(4) == QLatin1String("orthogonal"), angle};
}

ViewState ViewState::of(const KVGamut3DViewer& viewer)
{
    ViewState state;
    state.camera = ViewCamera::of(viewer);
    state.background = viewer.background();
    state.grid = viewer.displayGrid();
    state.axes = viewer.displayAxes();
    state.plane = viewer.abPlane();
    state.clip = clipOf(viewer);
    state.light = viewer.lightPos();
    state.lightColor = viewer.lightColor();
    return state;
}

void ViewState::applyTo(KVGamut3DViewer& viewer) const
{
    camera.applyTo(viewer, 0);
    viewer.setDisplayGrid(grid);
    viewer.setDisplayAxes(axes);
    viewer.setabPlane(plane);
    setClip(viewer, clip);
    viewer.setBackground(background);
    setLight(viewer, light, lightColor);
}

std::optional<float> clipOf(const KVGamut3DViewer& viewer)
{
    if (viewer.clipping() >= nothingCut)
        return {};
    return viewer.clipping();
}

void setClip(KVGamut3DViewer& viewer, std::optional<float> clip)
{
    viewer.setClipping(clip.value_or(nothingCut));
}

void setLight(KVGamut3DViewer& viewer, const QVector3D& position, const QColor& color)
{
    viewer.setLightPos(position);
    viewer.setLightColor(color);
    viewer.setBackground(viewer.background()); // light alone waits for the next frame; this draws one
}
