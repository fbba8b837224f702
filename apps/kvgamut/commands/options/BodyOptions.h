// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Result.h"

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QStringList>

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

/// A part of the first of two gamuts as a body: --body.
struct BodyOptions
{
    std::optional<KVGamut::Body> body; ///< nullopt: the whole gamuts

    /// Declares the option on @p parser, which keeps a reference to this object.
    /// @param does what the command does with the body
    void declare(CLI::App& parser, const std::string& does);
    /// Throws CLI::ValidationError if there is a body of other than two inputs. Call it after all options are
    /// parsed.
    void check(qsizetype inputs) const;

    /// What the body is, such as "sRGB outside printer". @param titles of the two gamuts; there must be a
    /// body
    QString titleOf(const QStringList& titles) const;
    /// The body; a problem if there is no such part. @param titles of both
    Result<KVGamut::GamutObject> of(const KVGamut::GamutObject& first, const KVGamut::GamutObject& second,
                                    const QStringList& titles) const;
};
