// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Says in one line on standard error what went wrong: "kvgamut: @p problem".
/// Line breaks inside @p problem become spaces.
void say(const QString& problem);

/// Unless @p verbose, keeps to itself what the viewer and Qt log for developers: what OpenGL is used,
/// what the environment lacks. Rules in QT_LOGGING_RULES go before.
void silenceLibraries(bool verbose);
