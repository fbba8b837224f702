// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

/// How gamuts are computed of their profiles.
struct GamutSettings
{
    KVVMRenderType intent = KVVMRenderAbsoluteColorimetric;
    bool blackPointCompensation = false; ///< no effect with the absolute intent
    int gridPoints = -1;                 ///< samples along each device axis; -1: the engine chooses

    bool operator==(const GamutSettings&) const = default;
};
