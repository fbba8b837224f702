// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Result.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdint>

namespace velmora {

/// A signature as four characters, with '?' for those that are not printable, without trailing spaces.
[[nodiscard]] QString signatureText(std::uint32_t value);

/// Validates an untrusted ICC profile: header, tag table, and for every colour table whether the tag holds as
/// many bytes as the table declares.
///
/// A table of a few hundred bytes can declare 90^4 nodes; a reader that allocates before it reads would use
/// hundreds of megabytes. A megabyte can also contain ten thousand matrices through which each colour must
/// pass, or a table of fifteen channels; the cost of a colour is therefore limited, too.
/// @return fails with NotAProfile, DamagedTagTable or DamagedTag
[[nodiscard]] Result<void> checkIccTables(const QByteArray& profile);

} // namespace velmora
