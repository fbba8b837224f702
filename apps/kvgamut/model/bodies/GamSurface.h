// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GivenGamut.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <QtCore/QByteArray>

/// Surfaces of gamuts in the .gam files of ArgyllCMS: CGATS with the identifier GAMUT, a table of vertices
/// (VERTEX_NO LAB_L LAB_A LAB_B) and a table of triangles (VERTEX_0 VERTEX_1 VERTEX_2). Other tables and
/// columns are ignored.
namespace GamSurface {

/// Whether @p content begins like such a file.
bool isIn(const QByteArray& content);

/// The surface in @p content. The time is proportional to its size, but for the check for
/// self-intersections, which is limited. A problem does not name the file.
/// @param task progress and cancellation; may be null
Result<GivenGamut> read(const QByteArray& content, KVCompletionProtocolPtr task = {});

} // namespace GamSurface
