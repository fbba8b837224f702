// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QVector3D>

/// A measured colour, or the colours of a part of a picture.
struct MeasuredPoint
{
    QString name;        ///< empty: it has none
    QVector3D lab;       ///< L*, a*, b*
    QColor color;        ///< in which it is shown when it is not judged
    double weight = 1.0; ///< its share among the points of its set, relative to theirs
};

/// The points of one file.
struct PointSet
{
    QString file;
    QList<MeasuredPoint> points;
    QString problem;      ///< why there are no points, naming the file; empty when it was read
    QString note;         ///< what should be known of them, naming the file; empty when nothing should
    bool partial = false; ///< the note tells of points that were left out

    /// Reads @p file: positions of a text file, or the pixels of a picture. Runs on any thread.
    static PointSet read(const QString& file);
};

/// On which side of a gamut's surface a colour lies.
enum class Side
{
    Inside,
    Edge, ///< no farther from the surface than the tolerance
    Outside,
};

/// @param distance from the surface as KVGamut::Nearest has it: negative inside
Side sideOf(float distance, float tolerance);
