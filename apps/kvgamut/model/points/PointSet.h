// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MeasuredPoint.h"
#include "PointReading.h"
#include "model/photos/PhotoColors.h"
#include "model/problems/Problem.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <memory>
#include <optional>

/// The points of one file.
struct PointSet
{
    QString file;
    QList<MeasuredPoint> points;
    std::optional<Problem> note; ///< about the points, for example that some were left out; names the file
    bool partial = false;        ///< the note is about points that were left out
    QList<Problem> notes;        ///< how the file was understood, for example which columns are ignored
    PointReading reading;
    /// Of a picture: the colours of all its pixels, of which the points are a selection. Null for other
    /// files.
    std::shared_ptr<const PhotoColors> photo;

    /// All that is to be said about the file: the notes, then the note.
    QList<Problem> allNotes() const
    {
        QList<Problem> all = notes;
        if (note)
            all.append(*note);
        return all;
    }
};

/// @p set as that of the file @p name, which its notes then name.
inline PointSet ofFile(PointSet set, const QString& name)
{
    set.file = name;
    if (set.note)
        set.note->subject = name;
    for (Problem& note : set.notes)
        note.subject = name;
    return set;
}
