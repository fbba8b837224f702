// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QVector3D>

/// A colour at a place in Lab.
struct ColouredPoint
{
    QVector3D lab; ///< L*, a*, b* (D50)
    QColor color;  ///< as the file gives it; invalid: not given
    QString name;  ///< as the file gives it; may be empty

    /// In which it is shown: the colour given, else that of the place itself.
    QColor shownColor() const;
};

/// Colours at Lab positions, read from a text file of a kind that its content tells.
///
/// - CSV: a point a line, L*, a*, b* and, if wanted, its colour (#40c0ff or a name), separated by
///   semicolons, tabs, commas or spaces; beside semicolons and tabs a comma is a decimal point. Empty
///   lines and lines that begin with # are passed over. A first line of column names may say otherwise:
///   L, a, b (LAB_L...) or X, Y, Z (XYZ_X...), and if wanted name (SAMPLE_NAME, SAMPLE_ID) and colour,
///   in any order, among any others.
/// - CGATS and its relatives (.ti3, IT8): the columns of the first table that has Lab or XYZ.
/// - CxF 3: the objects' CIELAB, else CIE XYZ values for D50.
///
/// XYZ has Y 100 at white, and is taken relative to D50 without adaptation.
struct PointFile
{
    QList<ColouredPoint> points;
    QString problem; ///< what was wrong, naming the file and the line; empty when it was read
    QString note;    ///< what was left out, naming the file; empty when nothing was

    static PointFile read(const QString& name);
};
