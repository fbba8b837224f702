// SPDX-License-Identifier: Apache-2.0
#include "ProfileWriter.h"

#include "engine/TestProfiles.h"

namespace kvdevices {
namespace {

cmsToneCurve* tabulated(const Curve& curve, std::size_t entries)
{
    std::vector<cmsUInt16Number> table;
    for (std::size_t i = 0; i < entries; ++i)
        table.push_back(static_cast<cmsUInt16Number>(
            std::lround(65535.0 * std::clamp(curve(double(i) / double(entries - 1)), 0.0, 1.0))));
    return cmsBuildTabulatedToneCurve16(nullptr, static_cast<cmsUInt32Number>(entries), table.data());
}

cmsToneCurve* power(double exponent)
{
    cmsCurveSegment segment{};
    segment.x0 = -1e22f;
    segment.x1 = 1e22f;
    segment.Type = 6;
    segment.Params[0] = exponent;
    segment.Params[1] = 1.0;
    return cmsBuildSegmentedToneCurve(nullptr, 1, &segment);
}

cmsStage* stageOf(const std::vector<cmsToneCurve*>& curves)
{
    cmsStage* stage =
        cmsStageAllocToneCurves(nullptr, static_cast<cmsUInt32Number>(curves.size()), curves.data());
    for (cmsToneCurve* curve : curves)
        cmsFreeToneCurve(curve);
    return stage;
}

cmsStage* inputStage(const TableProfile& profile)
{
    const std::size_t entries = profile.type == TableType::Mft1 ? 256 : 1024;
    std::vector<cmsToneCurve*> curves;
    for (std::size_t c = 0; c < profile.nodes.size(); ++c) {
        if (profile.type == TableType::Mpet)
            curves.push_back(power(profile.powers.empty() ? 1.0 : profile.powers[c]));
        else
            curves.push_back(tabulated(
                profile.curves.empty() ? Curve([](double v) { return v; }) : profile.curves[c], entries));
    }
    return stageOf(curves);
}

cmsStage* outputStage(const TableProfile& profile)
{
    const std::size_t entries = profile.type == TableType::Mft1 ? 256 : 1024;
    std::vector<cmsToneCurve*> curves;
    for (int i = 0; i < 3; ++i) {
        const double exponent = i == 0 ? profile.lightnessPower : 1.0;
        curves.push_back(tabulated([exponent](double v) { return std::pow(v, exponent); }, entries));
    }
    return stageOf(curves);
}

cmsCIEXYZ xyzOf(const Point& lab)
{
    const cmsCIELab value{lab[0], lab[1], lab[2]};
    cmsCIEXYZ xyz;
    cmsLab2XYZ(nullptr, &xyz, &value);
    return xyz;
}

void encode(const TableProfile& profile, const Point& lab, cmsUInt16Number out[])
{
    const cmsCIELab value{lab[0], lab[1], lab[2]};
    if (profile.isXyz) {
        const cmsCIEXYZ xyz = xyzOf(lab);
        cmsFloat2XYZEncoded(out, &xyz);
    } else if (profile.type == TableType::Mft2) {
        cmsFloat2LabEncodedV2(out, &value);
    } else {
        cmsFloat2LabEncoded(out, &value);
    }
    if (profile.lightnessPower != 1.0)
        out[0] = static_cast<cmsUInt16Number>(
            std::lround(65535.0 * std::pow(out[0] / 65535.0, 1.0 / profile.lightnessPower)));
}

template <typename Number>
std::vector<double> placeOf(const TableProfile& profile, const Number in[], double fullScale)
{
    std::vector<double> place;
    for (std::size_t c = 0; c < profile.nodes.size(); ++c)
        place.push_back(double(in[c]) / fullScale);
    return place;
}

cmsInt32Number sampleIntegers(const cmsUInt16Number in[], cmsUInt16Number out[], void* cargo)
{
    const auto& profile = *static_cast<const TableProfile*>(cargo);
    encode(profile, profile.map(placeOf(profile, in, 65535.0)), out);
    return TRUE;
}

cmsInt32Number sampleFloats(const cmsFloat32Number in[], cmsFloat32Number out[], void* cargo)
{
    const auto& profile = *static_cast<const TableProfile*>(cargo);
    const Point lab = profile.map(placeOf(profile, in, 1.0));
    const cmsCIEXYZ xyz = xyzOf(lab);
    const Point value = profile.isXyz ? Point{xyz.X, xyz.Y, xyz.Z} : lab;
    for (std::size_t i = 0; i < 3; ++i)
        out[i] = static_cast<cmsFloat32Number>(value[i]);
    return TRUE;
}

cmsStage* tableStage(TableProfile& profile)
{
    std::vector<cmsUInt32Number> nodes;
    for (std::size_t count : profile.nodes)
        nodes.push_back(static_cast<cmsUInt32Number>(count));
    const auto channels = static_cast<cmsUInt32Number>(nodes.size());
    if (profile.type == TableType::Mpet) {
        cmsStage* stage = cmsStageAllocCLutFloatGranular(nullptr, nodes.data(), channels, 3, nullptr);
        cmsStageSampleCLutFloat(stage, sampleFloats, &profile, 0);
        return stage;
    }
    cmsStage* stage = cmsStageAllocCLut16bitGranular(nullptr, nodes.data(), channels, 3, nullptr);
    cmsStageSampleCLut16bit(stage, sampleIntegers, &profile, 0);
    return stage;
}

cmsHPROFILE emptyProfile(const TableProfile& profile)
{
    const bool isOld = profile.type == TableType::Mft1 || profile.type == TableType::Mft2;
    const cmsHPROFILE empty = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(empty, isOld ? 2.1 : 4.3);
    cmsSetDeviceClass(empty, cmsSigOutputClass);
    cmsSetColorSpace(empty, profile.space);
    cmsSetPCS(empty, profile.isXyz ? cmsSigXYZData : cmsSigLabData);
    return empty;
}

QByteArray savedAndClosed(cmsHPROFILE profile)
{
    const QByteArray bytes = testprofiles::saved(profile);
    cmsCloseProfile(profile);
    return bytes;
}

} // namespace

QByteArray written(const TableProfile& wanted)
{
    TableProfile profile = wanted;
    const cmsHPROFILE file = emptyProfile(profile);
    const auto channels = static_cast<cmsUInt32Number>(profile.nodes.size());
    cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, channels, 3);
    cmsPipelineInsertStage(pipeline, cmsAT_END, inputStage(profile));
    cmsPipelineInsertStage(pipeline, cmsAT_END, tableStage(profile));
    if (profile.type != TableType::Mpet)
        cmsPipelineInsertStage(pipeline, cmsAT_END, outputStage(profile));
    cmsPipelineSetSaveAs8bitsFlag(pipeline, profile.type == TableType::Mft1);
    if (profile.type == TableType::Mpet) {
        cmsWriteTag(file, cmsSigDToB1Tag, pipeline);
        cmsLinkTag(file, cmsSigDToB0Tag, cmsSigDToB1Tag);
    } else {
        cmsWriteTag(file, cmsSigAToB0Tag, pipeline);
    }
    cmsPipelineFree(pipeline);
    return savedAndClosed(file);
}

QByteArray writtenMatrix(const cmsCIExyYTRIPLE& primaries, const std::vector<Curve>& curves,
                         std::size_t entries)
{
    std::array<cmsToneCurve*, 3> tables{};
    for (std::size_t i = 0; i < 3; ++i)
        tables[i] = tabulated(curves[i], entries);
    const cmsCIExyY white{0.3127, 0.3290, 1.0};
    const cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, tables.data());
    cmsFreeToneCurveTriple(tables.data());
    return savedAndClosed(profile);
}

} // namespace kvdevices
