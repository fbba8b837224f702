// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Points.h"

#include <QtCore/QByteArray>

#include <lcms2.h>

#include <functional>
#include <vector>

namespace kvdevices {

using Curve = std::function<double(double)>; ///< 0..1 to 0..1, monotone
using TableMap = std::function<Point(const std::vector<double>& place)>;

enum class TableType
{
    Mft1, ///< version 2, 8 bits
    Mft2, ///< version 2, 16 bits
    Mab,  ///< version 4, 16 bits
    Mpet, ///< version 4, float
};

/// A profile with a table from device values to Lab.
struct TableProfile
{
    cmsColorSpaceSignature space = cmsSigRgbData;
    TableType type = TableType::Mft2;
    bool isXyz = false; ///< the profile connection space is XYZ instead of Lab
    std::vector<std::size_t> nodes;
    TableMap map;                ///< Lab at a place in the table, each coordinate 0..1
    std::vector<Curve> curves;   ///< from device values to places, for each channel; with Mpet powers only
    std::vector<double> powers;  ///< the curves, if they are powers
    double lightnessPower = 1.0; ///< of the curve behind the table for L*; only with Mab and Lab
};
QByteArray written(const TableProfile& profile);

/// A profile with three primaries and a curve for each channel, which is sampled at @p entries places.
QByteArray writtenMatrix(const cmsCIExyYTRIPLE& primaries, const std::vector<Curve>& curves,
                         std::size_t entries);

} // namespace kvdevices
