// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

/// The names of the inputs that need no file.
namespace BuiltInNames {

QStringList bodies(); ///< reference bodies, see ReferenceBodies.h
QStringList all();    ///< those of BuiltInProfiles, then the bodies

/// Whether @p name is one of all(), in any case.
bool contains(const QString& name);

} // namespace BuiltInNames
