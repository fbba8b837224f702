// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>
#include <viewer/FreeRoom.h>

#include <QtCore/QMarginsF>
#include <QtGui/QMatrix4x4>

#include <limits>
#include <utility>
#include <vector>

struct CameraState;

/// Positions and labels seen along a camera's line of sight, and the eye from which they fill a picture.
class FramedView
{
public:
    FramedView(const CameraState& camera, const KVFraming& framing, const QSize& size);

    /// Finds the eye and the tangent of half the vertical viewing angle.
    /// @param wanted the tangent that is kept if possible
    /// @param insets least distances from the edges in pixels, where they exceed the margin of the framing
    void solve(double wanted, const QMarginsF& insets);

    /// Of the last solution.
    [[nodiscard]] double viewingAngle() const;                                     ///< degrees
    [[nodiscard]] double height() const { return m_tangent * (middle() - m_eye); } ///< half of it, Lab units
    [[nodiscard]] double middle() const { return 0.5 * (m_nearest + m_farthest); } ///< depth
    [[nodiscard]] double eyeDepth() const { return m_eye; }                        ///< depth
    /// In scene coordinates, at @p depth on the line of sight.
    [[nodiscard]] QVector3D onSight(double depth);
    /// Where the positions and labels are in the picture.
    [[nodiscard]] SeenShapes seen();

private:
    /// The place of a position on one axis of the picture, and how far from the centre it may be seen: shares
    /// of half the picture, 1 at its edges.
    struct Place
    {
        double at;
        double depth;
        double lowPixels = 0.0; ///< of a label, beyond the position
        double highPixels = 0.0;
        double weight = 1.0;
        double reachLow = 1.0;
        double reachHigh = 1.0;
    };
    using Places = std::vector<Place>;
    struct Spot
    {
        double x, y, depth;
    };

    void add(const QVector3D& position, const QRectF& box);
    void setReaches(const QMarginsF& insets);
    void weigh(double eye);
    bool fits(double eye, double tangent);
    double nearestEye(double far, double tangent);
    double smallestTangent(double eye, double large);
    void solveOrthogonal();
    QPointF centre();
    static void keepOutermost(Places& places);
    static std::pair<double, double> limits(const Places& places, double t);
    static double centred(const Places& places, double t);

    const QMatrix4x4 m_matrix; ///< scene coordinates to those of the camera
    const bool m_orthogonal;
    const double m_margin;
    const QSize m_size;
    const double m_aspect;
    Places m_x, m_y;
    std::vector<Spot> m_positions;
    std::vector<std::pair<Spot, QRectF>> m_labels;
    double m_nearest = std::numeric_limits<double>::infinity();
    double m_farthest = -std::numeric_limits<double>::infinity();
    double m_eye = 0.0; ///< its depth
    double m_tangent = 0.0;
};
