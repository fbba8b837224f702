// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ChartModel.h"

#include <QtCore/QStringList>

/// How well a chart tells what its device reaches.
struct ChartFacts
{
    bool isDisplay = false;
    int channels = 0;
    qsizetype measured = 0;      ///< patches
    qsizetype different = 0;     ///< patches with different device values
    QList<int> levels;           ///< different values of each channel
    int missingCorners = 0;      ///< combinations of 0 and 100 % that were not measured
    double uncoveredShare = 0.0; ///< of the device space, see below
    double largestGap = 0.0;     ///< of a device colour to the nearest patch: largest difference, 0..1
    double errorMedian = 0.0;    ///< dE76 of patches that were predicted from the others
    double errorP95 = 0.0;       ///< the same, 95th percentile
    bool isWhiteMeasured = false;

    /// A device colour is covered if there is a patch on each of its sides: for each choice of "at least as
    /// much" or "at most as much" of every channel, a patch that has these. So a corner that was not measured
    /// leaves all uncovered for which that corner is one of the sides and no other patch is.
    ///
    /// For the errors the patches, except for the corners, are divided into ten parts; each part is predicted
    /// from the other nine. They are upper limits of the error of the whole chart.
    /// @param task cancels; may be null. The facts have then no meaning
    static ChartFacts of(const DeviceChart& chart, const ChartModel& model,
                         const KVCompletionProtocolPtr& task);

    /// "print chart of 1617 patches"
    QString title() const;
    /// Sentences for a reader of the volume: how sure it is, and what is missing.
    QStringList notes() const;
};
