// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/surface/GamutRecord.h>

#include <QtCore/QHash>
#include <QtCore/QVariant>

namespace velmora {

/// A gamut as a hash of plain values: the key "Gamut" holds all of it as base64 text, which passes
/// through QDataStream, CBOR and JSON unharmed; "GamutVersion" and "GamutChecksum" (SHA-256 of what
/// the text stands for) guard it.
[[nodiscard]] QHash<QString, QVariant> serialized(const GamutRecord& record);

/// Fails if @p hash does not contain a saved gamut, or if the gamut is damaged or not valid.
[[nodiscard]] Result<GamutRecord> deserialized(const QHash<QString, QVariant>& hash);

} // namespace velmora
