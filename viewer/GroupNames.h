// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Ids of the groups below the scene root. An item is addressed by the ids of its group and of itself.
namespace GroupNames {
inline QString markers()
{
    return QStringLiteral("Markers");
}
inline QString points()
{
    return QStringLiteral("Points");
}
inline QString segments()
{
    return QStringLiteral("Segments");
}
inline QString profiles()
{
    return QStringLiteral("Profiles");
}
inline QString grid()
{
    return QStringLiteral("Grid");
}
inline QString axes()
{
    return QStringLiteral("Axes");
}
inline QString plane()
{
    return QStringLiteral("Plane");
}
/// Child of a gamut: its outline on the ab plane.
inline QString projection()
{
    return QStringLiteral("Projection");
}
} // namespace GroupNames
