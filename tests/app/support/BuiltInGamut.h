// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/inputs/BuiltInProfiles.h"

#include <platform/KVVelmoraFramework.h>

#include <gtest/gtest.h>

namespace kvtest {

/// The gamut of a built-in profile.
inline KVGamut::GamutObject builtInGamut(const char* name, int gridPoints)
{
    const QByteArray bytes = BuiltInProfiles::profile(QLatin1String(name));
    const KVProfilePtr profile(KVProfileCreateWithData(bytes.constData(), int(bytes.size())),
                               KVProfileRelease);
    KVGamut::Settings settings;
    settings.gridPoints = gridPoints;
    KVGamut::GamutObject gamut;
    EXPECT_TRUE(gamut.init(profile, settings)) << name;
    return gamut;
}

} // namespace kvtest
