// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/KVVelmoraFramework.h>

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include <lcms2.h>

#include <array>
#include <functional>
#include <vector>

namespace testprofiles {

using Lab = std::array<double, 3>;
using DeviceMap = std::function<Lab(const std::vector<double>& device)>;

/// The bytes of a version 4 profile whose A2B0 table samples @p map at @p nodes points per channel. Lab
/// values are rounded to multiples of 100/65535 (L*) and 255/65535 (a*, b*).
QByteArray tableProfile(cmsColorSpaceSignature space, int nodes, const DeviceMap& map,
                        cmsProfileClassSignature profileClass = cmsSigOutputClass);

/// The same with one table for each of three intents.
QByteArray intentProfile(cmsColorSpaceSignature space, int nodes, const DeviceMap& perceptual,
                         const DeviceMap& relative, const DeviceMap& saturation);

/// The bytes of a profile, as saved by Little CMS.
QByteArray saved(cmsHPROFILE profile);

KVProfilePtr opened(const QByteArray& bytes);
KVProfilePtr openedFile(const QString& path);

/// Paths of the reference profiles.
QString srgb();
QString adobeRgb();
QString prophotoRgb();
QString cieRgb();
QString printerCmyk();

/// All profile files that packages have installed on this machine.
QStringList installedProfiles();

/// A gamut with default settings, except for the given ones.
KVGamut::GamutObject gamutOf(const KVProfilePtr& profile, int gridPoints = -1,
                             KVVMRenderType intent = KVVMRenderRelativeColorimetric,
                             bool blackPointCompensation = false);

/// Conversion from device to Lab by Little CMS, without the engine; ink channels are 0..1 as well.
class LabTransform
{
public:
    explicit LabTransform(const QByteArray& profile, cmsUInt32Number intent = INTENT_RELATIVE_COLORIMETRIC);
    ~LabTransform();
    Q_DISABLE_COPY_MOVE(LabTransform)

    std::size_t channels() const { return m_channels; }
    /// @param device colours, one after the other
    std::vector<Lab> operator()(std::vector<double> device) const;

private:
    cmsHTRANSFORM m_transform = nullptr;
    std::size_t m_channels = 0;
    double m_fullScale = 1.0;
};

/// Lab of one device colour by Little CMS; ink channels are 0..1 as well.
Lab labOf(const QByteArray& profile, const std::vector<double>& device,
          cmsUInt32Number intent = INTENT_RELATIVE_COLORIMETRIC);

} // namespace testprofiles
