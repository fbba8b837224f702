// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include <QtCore/QString>

#include <optional>

/// The camera as one line of text, which users exchange through the clipboard:
/// "kvgamut camera 265,160,-450 look at 40,0,0 angle 30 perspective".
namespace CameraText {

QString write(const KVCamera& camera);
/// nullopt if @p text is not a camera. White space around and between the words is ignored.
std::optional<KVCamera> read(const QString& text);

} // namespace CameraText

/// The camera of a new window: ObliqueView in a view of @p aspect (width by height).
KVCamera obliqueCamera(float aspect);
/// Looks at the middle of the L* axis along @p direction (L*, a*, b*), from the distance of obliqueCamera().
KVCamera cameraFrom(const QVector3D& direction, float aspect);
