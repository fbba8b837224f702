// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtCore/QByteArray>

#include <optional>

/// A text file in UTF-8, and what is to be said about its encoding.
struct PointText
{
    QByteArray utf8; ///< without a byte order mark
    std::optional<Problem> note;

    /// The text of @p content in UTF-8, in UTF-16 or UTF-32 with a byte order mark, or else in Latin-1,
    /// with a note.
    static PointText of(const QByteArray& content);
};
