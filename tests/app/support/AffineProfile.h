// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <lcms2.h>

#include <QtCore/QByteArray>

#include <gtest/gtest.h>

/// A device whose gamut is known exactly: Lab is an affine function of red, green and blue.
namespace kvtest {

/// L* = 100 (r + g + b) / 3, a* = 60 (r - g), b* = 60 ((r + g) / 2 - b): a parallelepiped whose lowest
/// point is a corner.
struct AffineDevice
{
    static cmsCIELab lab(double r, double g, double b)
    {
        return {100.0 * (r + g + b) / 3.0, 60.0 * (r - g), 60.0 * (0.5 * (r + g) - b)};
    }
    /// The determinant of that map: rows L (100/3, 100/3, 100/3), a (60, -60, 0), b (30, 30, -60).
    static constexpr double volume = 100.0 / 3.0 * 60.0 * 60.0 * 3.0;

    /// The device as an ICC profile.
    static QByteArray profile()
    {
        const cmsHPROFILE handle = cmsCreateProfilePlaceholder(nullptr);
        cmsSetProfileVersion(handle, 4.3);
        cmsSetDeviceClass(handle, cmsSigOutputClass);
        cmsSetColorSpace(handle, cmsSigRgbData);
        cmsSetPCS(handle, cmsSigLabData);
        const auto sampler = [](const cmsUInt16Number in[], cmsUInt16Number out[], void*) -> int {
            const cmsCIELab value = lab(in[0] / 65535.0, in[1] / 65535.0, in[2] / 65535.0);
            cmsFloat2LabEncoded(out, &value);
            return 1;
        };
        cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, 3, 3);
        cmsStage* table = cmsStageAllocCLut16bit(nullptr, 2, 3, 3, nullptr);
        cmsStageSampleCLut16bit(table, sampler, nullptr, 0);
        cmsPipelineInsertStage(pipeline, cmsAT_BEGIN, cmsStageAllocToneCurves(nullptr, 3, nullptr));
        cmsPipelineInsertStage(pipeline, cmsAT_END, table);
        cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, 3, nullptr));
        EXPECT_TRUE(cmsWriteTag(handle, cmsSigAToB0Tag, pipeline));
        cmsPipelineFree(pipeline);
        EXPECT_TRUE(cmsWriteTag(handle, cmsSigMediaWhitePointTag, cmsD50_XYZ()));
        cmsUInt32Number size = 0;
        cmsSaveProfileToMem(handle, nullptr, &size);
        QByteArray bytes(static_cast<qsizetype>(size), '\0');
        EXPECT_TRUE(cmsSaveProfileToMem(handle, bytes.data(), &size));
        cmsCloseProfile(handle);
        return bytes;
    }
};

} // namespace kvtest
