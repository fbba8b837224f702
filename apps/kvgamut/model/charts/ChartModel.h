// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DeviceChart.h"

#include <platform/KVCoreCommon.h>

#include <array>
#include <span>
#include <vector>

/// Lab of every device colour, from the patches of a chart.
///
/// A table over the device space, linear between its nodes, which are at the levels of the chart and between
/// them. Of all tables that meet the patches it is the one with the smallest second differences along its
/// axes: the mean squared distance of the patches plus a small multiple of those differences is minimised,
/// with conjugate gradients. What the patches do not tell is thus continued smoothly.
class ChartModel
{
public:
    using Values = std::array<double, 3>; ///< L*, a*, b*

    /// The nodes along each channel, from 0 to 1: the levels that many patches of @p chart share, and others
    /// where these are far apart.
    static std::vector<std::vector<double>> nodesOf(const DeviceChart& chart);

    /// @param patches of which the table is made
    /// @param start of the iteration: a model with the same nodes, or null
    /// @param task cancels; may be null. The model has then no meaning
    ChartModel(std::vector<std::vector<double>> nodes, std::span<const DeviceChart::Patch> patches,
               const ChartModel* start, const KVCompletionProtocolPtr& task);

    /// Lab at @p device.
    Values at(const DeviceChart::Device& device) const;

    const std::vector<std::vector<double>>& nodes() const { return m_nodes; }
    /// Of each node, the last channel varies first.
    const std::vector<Values>& values() const { return m_values; }

private:
    std::vector<std::vector<double>> m_nodes;
    std::vector<Values> m_values;
};
