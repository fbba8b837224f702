// SPDX-License-Identifier: Apache-2.0
#include <viewer/Framing.h>

#include <glwindow/CameraState.h>
#include <scene/Coordinates.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

// A position (x, y, z), in units to the right, upwards and away from the viewer, is seen from an eye
// (ex, ey, ez) at (x - ex) / (t w), where t is the tangent of half the viewing angle times the aspect ratio,
// and the weight w is the depth z - ez, or 1 in a parallel projection. -1 and 1 are the edges of the picture.
// The position is inside if ex lies in an interval around x of a width proportional to t w; a picture is
// framed if the intervals of all positions have a common point, for x and for y.

namespace {

constexpr double minDepth = 1.0; // Lab units from the eye to the nearest position
constexpr double maxDepth = 0.97 * double(CameraState::farPlane);
constexpr int halvings = 60; // of an interval, to the precision of a double
constexpr double minReach =
    0.05; // of a label: one that is wider than the picture must not prevent a solution

double tangentOf(double degrees)
{
    return std::tan(degrees * std::numbers::pi / 360.0);
}

double degreesOf(double tangent)
{
    return std::atan(tangent) * 360.0 / std::numbers::pi;
}

/// The place of a position on one axis of the picture, and how far from the centre it may be seen: shares of
/// half the picture, 1 at its edges.
struct Place
{
    double at;
    double weight;
    double reachLow = 1.0;
    double reachHigh = 1.0;
};
using Places = std::vector<Place>;

/// The limits of the eye on one axis for the tangent @p t on that axis.
std::pair<double, double> limits(const Places& places, double t)
{
    double low = -std::numeric_limits<double>::infinity();
    double high = std::numeric_limits<double>::infinity();
    for (const Place& p : places) {
        low = std::max(low, p.at - t * p.weight * p.reachHigh);
        high = std::min(high, p.at + t * p.weight * p.reachLow);
    }
    return {low, high};
}

/// The eye on one axis, within its limits, for which the margins on both sides are equal.
double centred(const Places& places, double t)
{
    auto [low, high] = limits(places, t);
    for (int i = 0; i < halvings && low < high; ++i) {
        const double eye = 0.5 * (low + high);
        double first = std::numeric_limits<double>::infinity();
        double last = -first;
        for (const Place& p : places) {
            const double seen = (p.at - eye) / (t * p.weight);
            first = std::min(first, seen - (1.0 - p.reachLow));
            last = std::max(last, seen + (1.0 - p.reachHigh));
        }
        (first + last > 0.0 ? low : high) = eye;
    }
    return 0.5 * (low + high);
}

/// Positions seen along the camera's line of sight.
class FramedView
{
public:
    FramedView(const CameraState& camera, const KVFraming& framing, const QSize& size)
        : m_matrix(camera.viewMatrix()), m_orthogonal(camera.orthogonal()), m_margin(double(framing.margin)),
          m_size(size), m_aspect(double(size.width()) / double(size.height()))
    {
        for (const QVector3D& position : framing.positions)
            add(position, QRectF());
        for (const KVFraming::Label& label : framing.labels)
            add(label.position, label.box);
    }

    /// Finds the eye and the tangent of half the vertical viewing angle.
    /// @param wanted the tangent that is kept if possible
    void solve(double wanted)
    {
        m_tangent = wanted;
        if (m_orthogonal) {
            solveOrthogonal();
        } else {
            m_eye = m_nearest - minDepth;
            const double farthestEye = std::min(m_eye, m_farthest - maxDepth);
            if (fits(m_eye, wanted))
                m_tangent = smallestTangent(m_eye, wanted); // closer would be inside
            else if (fits(farthestEye, wanted))
                m_eye = nearestEye(farthestEye, wanted);
            else
                m_tangent = smallestTangent(m_eye = farthestEye, tangentOf(double(KVCamera::maxAngle)));
        }
    }

    double viewingAngle() const
    {
        return std::clamp(degreesOf(m_tangent), double(KVCamera::minAngle), double(KVCamera::maxAngle));
    }
    double middle() const { return 0.5 * (m_nearest + m_farthest); }
    double eyeDepth() const { return m_eye; }
    /// In scene coordinates, at @p depth on the line of sight.
    QVector3D onSight(double depth)
    {
        weigh(m_eye);
        const double scale = m_orthogonal ? m_tangent * (middle() - m_eye) : m_tangent;
        const double x = centred(m_x, scale * m_aspect);
        const double y = centred(m_y, scale);
        return m_matrix.inverted().map(QVector3D(float(x), float(y), float(-depth)));
    }

private:
    void add(const QVector3D& position, const QRectF& box)
    {
        const QVector3D seen = m_matrix.map(kvSceneFromHost(position));
        const double depth = -double(seen.z());
        const auto reach = [this](double pixels, int side) {
            return std::max(minReach, 1.0 - 2.0 * m_margin - 2.0 * pixels / side);
        };
        m_x.push_back({double(seen.x()), depth, reach(-box.left(), m_size.width()),
                       reach(box.right(), m_size.width())});
        // pixels count downwards
        m_y.push_back({double(seen.y()), depth, reach(box.bottom(), m_size.height()),
                       reach(-box.top(), m_size.height())});
        m_depths.push_back(depth);
        m_nearest = std::min(m_nearest, depth);
        m_farthest = std::max(m_farthest, depth);
    }

    void weigh(double eye)
    {
        for (std::size_t i = 0; i < m_depths.size(); ++i)
            m_x[i].weight = m_y[i].weight = m_orthogonal ? 1.0 : m_depths[i] - eye;
    }

    bool fits(double eye, double tangent)
    {
        weigh(eye);
        const auto [left, right] = limits(m_x, tangent * m_aspect);
        const auto [bottom, top] = limits(m_y, tangent);
        return left <= right && bottom <= top;
    }

    /// The nearest eye that fits. @p far fits.
    double nearestEye(double far, double tangent)
    {
        double near = m_nearest - minDepth;
        for (int i = 0; i < halvings; ++i) {
            const double eye = 0.5 * (near + far);
            (fits(eye, tangent) ? far : near) = eye;
        }
        return far;
    }

    /// The smallest tangent that fits, at most @p large.
    double smallestTangent(double eye, double large)
    {
        double small = 0.0;
        for (int i = 0; i < halvings; ++i) {
            const double tangent = 0.5 * (small + large);
            (fits(eye, tangent) ? large : small) = tangent;
        }
        return large;
    }

    /// In a parallel projection the distance has no effect on the size: the height of the view is the product
    /// of tangent and distance. It is kept so that nothing lies outside the near and the far plane.
    void solveOrthogonal()
    {
        constexpr double largest = 1e6; // half the height of a view
        const double half = std::max(smallestTangent(0.0, largest), 1e-3);
        const double radius = 0.5 * (m_farthest - m_nearest);
        const double distance =
            std::clamp(half / m_tangent, radius + minDepth, std::max(radius + minDepth, maxDepth - radius));
        m_tangent = half / distance;
        m_tangent = tangentOf(viewingAngle());
        m_eye = middle() - half / m_tangent;
    }

    const QMatrix4x4 m_matrix; ///< scene coordinates to those of the camera
    const bool m_orthogonal;
    const double m_margin;
    const QSize m_size;
    const double m_aspect;
    Places m_x, m_y;
    std::vector<double> m_depths;
    double m_nearest = std::numeric_limits<double>::infinity();
    double m_farthest = -std::numeric_limits<double>::infinity();
    double m_eye = 0.0; ///< its depth
    double m_tangent = 0.0;
};

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
    view.solve(tangentOf(double(camera.viewingAngle)));
    KVCamera framed = camera;
    framed.viewingAngle = static_cast<float>(view.viewingAngle());
    const QVector3D interest = view.onSight(view.middle());
    framed.interestPoint = kvHostFromScene(interest);
    framed.position = kvHostFromScene(withAzimuth(view.onSight(view.eyeDepth()), interest, state.azimuth()));
    return framed;
}
