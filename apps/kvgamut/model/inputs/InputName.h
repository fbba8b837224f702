// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>

#include <optional>

/// The name of an input, with the settings that are written behind it: "printer.icc@relative".
struct InputName
{
    QString file;                         ///< or a built-in profile, or "-"
    std::optional<KVVMRenderType> intent; ///< instead of that of the command line

    /// What of the file is the gamut.
    enum class Part
    {
        Usual,    ///< its profile, its patches...
        Pixels,   ///< the colours of a photo, not its profile: "photo.tif@pixels"
        Boundary, ///< the boundary that is stored in a profile: "printer.icc@boundary"
    };
    Part part = Part::Usual;

    /// @p other with the part of the input that the gamut is made of: "other.tif@pixels"; without the intent.
    QString partOf(const QString& other) const;

    /// Divides @p input at its last @. A file whose whole name is @p input, and a name in which a folder
    /// follows the @, have no settings. If neither the file nor the one before the @ exists, the whole is
    /// taken for a name.
    /// @return fails with InputSettingUnknown if the word behind the @ is not known
    static Result<InputName> of(const QString& input);

    /// The words that may follow the @, as in "absolute, pixels".
    static QString knownWords();
};
