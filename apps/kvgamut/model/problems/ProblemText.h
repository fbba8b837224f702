// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Problem.h"

#include <QtCore/QList>

/// The texts of problems: "'subject': sentence: cause". English sentences are in ProblemText.cpp and, for the
/// engine's codes, in KVProblem::sentence(); other languages in the translation files, context "Problem".
namespace ProblemText {

/// One line of plain English, for standard error. The same in every locale.
QString english(const Problem& problem);
/// One line in the language of the application, for the window.
QString translated(const Problem& problem);

/// The English sentence of a code, with %1, %2... for its arguments; never null or empty.
const char* sentence(const Problem::Code& code);
/// Every code, those of the engine first.
QList<Problem::Code> allCodes();

} // namespace ProblemText
