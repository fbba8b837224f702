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

    /// Divides @p input at its last @. A file whose whole name is @p input, and a name in which a folder
    /// follows the @, have no settings. If neither the file nor the one before the @ exists, the whole is
    /// taken for a name.
    /// @return fails with InputSettingUnknown if the word behind the @ is not known
    static Result<InputName> of(const QString& input);

    /// The words that may follow the @, as in "absolute, relative".
    static QString knownWords();
};
