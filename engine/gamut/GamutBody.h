// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>
#include <engine/base/Task.h>

#include <platform/KVVelmoraFramework.h>

namespace velmora {

/// A part of @p first relative to @p second (null is an empty gamut), as KVGamut::GamutObject::body()
/// documents it. Null if there is no such part.
[[nodiscard]] Result<QSharedDataPointer<const KVGamut::GamutData>> bodyData(const KVGamut::GamutData& first,
                                                                            const KVGamut::GamutData* second,
                                                                            KVGamut::Body body,
                                                                            const Task& task);

} // namespace velmora
