// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PointSet.h"
#include "model/problems/Result.h"

#include <platform/KVCoreCommon.h>

#include <QtCore/QByteArray>

/// The readers that pointsOfText() selects by content. Problems and notes do not name the file; without
/// points the set is empty. A task may be null. Texts are in UTF-8, except for CxF.
namespace PointReaders {

Result<PointSet> readCsv(const QByteArray& text, const PointOptions& options = {},
                         const KVCompletionProtocolPtr& task = {});
Result<PointSet> readCgats(const QByteArray& text, const PointOptions& options = {},
                           const KVCompletionProtocolPtr& task = {});
Result<PointSet> readCxf(const QByteArray& text, const PointOptions& options = {},
                         const KVCompletionProtocolPtr& task = {});

/// Palettes: swatch exchange files (ASE), colour books (ACB) and GIMP palettes (GPL), whose colours are sRGB.
Result<PointSet> readAse(const QByteArray& bytes, const PointOptions& options = {},
                         const KVCompletionProtocolPtr& task = {});
Result<PointSet> readAcb(const QByteArray& bytes, const PointOptions& options = {},
                         const KVCompletionProtocolPtr& task = {});
Result<PointSet> readGpl(const QByteArray& text, const PointOptions& options = {},
                         const KVCompletionProtocolPtr& task = {});

/// Adds @p point to @p set; a name that is too long is cut. Fails with TooManyPoints or Cancelled.
Result<void> add(PointSet& set, MeasuredPoint point, const KVCompletionProtocolPtr& task);

} // namespace PointReaders
