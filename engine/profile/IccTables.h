// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdint>

namespace velmora {

/// The four characters of a signature, for people.
QString signatureText(std::uint32_t value);

/// Looks at the bytes of an ICC profile before they are believed: header, tag table, and the size
/// that every colour table declares against the bytes that are there for it.
///
/// A table of a few hundred bytes can declare 90^4 nodes; who allocates first and reads then spends
/// hundreds of megabytes on it. And a megabyte holds ten thousand matrices to take each colour through,
/// or a table of fifteen channels behind one that makes them of three.
[[nodiscard]] Result<void> checkIccTables(const QByteArray& profile);

} // namespace velmora
