// SPDX-License-Identifier: Apache-2.0
#include "TestProfiles.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>

namespace testprofiles {
namespace {

struct Sampling
{
    const DeviceMap& map;
    std::size_t channels;
};

cmsInt32Number sample(const cmsUInt16Number in[], cmsUInt16Number out[], void* cargo)
{
    const auto& sampling = *static_cast<const Sampling*>(cargo);
    std::vector<double> device;
    for (std::size_t c = 0; c < sampling.channels; ++c)
        device.push_back(in[c] / 65535.0);
    const Lab lab = sampling.map(device);
    const cmsCIELab value{lab[0], lab[1], lab[2]};
    cmsFloat2LabEncoded(out, &value);
    return TRUE;
}

cmsHPROFILE emptyProfile(cmsColorSpaceSignature space, cmsProfileClassSignature profileClass)
{
    const cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 4.3);
    cmsSetDeviceClass(profile, profileClass);
    cmsSetColorSpace(profile, space);
    cmsSetPCS(profile, cmsSigLabData);
    return profile;
}

void writeTable(cmsHPROFILE profile, cmsTagSignature tag, int nodes, const DeviceMap& map)
{
    const cmsUInt32Number channels = cmsChannelsOf(cmsGetColorSpace(profile));
    cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, channels, 3);
    cmsStage* table =
        cmsStageAllocCLut16bit(nullptr, static_cast<cmsUInt32Number>(nodes), channels, 3, nullptr);
    Sampling sampling{map, channels};
    cmsStageSampleCLut16bit(table, sample, &sampling, 0);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, channels, nullptr));
    cmsPipelineInsertStage(pipeline, cmsAT_END, table);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, 3, nullptr));
    cmsWriteTag(profile, tag, pipeline);
    cmsPipelineFree(pipeline);
}

} // namespace

QByteArray saved(cmsHPROFILE profile)
{
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    QByteArray bytes(static_cast<qsizetype>(size), '\0');
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    return bytes;
}

QByteArray tableProfile(cmsColorSpaceSignature space, int nodes, const DeviceMap& map,
                        cmsProfileClassSignature profileClass)
{
    const cmsHPROFILE profile = emptyProfile(space, profileClass);
    writeTable(profile, cmsSigAToB0Tag, nodes, map);
    const QByteArray bytes = saved(profile);
    cmsCloseProfile(profile);
    return bytes;
}

QByteArray intentProfile(cmsColorSpaceSignature space, int nodes, const DeviceMap& perceptual,
                         const DeviceMap& relative, const DeviceMap& saturation)
{
    const cmsHPROFILE profile = emptyProfile(space, cmsSigOutputClass);
    writeTable(profile, cmsSigAToB0Tag, nodes, perceptual);
    writeTable(profile, cmsSigAToB1Tag, nodes, relative);
    writeTable(profile, cmsSigAToB2Tag, nodes, saturation);
    const QByteArray bytes = saved(profile);
    cmsCloseProfile(profile);
    return bytes;
}

KVProfilePtr opened(const QByteArray& bytes)
{
    return KVProfilePtr(KVProfileCreateWithData(bytes.constData(), static_cast<int>(bytes.size())),
                        KVProfileRelease);
}

KVProfilePtr openedFile(const QString& path)
{
    return KVProfilePtr(KVProfileCreateWithPath(path.toUtf8().constData()), KVProfileRelease);
}

namespace {
const QString displayFolder = QStringLiteral("/usr/share/color/icc/colord/");
const QString pressFolder = QStringLiteral("/usr/share/color/icc/ghostscript/");
} // namespace

QString srgb()
{
    return displayFolder + QStringLiteral("sRGB.icc");
}
QString adobeRgb()
{
    return displayFolder + QStringLiteral("AdobeRGB1998.icc");
}
QString prophotoRgb()
{
    return displayFolder + QStringLiteral("ProPhotoRGB.icc");
}
QString cieRgb()
{
    return displayFolder + QStringLiteral("CIE-RGB.icc");
}
QString printerCmyk()
{
    return pressFolder + QStringLiteral("default_cmyk.icc");
}

QStringList installedProfiles()
{
    QStringList files;
    for (const QString& folder : {displayFolder, pressFolder}) {
        QDirIterator iterator(folder, {QStringLiteral("*.icc"), QStringLiteral("*.icm")}, QDir::Files);
        while (iterator.hasNext())
            files.append(iterator.next());
    }
    files.sort();
    return files;
}

KVGamut::GamutObject gamutOf(const KVProfilePtr& profile, int gridPoints, KVVMRenderType intent,
                             bool blackPointCompensation)
{
    KVGamut::GamutObject gamut;
    gamut.init(profile, intent, blackPointCompensation, true, 40.0f, gridPoints, 2, nullptr);
    return gamut;
}

LabTransform::LabTransform(const QByteArray& bytes, cmsUInt32Number intent)
{
    const cmsHPROFILE profile =
        cmsOpenProfileFromMem(bytes.constData(), static_cast<cmsUInt32Number>(bytes.size()));
    const cmsHPROFILE lab = cmsCreateLab2Profile(nullptr);
    const cmsColorSpaceSignature space = cmsGetColorSpace(profile);
    const bool inks = space != cmsSigRgbData && space != cmsSigYCbCrData && space != cmsSigHsvData &&
                      space != cmsSig3colorData && space != cmsSigMCH3Data;
    m_fullScale = inks ? 100.0 : 1.0;
    m_channels = cmsChannelsOf(space);
    m_transform = cmsCreateTransform(profile, cmsFormatterForColorspaceOfProfile(profile, 0, TRUE), lab,
                                     TYPE_Lab_DBL, intent, cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE);
    cmsCloseProfile(lab);
    cmsCloseProfile(profile);
}

LabTransform::~LabTransform()
{
    cmsDeleteTransform(m_transform);
}

std::vector<Lab> LabTransform::operator()(std::vector<double> device) const
{
    for (double& v : device)
        v *= m_fullScale;
    std::vector<Lab> result(device.size() / m_channels);
    cmsDoTransform(m_transform, device.data(), result.data(), static_cast<cmsUInt32Number>(result.size()));
    return result;
}

Lab labOf(const QByteArray& bytes, const std::vector<double>& device, cmsUInt32Number intent)
{
    return LabTransform(bytes, intent)(device).front();
}

} // namespace testprofiles
