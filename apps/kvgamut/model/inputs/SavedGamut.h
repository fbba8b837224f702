// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// A gamut in a file (.kvgamut), to be loaded again without its profile.
///
/// CBOR (RFC 8949): the tag for self-described data around an array of the text "KVGamut", the
/// version 1, and a map with the gamut ("gamut", as the engine serializes it) and what it was computed
/// of ("profile"). The same gamut makes the same bytes.
struct SavedGamut
{
    QHash<QString, QVariant> gamut; ///< as KVGamut::GamutObject::serialize() gives it
    QString profile;                ///< what it was computed of, as it was named then; may be empty
    QString problem;                ///< why the bytes could not be read; empty when they were

    QByteArray bytes() const;

    /// Whether a file that begins with @p start, markerSize bytes or more, is one of these.
    static bool isSavedGamut(const QByteArray& start);
    static constexpr int markerSize = 12;

    /// Takes the file apart. Whether the engine can restore the gamut is to be asked of the engine.
    static SavedGamut read(const QByteArray& bytes);
};
