// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Every Qt warning that a test does not expect makes it fail.
namespace kvtest {

/// Declares that this test logs a message (debug, warning or critical) that contains @p part. The test fails
/// if no such message is logged.
void expectMessage(const QString& part);

/// Declares that messages that contain @p part, which the platform of this test logs, do not fail it.
void toleratePlatformMessage(const QString& part);

/// All messages that the running test has logged so far, including debug messages.
QStringList messages();

/// Whether @p text consists only of messages that newer versions of Qt log about the platform "offscreen".
bool isOfThePlatform(const QString& text);

/// Installs the message handler and the listener that checks each test. Called by main().
void installMessageCheck();

} // namespace kvtest
