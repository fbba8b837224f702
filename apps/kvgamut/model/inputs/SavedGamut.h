// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// A gamut in a file (.kvgamut), which loads without its profile.
///
/// CBOR (RFC 8949): the tag for self-described data around an array of the text "KVGamut", the version 1, and
/// a map with the gamut ("gamut", as the engine serializes it) and the name of its profile ("profile"). Equal
/// gamuts give equal bytes.
struct SavedGamut
{
    QHash<QString, QVariant> gamut; ///< as KVGamut::GamutObject::serialize() gives it
    QString profile;                ///< name of the profile that it was computed from; may be empty

    QByteArray bytes() const;

    /// Whether a file that begins with @p start, markerSize bytes or more, is a saved gamut.
    static bool isSavedGamut(const QByteArray& start);
    static constexpr int markerSize = 12;

    /// Reads the parts of the file. Does not check the gamut itself: the engine does that when it restores
    /// it.
    static Result<SavedGamut> read(const QByteArray& bytes);
};
