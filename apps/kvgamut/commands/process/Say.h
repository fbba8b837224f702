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
/// Prints a failure as one line to standard error, in English. Prints nothing if standard output could not be
/// written because its reader has ended, as in "kvgamut ... | head": the reader has read what it wanted.
void say(const Problem& problem);
/// Prints a remark that is not a failure, as say() does. With Speech::Quiet it prints nothing.
void note(const Problem& problem);
/// Prints the line only with Speech::Verbose.
void tell(const QString& message);

/// Unless the speech is verbose, suppresses the diagnostics of the viewer and of Qt, such as the version of
/// OpenGL and warnings about the environment. QT_LOGGING_RULES overrides this.
void silenceLibraries();
