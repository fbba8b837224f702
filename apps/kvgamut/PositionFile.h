#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QVector3D>

#include <utility>

/// Colours at Lab positions, read from a text file.
///
/// One position a line: L*, a*, b* and, if wanted, its colour (#40c0ff or a name), separated by commas,
/// semicolons, tabs or spaces. Without a colour a position shows its own. Empty lines, lines that begin
/// with # and a first line of column names are passed over.
struct PositionFile
{
    QList<std::pair<QColor, QVector3D>> positions;
    QString problem; ///< what was wrong, naming the file and the line; empty when it was read

    static PositionFile read(const QString& name);
};
