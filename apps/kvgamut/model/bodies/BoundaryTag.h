// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GivenGamut.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <QtCore/QByteArray>

/// The surface that a profile contains as a gamutBoundaryDescriptionType ('gbd ', ICC.2 10.2.11).
namespace BoundaryTag {

/// The boundary in the ICC profile @p profile, of any version: for the absolute intent (gbd3), or else the
/// relative (gbd1), perceptual (gbd0) or saturation intent (gbd2). Lab or XYZ; device values are ignored. A
/// problem does not name the file.
/// @param task progress and cancellation; may be null
Result<GivenGamut> read(const QByteArray& profile, KVCompletionProtocolPtr task = {});

/// The content of a tag for @p surface, whose faces are counter-clockwise seen from outside, in Lab.
QByteArray written(const KVGamut::Mesh& surface);

} // namespace BoundaryTag
