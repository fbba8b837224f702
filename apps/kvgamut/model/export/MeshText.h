// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QByteArray>
#include <QtGui/QVector3D>

/// Numbers and coordinates of mesh files.
namespace MeshText {

/// With enough digits to restore the same float.
inline QByteArray number(float value)
{
    return QByteArray::number(static_cast<double>(value), 'g', 9);
}

inline QByteArray triple(const QVector3D& v)
{
    return number(v.x()) + ' ' + number(v.y()) + ' ' + number(v.z());
}

/// Coordinates where z is up: a*, b*, L*.
inline QVector3D zUp(const KVGamut::LabPoint& lab)
{
    return {lab.a, lab.b, lab.L};
}

/// Coordinates where y is up: a*, L*, -b*.
inline QVector3D yUp(const KVGamut::LabPoint& lab)
{
    return {lab.a, lab.L, -lab.b};
}

} // namespace MeshText
