// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

/// RGB spaces that need no file: ICC profiles made in memory from the primaries, white and transfer
/// curve that their standards publish.
namespace BuiltInProfiles {

QStringList names(); ///< in the order in which a person looks for them

/// The bytes of the ICC profile called @p name, in any case; empty when there is none, or when memory
/// ran out.
QByteArray profile(const QString& name);

} // namespace BuiltInProfiles
