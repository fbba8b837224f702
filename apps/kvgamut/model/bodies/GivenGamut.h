// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

/// A gamut that is not computed from a profile, with what is to be said about it.
struct GivenGamut
{
    KVGamut::GamutObject gamut;
    QString title;     ///< what it is: "hull of 120 colours"
    QStringList notes; ///< sentences about how it was made, and how sure it is
};
