// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVProblem.h>

#include <tl/expected.hpp>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtGui/QImage>

/// The sources of the two shaders, with the names of the files that they come from.
struct ShaderSources
{
    QString vertexFile;
    QString fragmentFile;
    QByteArray vertex;
    QByteArray fragment;

    bool operator==(const ShaderSources&) const = default;
};

/// Files that the library reads at run time. Copies of them are compiled into the library and used where the
/// application has none of its own.
///
/// Only regular files of a limited size are read, so that no read waits for a pipe or a device.
namespace ResourceFiles {

/// The folder of the application's own files: `../Resources`, relative to the folder of its binary.
QString folder();

/// The shaders at the two paths; the compiled-in ones if neither file exists. A file that exists alone is not
/// combined with a compiled-in one, because the two need not fit together: the other file is then missing.
tl::expected<ShaderSources, KVProblem> shaders(const QString& vertexPath, const QString& fragmentPath);

/// The image "gamut.png" in the folder @p folder; the compiled-in one if there is no such folder. Null if the
/// folder has no such file or if it cannot be read.
QImage planeImage(const QString& folder);

} // namespace ResourceFiles
