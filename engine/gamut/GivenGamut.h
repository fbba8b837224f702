// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <platform/KVVelmoraFramework.h>

#include <span>

namespace velmora {

/// A gamut of a surface that someone else made, as KVGamut::GamutObject::initWithSurface() documents it.
[[nodiscard]] Result<QSharedDataPointer<const KVGamut::GamutData>>
surfaceData(const KVGamut::Mesh& surface, double uncertainty, const Task& task);

/// A gamut of the convex hull of colours, as KVGamut::GamutObject::initWithColors() documents it.
[[nodiscard]] Result<QSharedDataPointer<const KVGamut::GamutData>>
hullData(std::span<const KVGamut::LabPoint> colors, double colorUncertainty, const Task& task);

} // namespace velmora
