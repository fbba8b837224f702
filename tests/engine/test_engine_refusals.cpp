// SPDX-License-Identifier: Apache-2.0
#include "Cancelling.h"
#include "MappedDevice.h"
#include "Problems.h"
#include "TestProfiles.h"

#include <engine/surface/GamutBuilder.h>

#include "support/MessageCheck.h"

#include <platform/KVCoreCommon.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <limits>
#include <set>
#include <thread>

using namespace testprofiles;

namespace {

// A refusal leaves an empty gamut with a problem, logs nothing, and does not affect the next computation.
void expectRefused(const KVProfilePtr& profile, const KVProblem& problem,
                   KVVMRenderType intent = KVVMRenderRelativeColorimetric)
{
    KVGamut::GamutObject gamut = gamutOf(openedFile(srgb()), 5);
    ASSERT_GT(gamut.faceCount(), 0);
    EXPECT_FALSE(gamut.init(profile, intent, false, true, 40.0f, -1, 2, nullptr));
    EXPECT_EQ(gamut.problem(), problem);
    EXPECT_EQ(gamut.faceCount(), 0);
    EXPECT_TRUE(gamut.faces().isEmpty());
    EXPECT_TRUE(gamut.outline().isEmpty());
    EXPECT_TRUE(gamut.primaries().isEmpty());
    EXPECT_TRUE(gamut.referenceLab().isEmpty());
    EXPECT_EQ(gamut.volume(), 0.0f);
    EXPECT_EQ(gamut.method(), KVGamut::Method::None);
    EXPECT_EQ(gamut.report().problem, gamut.problem());
    EXPECT_TRUE(kvtest::messages().isEmpty());
    EXPECT_TRUE(
        gamut.init(openedFile(srgb()), KVVMRenderRelativeColorimetric, false, true, 40.0f, 5, 2, nullptr));
    EXPECT_EQ(gamut.problem(), std::nullopt);
}

KVProblem only(KVProblemCode code, const QStringList& arguments = {})
{
    return {code, arguments, {}};
}

Lab anyBox(const std::vector<double>& d)
{
    return {100 * d[0], -50 + 100 * d[1 % d.size()], -50 + 100 * d.back()};
}

} // namespace

TEST(Refusal, ofNoProfile)
{
    expectRefused({}, only(KVProblemCode::NoProfile));
}

TEST(Refusal, ofGrey)
{
    expectRefused(openedFile(QStringLiteral("/usr/share/color/icc/ghostscript/default_gray.icc")),
                  only(KVProblemCode::OneChannel));
}

TEST(Refusal, ofTwoChannels)
{
    expectRefused(opened(tableProfile(cmsSig2colorData, 5, anyBox)), only(KVProblemCode::TwoChannels));
}

TEST(Refusal, ofLabAsDeviceSpace)
{
    expectRefused(openedFile(QStringLiteral("/usr/share/color/icc/ghostscript/lab.icc")),
                  only(KVProblemCode::NotADeviceSpace, {QStringLiteral("Lab")}));
}

TEST(Refusal, ofXyzAsDeviceSpace)
{
    const cmsHPROFILE profile = cmsCreateXYZProfile();
    cmsSetDeviceClass(profile, cmsSigColorSpaceClass);
    const QByteArray bytes = saved(profile);
    cmsCloseProfile(profile);
    expectRefused(opened(bytes), only(KVProblemCode::NotADeviceSpace, {QStringLiteral("XYZ")}));
}

TEST(Refusal, ofADeviceLink)
{
    const cmsHPROFILE link = cmsCreateInkLimitingDeviceLink(cmsSigCmykData, 250.0);
    const QByteArray bytes = saved(link);
    cmsCloseProfile(link);
    expectRefused(opened(bytes), only(KVProblemCode::DeviceLink));
}

TEST(Refusal, ofAnAbstractProfile)
{
    const cmsHPROFILE abstract = cmsCreateBCHSWabstractProfile(9, 10, 1, 0, 0, 5000, 5000);
    const QByteArray bytes = saved(abstract);
    cmsCloseProfile(abstract);
    expectRefused(opened(bytes), only(KVProblemCode::AbstractProfile));
}

TEST(Refusal, ofNamedColours)
{
    expectRefused(openedFile(QStringLiteral("/usr/share/color/icc/colord/Crayons.icc")),
                  only(KVProblemCode::NamedColorProfile));
}

TEST(Refusal, ofAProfileWithoutTransformToLab)
{
    const cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 4.3);
    cmsSetDeviceClass(profile, cmsSigOutputClass);
    cmsSetColorSpace(profile, cmsSigCmykData);
    cmsSetPCS(profile, cmsSigLabData);
    const cmsCIEXYZ white{0.9642, 1.0, 0.8249};
    cmsWriteTag(profile, cmsSigMediaWhitePointTag, &white);
    const QByteArray bytes = saved(profile);
    cmsCloseProfile(profile);
    expectRefused(opened(bytes),
                  only(KVProblemCode::NoTransformBecause, {QStringLiteral("Couldn't link the profiles")}));
}

// The header contains unknown signatures of the class and the colour space. Little CMS opens such profiles.
TEST(Refusal, ofAnUnsupportedProfileClass)
{
    QByteArray bytes = tableProfile(cmsSigRgbData, 5, anyBox);
    bytes.replace(12, 4, QByteArray(4, '\0'));
    expectRefused(opened(bytes), only(KVProblemCode::UnsupportedClass, {QStringLiteral("????")}));
}

TEST(Refusal, ofAnUnknownDeviceSpace)
{
    QByteArray bytes = tableProfile(cmsSigRgbData, 5, anyBox);
    bytes.replace(16, 4, "wxyz");
    expectRefused(opened(bytes), only(KVProblemCode::UnknownDeviceSpace, {QStringLiteral("wxyz")}));
}

TEST(Refusal, ofDegenerateGamuts)
{
    const auto refuse = [](const DeviceMap& map, KVProblemCode ofRgb, KVProblemCode ofCmyk) {
        expectRefused(opened(tableProfile(cmsSigRgbData, 9, map)), only(ofRgb));
        expectRefused(opened(tableProfile(cmsSigCmykData, 5, map)), only(ofCmyk));
    };
    refuse(
        [](const std::vector<double>&) {
            return Lab{50, 0, 0};
        },
        KVProblemCode::TooSmall, KVProblemCode::NoVolume); // a point
    refuse(
        [](const std::vector<double>& d) {
            return Lab{100 * d[0], 0, 0};
        },
        KVProblemCode::TooSmall, KVProblemCode::NoVolume); // a line
    refuse(
        [](const std::vector<double>& d) {
            return Lab{100 * d[0], -50 + 100 * d[1], 0};
        },
        KVProblemCode::TooSmall, KVProblemCode::NoVolume); // a plane
    refuse(
        [](const std::vector<double>& d) {
            return Lab{50 + d[0] * 0.5, d[1] * 0.5, d[2]};
        },
        KVProblemCode::TooSmall, KVProblemCode::TooSmall); // under 1 dE cubed
}

TEST(Refusal, ofUnknownIntents)
{
    for (int intent : {-1, 4, 255, 1 << 30})
        expectRefused(openedFile(srgb()), only(KVProblemCode::UnknownIntent, {QString::number(intent)}),
                      static_cast<KVVMRenderType>(intent));
}

namespace {

std::optional<KVProblemCode> problemOfDevice(int channels, const MappedDevice::Map& map)
{
    return codeOf(velmora::buildGamut(MappedDevice(channels, map), {}, {}));
}

} // namespace

TEST(Refusal, ofLabValuesThatAreNanOrOutOfRange)
{
    for (double bad : {std::nan(""), std::numeric_limits<double>::infinity(), 2001.0, -2001.0})
        EXPECT_EQ(
            problemOfDevice(
                3,
                [bad](const float* d) {
                    return velmora::Vec3{100.0 * double(d[0]), 50.0 * double(d[1]), d[2] > 0.5f ? bad : 0.0};
                }),
            KVProblemCode::LabOutOfRange);
}

TEST(EmptyGamut, hasNeutralAnswers)
{
    const KVGamut::GamutObject gamut;
    const float lab[] = {50.0f, 0.0f, 0.0f};
    EXPECT_FALSE(gamut.isInside(lab));
    EXPECT_EQ(gamut.volume(), 0.0f);
    EXPECT_TRUE(gamut.faces().isEmpty());
    EXPECT_TRUE(gamut.serialize().isEmpty());
    EXPECT_EQ(gamut.problem(), std::nullopt);
    const auto comparison = gamut.compare(gamut);
    EXPECT_EQ(comparison.intersection, 0.0f);
    EXPECT_EQ(comparison.unionVolume, 0.0f);
    EXPECT_EQ(comparison.firstCovered, 0.0f);
}

TEST(Cancellation, beforeTheStartIsReported)
{
    auto protocol = KVCompletionProtocol::createTask(QStringLiteral("GamutLoader"));
    protocol->cancel();
    KVGamut::GamutObject gamut;
    EXPECT_FALSE(
        gamut.init(openedFile(srgb()), KVVMRenderRelativeColorimetric, false, true, 40.0f, -1, 2, &protocol));
    EXPECT_EQ(codeOf(gamut), KVProblemCode::Cancelled);
    EXPECT_EQ(gamut.faceCount(), 0);
}

TEST(Cancellation, stopsSoonAtTheDefaultGrid)
{
    const QByteArray wound = tableProfile(cmsSigRgbData, 33, [](const std::vector<double>& d) {
        const double angle = 3.0 * M_PI * d[1];
        const double radius = 40.0 + 10.0 * d[2];
        return Lab{45 + 10 * d[0], radius * std::cos(angle), radius * std::sin(angle)};
    });
    const QByteArray sixInks = tableProfile(cmsSig6colorData, 5, anyBox);
    std::vector<double> shares;
    for (double share = 0.02; share < 0.95; share += 0.06)
        shares.push_back(share);
    int cancelled = 0;
    for (const auto& profile :
         {openedFile(prophotoRgb()), openedFile(printerCmyk()), opened(wound), opened(sixInks)}) {
        const auto runs = cancelling::cancelledAfter(shares, profile, -1, 40.0f);
        cancelled += runs.cancelled;
        EXPECT_LE(runs.max.colours, 4096u);
        EXPECT_LE(runs.max.bytes, 32u << 20);
    }
    EXPECT_GE(cancelled, 8); // the others completed before their next check
}

namespace {

// Records the reported progress at each transform.
class ProgressRecorder final : public velmora::DeviceTransform
{
public:
    using Map = velmora::Vec3 (*)(const float* device, int channels);

    ProgressRecorder(int channels, Map map, KVCompletionProtocolPtr protocol)
        : m_channels(channels), m_map(map), m_protocol(std::move(protocol))
    {
    }
    int channels() const override { return m_channels; }
    velmora::ChannelKind kind() const override { return velmora::ChannelKind::Subtractive; }
    std::vector<float> white() const override { return std::vector<float>(std::size_t(m_channels), 0.0f); }
    std::vector<float> black() const override { return std::vector<float>(std::size_t(m_channels), 1.0f); }
    std::vector<float> origin() const override { return white(); }
    mutable std::vector<float> progress;

protected:
    void convertBlock(const float* block, velmora::Vec3* lab, std::size_t count) const override
    {
        progress.push_back(m_protocol->progress());
        for (std::size_t i = 0; i < count; ++i)
            lab[i] = m_map(block + i * std::size_t(m_channels), m_channels);
    }

private:
    int m_channels;
    Map m_map;
    KVCompletionProtocolPtr m_protocol;
};

velmora::Vec3 mixture(const float* device, int channels)
{
    constexpr std::array<velmora::Vec3, 8> inks{{{-20, -30, -30},
                                                 {-25, 40, -5},
                                                 {-5, -3, 60},
                                                 {-35, 2, 3},
                                                 {-6, 20, 25},
                                                 {-7, -25, 12},
                                                 {-5, 9, -28},
                                                 {-3, -9, -12}}};
    velmora::Vec3 lab{95, 0, 0};
    for (int c = 0; c < channels; ++c)
        lab = lab + (c < 4 ? 1.0 : 0.3) * double(device[c]) * inks[std::size_t(c) % inks.size()];
    return lab;
}

// One and a half turns around the L* axis, which needs a lattice surface.
velmora::Vec3 ring(const float* device, int channels)
{
    const double angle = 3.0 * M_PI * double(device[1]), radius = 20.0 + 40.0 * double(device[2]);
    const double height = 0.5 * double(device[0] + device[channels == 3 ? 0 : 3]);
    return {20.0 + 60.0 * height, radius * std::cos(angle), radius * std::sin(angle)};
}

void expectManySteps(int channels, ProgressRecorder::Map map, KVGamut::Method method)
{
    const auto protocol = KVCompletionProtocol::createTask(QStringLiteral("GamutLoader"));
    const ProgressRecorder recorder(channels, map, protocol);
    const velmora::GamutRecord record = velmora::buildGamut(recorder, {}, velmora::Task(protocol)).value();
    EXPECT_EQ(record.method, method) << channels << " channels";
    EXPECT_TRUE(std::is_sorted(recorder.progress.begin(), recorder.progress.end()));
    const std::set<float> steps(recorder.progress.begin(), recorder.progress.end());
    EXPECT_GE(steps.size(), 10u) << channels << " channels";
    EXPECT_LE(*steps.begin(), 0.1f);
    EXPECT_GE(*steps.rbegin(), 0.9f);
    EXPECT_LT(*steps.rbegin(), 1.0f);
}

} // namespace

TEST(Progress, ofADeviceMeshRisesInSmallSteps)
{
    expectManySteps(3, mixture, KVGamut::Method::DeviceMesh);
}

TEST(Progress, ofARadialHullRisesInSmallSteps)
{
    for (int channels : {4, 5, 6, 8, 12})
        expectManySteps(channels, mixture, KVGamut::Method::RadialHull);
}

TEST(Progress, ofALatticeSurfaceRisesInSmallSteps)
{
    for (int channels : {3, 4})
        expectManySteps(channels, ring, KVGamut::Method::LatticeSurface);
}

TEST(Progress, endsAtOne)
{
    for (const QString& path : {srgb(), printerCmyk()}) {
        auto protocol = KVCompletionProtocol::createTask(QStringLiteral("GamutLoader"));
        KVGamut::GamutObject gamut;
        EXPECT_TRUE(gamut.init(openedFile(path), KVVMRenderRelativeColorimetric, false, true, 40.0f, 9, 2,
                               &protocol));
        EXPECT_EQ(protocol->progress(), 1.0f);
    }
}

TEST(Progress, isOptional)
{
    KVCompletionProtocolPtr none;
    KVGamut::GamutObject gamut;
    EXPECT_TRUE(
        gamut.init(openedFile(srgb()), KVVMRenderRelativeColorimetric, false, true, 40.0f, 5, 2, &none));
    EXPECT_TRUE(
        gamut.init(openedFile(srgb()), KVVMRenderRelativeColorimetric, false, true, 40.0f, 5, 2, nullptr));
}

TEST(Threads, shareAProfileAndAGamut)
{
    const auto profile = openedFile(srgb());
    const auto shared = gamutOf(profile, 9);
    std::vector<std::thread> threads;
    std::atomic<int> failures{0};
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, copy = shared] {
            const auto own = gamutOf(profile, 9);
            const float grey[] = {50.0f, 0.0f, 0.0f};
            if (own.faces() != copy.faces() || !copy.isInside(grey) || copy.outline() != own.outline())
                ++failures;
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
}
