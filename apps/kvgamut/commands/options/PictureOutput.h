// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "commands/process/Arguments.h"
#include "model/pictures/PictureFile.h"

#include <CLI/CLI.hpp>

#include <functional>

/// The picture file that is written: the options --output, --format and --dpi.
class PictureOutput
{
public:
    /// Declares the options on @p parser, which keeps a reference to this object.
    void declare(CLI::App& parser);
    /// How many pictures of a turn are written; 0: one picture.
    int turntable() const { return m_turntable; }
    /// Names of the files that are written.
    QStringList names() const;

    /// Finds the format. Throws CLI::ValidationError if the name has no suffix of a picture, or if the format
    /// has no transparency although the picture is @p transparent, or if a turn would be written to a device.
    /// Call it after all options are parsed.
    void check(bool transparent);

    bool isGiven() const { return !m_name.isEmpty(); }
    QString name() const { return m_name; } ///< empty if not given

    /// Remembers the command line for the note in the file: the words as typed, without those that do not
    /// change the picture (the names of the output and of the reference).
    void noteCommand(const Arguments& arguments);
    /// Whether lines and texts are kept as vectors: in SVG and PDF, except of a turn.
    bool isVector() const;
    /// Writes @p picture if an output is given.
    /// @param profiles see PictureNote
    /// @param overlay drawn over the picture if isVector()
    [[nodiscard]] std::optional<Problem> write(const QImage& picture, const QStringList& profiles,
                                               const PictureOverlay& overlay) const;
    /// Writes the pictures of a turn, which @p picture gives, null if it cannot; nothing unless all are
    /// drawn. If a file cannot be written, those that did not exist before are removed again.
    [[nodiscard]] std::optional<Problem> writeTurn(const std::function<QImage(int)>& picture,
                                                   const QStringList& profiles) const;

private:
    void declareTurntable(CLI::App& parser);

    QString m_name;
    std::optional<PictureFormat> m_format;
    PictureNote m_note;
    int m_turntable = 0;
};
