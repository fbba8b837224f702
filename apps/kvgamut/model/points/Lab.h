// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtGui/QVector3D>

/// Conversions between the Lab type of the program and the vectors of the viewer's interface, which hold
/// (L*, a*, b*) as x, y, z.

inline QVector3D vectorOf(const KVGamut::LabPoint& lab)
{
    return {lab.L, lab.a, lab.b};
}

inline KVGamut::LabPoint labOf(const QVector3D& vector)
{
    return {vector.x(), vector.y(), vector.z()};
}
