// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "GamutData.h"

#include <QtCore/QHash>
#include <QtCore/QVariant>

namespace velmora {

/// A gamut as a hash of plain values: the key "Gamut" holds all of it as base64 text, which passes
/// through QDataStream, CBOR and JSON unharmed; "GamutVersion" and "GamutChecksum" (SHA-256 of what
/// the text stands for) guard it.
QHash<QString, QVariant> serialized(const GamutRecord& record);

/// @return false when @p hash holds no sound gamut; @p reason says why and @p record is of no use.
bool deserialized(const QHash<QString, QVariant>& hash, GamutRecord& record, QString& reason);

} // namespace velmora
