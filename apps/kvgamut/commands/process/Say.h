// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtCore/QString>

/// Prints one line to standard error: "kvgamut: @p message". Line breaks in @p message become spaces.
void say(const QString& message);
/// The same, in plain English.
void say(const Problem& problem);

/// Unless @p verbose, suppresses the diagnostics of the viewer and of Qt, such as the version of OpenGL and
/// warnings about the environment. QT_LOGGING_RULES overrides this.
void silenceLibraries(bool verbose);
