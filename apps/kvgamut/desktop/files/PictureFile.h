// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtGui/QImage>

#include <optional>

/// Writes picture files. The suffix of the name selects the format; the default is PNG.
namespace PictureFile {

[[nodiscard]] std::optional<Problem> write(const QString& file, const QImage& picture);

} // namespace PictureFile
