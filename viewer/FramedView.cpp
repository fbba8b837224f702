// SPDX-License-Identifier: Apache-2.0
#include <viewer/FramedView.h>

#include <glwindow/CameraState.h>
#include <scene/Coordinates.h>

#include <algorithm>
#include <cmath>
#include <numbers>

// A position (x, y, z), in units to the right, upwards and away from the viewer, is seen from an eye
// (ex, ey, ez) at (x - ex) / (t w), where t is the tangent of half the viewing angle times the aspect ratio,
// and the weight w is the depth z - ez, or 1 in a parallel projection. -1 and 1 are the edges of the picture.
// The position is inside if ex lies in an interval around x of a width proportional to t w; a picture is
// framed if the intervals of all positions have a common point, for x and for y. The ends of an interval are
// linear in x and z, so only positions on the convex hull of all (x, z) decide.

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

} // namespace

FramedView::FramedView(const CameraState& camera, const KVFraming& framing, const QSize& size)
    : m_matrix(camera.viewMatrix()), m_orthogonal(camera.orthogonal()), m_margin(double(framing.margin)),
      m_size(size), m_aspect(double(size.width()) / double(size.height()))
{
    for (const QVector3D& position : framing.positions)
        add(position, QRectF());
    keepOutermost(m_x);
    keepOutermost(m_y);
    for (const KVFraming::Label& label : framing.labels)
        add(label.position, label.box);
}

void FramedView::add(const QVector3D& position, const QRectF& box)
{
    const QVector3D seen = m_matrix.map(kvSceneFromHost(position));
    const Spot spot{double(seen.x()), double(seen.y()), -double(seen.z())};
    m_x.push_back({spot.x, spot.depth, -box.left(), box.right()});
    m_y.push_back({spot.y, spot.depth, box.bottom(), -box.top()}); // pixels count downwards
    if (box.isNull())
        m_positions.push_back(spot);
    else
        m_labels.push_back({spot, box});
    m_nearest = std::min(m_nearest, spot.depth);
    m_farthest = std::max(m_farthest, spot.depth);
}

/// Removes positions inside the convex hull of their places and depths.
void FramedView::keepOutermost(Places& places)
{
    std::vector<QPointF> points;
    points.reserve(places.size());
    for (const Place& place : places)
        points.emplace_back(place.at, place.depth);
    places.clear();
    for (const QPointF& corner : kvConvexHull(std::move(points)))
        places.push_back({corner.x(), corner.y()});
}

void FramedView::setReaches(const QMarginsF& insets)
{
    const auto reach = [this](double inset, double pixels, int side) {
        const double margin = std::max(m_margin, inset / side);
        return std::max(minReach, 1.0 - 2.0 * margin - 2.0 * pixels / side);
    };
    for (Place& place : m_x) {
        place.reachLow = reach(insets.left(), place.lowPixels, m_size.width());
        place.reachHigh = reach(insets.right(), place.highPixels, m_size.width());
    }
    for (Place& place : m_y) {
        place.reachLow = reach(insets.bottom(), place.lowPixels, m_size.height());
        place.reachHigh = reach(insets.top(), place.highPixels, m_size.height());
    }
}

void FramedView::solve(double wanted, const QMarginsF& insets)
{
    setReaches(insets);
    m_tangent = wanted;
    if (m_orthogonal) {
        solveOrthogonal();
        return;
    }
    m_eye = m_nearest - minDepth;
    const double farthestEye = std::min(m_eye, m_farthest - maxDepth);
    if (fits(m_eye, wanted))
        m_tangent = smallestTangent(m_eye, wanted); // closer would be inside
    else if (fits(farthestEye, wanted))
        m_eye = nearestEye(farthestEye, wanted);
    else
        m_tangent = smallestTangent(m_eye = farthestEye, tangentOf(double(KVCamera::maxAngle)));
}

/// In a parallel projection the distance has no effect on the size: the height of the view is the product
/// of tangent and distance. It is kept so that nothing lies outside the near and the far plane.
void FramedView::solveOrthogonal()
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

double FramedView::viewingAngle() const
{
    return std::clamp(degreesOf(m_tangent), double(KVCamera::minAngle), double(KVCamera::maxAngle));
}

void FramedView::weigh(double eye)
{
    for (Places* const places : {&m_x, &m_y})
        for (Place& place : *places)
            place.weight = m_orthogonal ? 1.0 : place.depth - eye;
}

/// The limits of the eye on one axis for the tangent @p t on that axis.
std::pair<double, double> FramedView::limits(const Places& places, double t)
{
    double low = -std::numeric_limits<double>::infinity();
    double high = std::numeric_limits<double>::infinity();
    for (const Place& p : places) {
        low = std::max(low, p.at - t * p.weight * p.reachHigh);
        high = std::min(high, p.at + t * p.weight * p.reachLow);
    }
    return {low, high};
}

bool FramedView::fits(double eye, double tangent)
{
    weigh(eye);
    const auto [left, right] = limits(m_x, tangent * m_aspect);
    const auto [bottom, top] = limits(m_y, tangent);
    return left <= right && bottom <= top;
}

/// The nearest eye that fits. @p far fits.
double FramedView::nearestEye(double far, double tangent)
{
    double near = m_nearest - minDepth;
    for (int i = 0; i < halvings; ++i) {
        const double eye = 0.5 * (near + far);
        (fits(eye, tangent) ? far : near) = eye;
    }
    return far;
}

/// The smallest tangent that fits, at most @p large.
double FramedView::smallestTangent(double eye, double large)
{
    double small = 0.0;
    for (int i = 0; i < halvings; ++i) {
        const double tangent = 0.5 * (small + large);
        (fits(eye, tangent) ? large : small) = tangent;
    }
    return large;
}

/// The eye on one axis, within its limits, for which the margins on both sides are equal.
double FramedView::centred(const Places& places, double t)
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

/// The eye, to the right and upwards.
QPointF FramedView::centre()
{
    weigh(m_eye);
    const double scale = m_orthogonal ? height() : m_tangent;
    return {centred(m_x, scale * m_aspect), centred(m_y, scale)};
}

QVector3D FramedView::onSight(double depth)
{
    const QPointF eye = centre();
    return m_matrix.inverted().map(QVector3D(float(eye.x()), float(eye.y()), float(-depth)));
}

SeenShapes FramedView::seen()
{
    const QPointF eye = centre();
    const auto pixelOf = [&](const Spot& spot) {
        const double half = m_orthogonal ? height() : m_tangent * (spot.depth - m_eye);
        return QPointF((1.0 + (spot.x - eye.x()) / (half * m_aspect)) / 2.0 * m_size.width(),
                       (1.0 - (spot.y - eye.y()) / half) / 2.0 * m_size.height());
    };
    SeenShapes shapes;
    shapes.points.reserve(m_positions.size());
    for (const Spot& spot : m_positions)
        shapes.points.push_back(pixelOf(spot));
    for (const auto& [spot, box] : m_labels)
        shapes.rects.push_back(box.translated(pixelOf(spot)));
    return shapes;
}
