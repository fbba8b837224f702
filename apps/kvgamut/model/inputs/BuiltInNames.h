// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringList>

/// The names of the inputs that need no file.
namespace BuiltInNames {

QStringList bodies(); ///< reference bodies, see ReferenceBodies.h
QStringList all();    ///< those of BuiltInProfiles, then the bodies

/// Whether @p name is one of all(), in any case.
bool contains(const QString& name);

/// Whether an input with the name @p name is one of all() rather than a file: it is written as there, or in
/// another case while no file has that name.
bool isMeant(const QString& name);

/// The one of all() that the user may have meant by @p name, which is not the name of a file; empty if none
/// is near. A suffix of profiles and what follows an @ are ignored. A name with a folder is near none.
QString near(const QString& name);

} // namespace BuiltInNames
