// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QVector3D>

/// What the writers of text share.
namespace MeshText {

/// As many digits as tell it from every other.
inline QByteArray number(float value)
{
    return QByteArray::number(static_cast<double>(value), 'g', 9);
}

inline QByteArray triple(const QVector3D& v)
{
    return number(v.x()) + ' ' + number(v.y()) + ' ' + number(v.z());
}

/// Where z is up: a*, b*, L*.
inline QVector3D zUp(const QVector3D& lab)
{
    return {lab.y(), lab.z(), lab.x()};
}

/// Where y is up: a*, L*, -b*.
inline QVector3D yUp(const QVector3D& lab)
{
    return {lab.y(), lab.x(), -lab.z()};
}

} // namespace MeshText
