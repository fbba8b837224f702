// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamut3DViewer.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

/// From where the scene is looked at. Lab positions as (L*, a*, b*).
struct ViewCamera
{
    QVector3D eye;
    QVector3D interest;
    bool orthogonal = false;
    float angle = 30.0f; ///< vertical field of view, degrees

    static ViewCamera of(const KVGamut3DViewer& viewer);
    void applyTo(KVGamut3DViewer& viewer, int durationMs) const;

    /// As one line of text that people can pass on and fromText() reads:
    /// "kvgamut camera 265,160,-450 look at 40,0,0 angle 30 perspective".
    QString toText() const;
    /// Nothing when @p text is no camera; spaces around and between the words do not matter.
    static std::optional<ViewCamera> fromText(const QString& text);

    bool operator==(const ViewCamera&) const = default;
};

/// From the front, where a* runs to the right, a little from the side and from above, so that all three
/// axes are told apart. @p aspect is the width of the view by its height: a narrower one is looked at
/// from farther away, so that the grid stays in it.
ViewCamera obliqueCamera(float aspect);

/// @p camera, looking the same way, so that everything at @p positions is seen, and as large as that
/// allows. Without positions it stays as it is.
ViewCamera framing(const ViewCamera& camera, const QList<QVector3D>& positions, float aspect);

/// Everything about the view that does not belong to a gamut.
struct ViewState
{
    ViewCamera camera;
    QColor background;
    bool grid = true;
    bool axes = true;
    bool plane = false;
    std::optional<float> clip; ///< L* above which the gamuts are cut off
    QVector3D light;           ///< position, as KVGamut3DViewer::setLightPos() takes it
    QColor lightColor;

    static ViewState of(const KVGamut3DViewer& viewer);
    void applyTo(KVGamut3DViewer& viewer) const;

    bool operator==(const ViewState&) const = default;
};

/// The viewer's clipping as a choice: nothing while nothing is cut off.
std::optional<float> clipOf(const KVGamut3DViewer& viewer);
void setClip(KVGamut3DViewer& viewer, std::optional<float> clip);
/// Sets the light and has it seen at once.
void setLight(KVGamut3DViewer& viewer, const QVector3D& position, const QColor& color);
