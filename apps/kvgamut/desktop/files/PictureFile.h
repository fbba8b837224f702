// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtGui/QImage>

#include <optional>

/// Picture files, whose format is chosen by the suffix of the name; PNG without one.
namespace PictureFile {

[[nodiscard]] std::optional<Problem> write(const QString& file, const QImage& picture);

} // namespace PictureFile
