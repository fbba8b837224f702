// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/surface/GamutRecord.h>

#include <QtCore/QHash>
#include <QtCore/QVariant>

namespace velmora {

/// A gamut as a hash of plain values that QDataStream, CBOR and JSON preserve: "Gamut" is the record as
/// base64 text, "GamutVersion" the version of the format, "GamutChecksum" the SHA-256 of the decoded text.
[[nodiscard]] QHash<QString, QVariant> serialized(const GamutRecord& record);

/// Fails if @p hash does not contain a saved gamut, or if the gamut is damaged or not valid.
[[nodiscard]] Result<GamutRecord> deserialized(const QHash<QString, QVariant>& hash);

} // namespace velmora
