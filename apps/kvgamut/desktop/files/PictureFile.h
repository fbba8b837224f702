// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtCore/QString>
#include <QtGui/QImage>

#include <optional>

/// Picture files, whose format is chosen by the suffix of the name; PNG without one.
namespace PictureFile {

/// @return why the file was not written
std::optional<Problem> write(const QString& file, const QImage& picture);

} // namespace PictureFile
