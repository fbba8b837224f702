// SPDX-License-Identifier: Apache-2.0
#pragma once

// The profile record itself is part of the public interface.
#include <platform/KVVelmoraFramework.h>
