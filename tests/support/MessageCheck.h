// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// A silent library needs loud tests: every Qt warning that a case does not expect fails it.
namespace kvtest {

/// Declares that this case logs a message (debug, warning or critical) that contains @p part.
/// The case fails when it does not come. Cleared at the end of the case.
void expectMessage(const QString& part);

/// All messages that the running case has logged so far, debug ones included.
QStringList messages();

/// Whether @p text says nothing but what newer versions of Qt say of their own platform "offscreen".
/// Nothing here asks for more than it does.
bool isOfThePlatform(const QString& text);

/// Installs the message handler and the listener that judges each case. Called by the test main.
void installMessageCheck();

} // namespace kvtest
