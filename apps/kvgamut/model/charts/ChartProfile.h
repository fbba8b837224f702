// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ChartFacts.h"

#include <QtCore/QByteArray>

#include <memory>

/// A chart as an ICC profile, which the colour engine reads like every other.
struct ChartProfile
{
    QByteArray bytes;
    ChartFacts facts;
    std::shared_ptr<const DeviceChart> chart;

    /// The profile's table is the model of the chart; its media white is the white of the chart. So absolute
    /// colours of a print are those that were measured, and relative ones are relative to its paper. Colours
    /// of a display are relative to its white, as in other display profiles; the tag "chad" contains the
    /// adaptation to D50, which can be undone (KVGamut::Adaptation).
    /// @return fails as DeviceChart::of(), or with Cancelled
    static Result<ChartProfile> of(const PointSet& set, const KVCompletionProtocolPtr& task);
};
