// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What went wrong, in the language of the window.
///
/// The engine, the model and the window say it in English, since it goes to standard error, too, where
/// scripts may read it. Here are their sentences, to be translated, and found again in what they said:
/// names and numbers stay as they are, a reason that ends a sentence is translated by itself. What is not
/// known - the reasons of libraries - stays English.
QString shownProblem(const QString& problem);

/// The sentences that shownProblem() knows, with %1, %2 for what differs.
QStringList knownProblems();
