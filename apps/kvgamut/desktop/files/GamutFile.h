// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>

#include <optional>

/// A gamut as a file: a mesh for other programs, a gamut boundary in a profile, or a saved gamut; the same as
/// `kvgamut export` writes.
namespace GamutFile {

/// In the format of the suffix. Callable from any thread.
/// @param profile the name of the input
/// @return a problem about the file: MeshFormatUnknown, CannotWrite
[[nodiscard]] std::optional<Problem> write(const QString& file, const KVGamut::GamutObject& gamut,
                                           const QString& profile);

} // namespace GamutFile
