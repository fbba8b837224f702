// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

using GamutSettings = KVGamut::Settings;
