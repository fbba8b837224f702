// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <engine/base/Task.h>
#include <engine/surface/GamutRecord.h>

#include <QtCore/QHash>
#include <QtCore/QVariant>

namespace velmora {

/// A gamut as a hash of plain values that QDataStream, CBOR and JSON preserve: "Gamut" is the record as
/// base64 text, "GamutVersion" the version of the format, "GamutChecksum" the SHA-256 of the decoded text.
[[nodiscard]] QHash<QString, QVariant> serialized(const GamutRecord& record);

/// Fails if @p hash does not contain a saved gamut, if the gamut is damaged or not valid, or if @p task is
/// cancelled.
[[nodiscard]] Result<GamutRecord> deserialized(const QHash<QString, QVariant>& hash, const Task& task = {});

} // namespace velmora
