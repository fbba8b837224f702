// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QList>

/// How bodies are drawn so that none hides another.
enum class BodyLook
{
    Solid,       ///< nothing is inside it
    Translucent, ///< only solid bodies are inside it
    Lines        ///< translucent bodies are inside it
};

/// The looks of gamuts that are shown together. A gamut hides every smaller one of which it contains about a
/// quarter or more; of two gamuts of equal volume the later one. Gamuts without a volume are solid.
QList<BodyLook> bodyLooks(const QList<KVGamut::GamutObject>& gamuts);
