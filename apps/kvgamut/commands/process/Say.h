// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/problems/Problem.h"

#include <QtCore/QString>

/// How much the program says on standard error, besides why something failed.
enum class Speech
{
    Quiet,   ///< nothing
    Usual,   ///< notes about the inputs; on a terminal the progress
    Verbose, ///< also what is read, how it is computed, how long it takes, and diagnostics of OpenGL
};

/// Sets what the functions below print. At first it is Speech::Usual. Call from the main thread before the
/// command runs.
void setSpeech(Speech speech);
Speech speech();

/// Prints one line to standard error: "kvgamut: @p message". Line breaks in @p message become spaces.
void say(const QString& message);
/// The same, in plain English. Prints nothing if standard output cannot be written because its reader has
/// ended, as in
/// "| head": that is how such a reader says that it has enough.
void say(const Problem& problem);
/// The same for what is no failure; not with Speech::Quiet.
void note(const Problem& problem);
/// Prints the line only with Speech::Verbose.
void tell(const QString& message);

/// Unless the speech is verbose, suppresses the diagnostics of the viewer and of Qt, such as the version of
/// OpenGL and warnings about the environment. QT_LOGGING_RULES overrides this.
void silenceLibraries();
