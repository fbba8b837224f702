// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QVector3D>

/// KVViewState has the light's position as (L*, a*, b*), KVGamut3DViewer::setLightPos() and session files
/// have it as (-a*, L*, b*).
namespace LightPosition {

inline QVector3D toViewer(const QVector3D& lab)
{
    return {0.0f - lab.y(), lab.x(), lab.z()}; // not -lab.y(), which makes -0 of 0
}

inline QVector3D fromViewer(const QVector3D& position)
{
    return {position.y(), 0.0f - position.x(), position.z()};
}

} // namespace LightPosition
