// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QList>

#include <utility>

/// A straight piece of a line on a surface.
using LabSegment = std::pair<KVGamut::LabPoint, KVGamut::LabPoint>;

/// Lines on a gamut's surface through which the inside can be seen: at every tenth L* and every 30 degrees of
/// hue. Cut from the exact surface, and thinned to pieces of about @p minLength dE76, so that they depend
/// neither on the grid of the computation nor on its cost.
QList<LabSegment> gamutLines(const KVGamut::Mesh& surface, float minLength = 2.0f);
