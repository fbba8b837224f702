// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "MeasuredPoint.h"
#include "model/problems/Problem.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

/// The points of one file.
struct PointSet
{
    QString file;
    QList<MeasuredPoint> points;
    std::optional<Problem> note; ///< about the points, for example that some were left out; names the file
    bool partial = false;        ///< the note is about points that were left out
};

/// @p set as that of the file @p name, which its note then names.
inline PointSet ofFile(PointSet set, const QString& name)
{
    set.file = name;
    if (set.note)
        set.note->subject = name;
    return set;
}
