// SPDX-License-Identifier: Apache-2.0
#include <viewer/Framing.h>

#include <glwindow/CameraState.h>
#include <scene/Coordinates.h>
#include <viewer/FramedView.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// Solves @p view so that it covers nothing of @p taken and is as large as possible.
void solveBeside(const QList<QRectF>& taken, const QSize& size, double tangent, FramedView& view)
{
    view.solve(tangent, {});
    if (taken.isEmpty() || kvIsRoomFree(view.seen(), taken))
        return;
    const double maxHeight = view.height() / double(KVFraming::minSize);
    std::vector<std::pair<double, QMarginsF>> choices;
    for (const QMarginsF& insets : kvRoomChoices(taken, size)) {
        view.solve(tangent, insets);
        if (view.height() <= maxHeight)
            choices.emplace_back(view.height(), insets);
    }
    std::stable_sort(choices.begin(), choices.end(),
                     [](const auto& p, const auto& q) { return p.first < q.first; });
    for (const auto& [height, insets] : choices) {
        view.solve(tangent, insets);
        if (kvIsRoomFree(view.seen(), taken))
            return;
    }
    view.solve(tangent, {});
}

/// If @p eye is straight above or below @p interest, as exactly as a float tells, its azimuth would be lost
/// and the picture would turn: moves it by a ten thousandth of its distance in the direction @p azimuth.
QVector3D withAzimuth(const QVector3D& eye, const QVector3D& interest, float azimuth)
{
    constexpr float share = 1e-4f;
    const QVector3D d = eye - interest;
    const float least = share * d.length();
    if (std::hypot(d.x(), d.z()) >= least)
        return eye;
    return {interest.x() + least * std::cos(azimuth), eye.y(), interest.z() + least * std::sin(azimuth)};
}

} // namespace

KVCamera kvFramedCamera(const KVCamera& camera, const KVFraming& framing, const QSize& size)
{
    CameraState state(kvSceneFromHost(camera.position), kvSceneFromHost(camera.interestPoint));
    state.setOrthogonal(camera.orthogonal);
    FramedView view(state, framing, size);
    solveBeside(framing.taken, size, std::tan(double(camera.viewingAngle) * std::numbers::pi / 360.0), view);
    KVCamera framed = camera;
    framed.viewingAngle = static_cast<float>(view.viewingAngle());
    const QVector3D interest = view.onSight(view.middle());
    framed.interestPoint = kvHostFromScene(interest);
    framed.position = kvHostFromScene(withAzimuth(view.onSight(view.eyeDepth()), interest, state.azimuth()));
    return framed;
}
