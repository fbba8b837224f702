// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Points.h"
#include "engine/TestProfiles.h"

#include <functional>
#include <vector>

namespace kvdevices {

/// Lab at the nodes of a grid over the device; the last channel varies fastest.
struct GridImage
{
    std::vector<std::size_t> nodes; ///< for each channel
    std::vector<Point> lab;
};

/// The map from device values to Lab of a profile, as Little CMS evaluates it in double precision, sampled at
/// the nodes of the profile's own table.
///
/// Reads the table and the curves in front of it from the tag that the relative colorimetric intent uses.
/// The curves must be monotone. Without a table, as in matrix profiles, the nodes are chosen so that the
/// steps are about equal in Lab.
class ProfileMap
{
public:
    explicit ProfileMap(const QByteArray& profile);

    std::size_t channels() const { return m_transform.channels(); }
    /// Whether Lab is not linear between the nodes of the table: the profile connection space is XYZ, or
    /// there are curves behind the table.
    bool bends() const { return m_bends; }
    /// Steps of the channel with the coarsest table.
    std::size_t minSteps() const;
    /// Lab at the nodes of the table and at @p parts - 1 nodes between each two of them.
    GridImage gridImage(std::size_t parts) const;

private:
    using Curve = std::function<double(double)>;
    void readTable(cmsHPROFILE profile, cmsTagSignature tag);
    void readMatrix(cmsHPROFILE profile);
    void addAxis(const Curve& curve, std::vector<double> nodes);
    std::vector<double> positions(std::size_t channel, std::size_t parts) const;

    testprofiles::LabTransform m_transform;
    bool m_bends = false;
    // For each channel the values behind the curve at the nodes, and the device value for a value behind the
    // curve.
    std::vector<std::vector<double>> m_nodes;
    std::vector<Curve> m_inverse;
};

} // namespace kvdevices
