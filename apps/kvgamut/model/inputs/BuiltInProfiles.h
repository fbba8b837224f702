// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

/// RGB colour spaces that need no file: ICC profiles created in memory from the primaries, white point and
/// transfer curve of their standards.
namespace BuiltInProfiles {

QStringList names(); ///< in the order in which they are listed to users

/// The bytes of the ICC profile called @p name, in any case; empty if there is none or memory is
/// insufficient.
QByteArray profile(const QString& name);

} // namespace BuiltInProfiles
