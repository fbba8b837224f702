// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "model/inputs/GamutSource.h"

#include <QtCore/QElapsedTimer>

/// The lines of --verbose: what is read, how it is computed, how long it takes. Without it nothing is
/// printed.
namespace Steps {

/// What the input @p name is. @p clock was started before it was read.
void read(const QString& name, const Result<GamutSource>& source, const QElapsedTimer& clock);
/// How the gamut of the input @p name was computed.
void computed(const QString& name, const KVGamut::Report& report);
/// How many colours were read from the file @p name, and as which values.
void readColours(const QString& name, qsizetype count, const QString& values, const QElapsedTimer& clock);
void wrote(const QString& name);
/// The time of the whole command.
void ended(const QElapsedTimer& clock);

} // namespace Steps
