// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>

/// Picture files, whose format is chosen by the suffix of the name; PNG without one.
namespace PictureFile {

/// @return the problem; empty when the file is written
QString write(const QString& file, const QImage& picture);

} // namespace PictureFile
