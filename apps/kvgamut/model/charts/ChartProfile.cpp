// SPDX-License-Identifier: Apache-2.0
#include "ChartProfile.h"

#include "model/inputs/InputGate.h"
#include "model/inputs/LittleCms.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

struct FreePipeline
{
    void operator()(cmsPipeline* pipeline) const { cmsPipelineFree(pipeline); }
};
struct FreeCurve
{
    void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using Pipeline = std::unique_ptr<cmsPipeline, FreePipeline>;
using Curve = std::unique_ptr<cmsToneCurve, FreeCurve>;

// The table holds L* from 0 to 125, and a* and b* with half of their precision: green of a wide display is
// beyond the range of integers in the PCS. The matrix behind the table restores both.
constexpr double rangeOfL = 1.25, rangeOfAb = 2.0;

/// The curve that maps the nodes of an axis to equal steps.
Curve curveOf(const std::vector<double>& nodes)
{
    constexpr int size = 5101; // whole percentages and whole 255ths are at samples
    std::vector<cmsUInt16Number> samples;
    std::size_t low = 0;
    for (int i = 0; i < size; ++i) {
        const double value = static_cast<double>(i) / (size - 1);
        while (low + 2 < nodes.size() && value >= nodes[low + 1])
            ++low;
        const double place = static_cast<double>(low) + (value - nodes[low]) / (nodes[low + 1] - nodes[low]);
        const double share = place / static_cast<double>(nodes.size() - 1);
        samples.push_back(static_cast<cmsUInt16Number>(std::lround(65535.0 * std::clamp(share, 0.0, 1.0))));
    }
    return Curve(cmsBuildTabulatedToneCurve16(nullptr, size, samples.data()));
}

/// A value of the model as the table holds it.
std::array<cmsUInt16Number, 3> encoded(const ChartModel::Values& value, const cmsCIEXYZ& mediaWhite)
{
    const cmsCIELab absolute{std::max(0.0, value[0]), value[1], value[2]};
    const cmsCIEXYZ* d50 = cmsD50_XYZ();
    cmsCIEXYZ xyz;
    cmsLab2XYZ(d50, &xyz, &absolute);
    xyz = {std::max(0.0, xyz.X * d50->X / mediaWhite.X), std::max(0.0, xyz.Y * d50->Y / mediaWhite.Y),
           std::max(0.0, xyz.Z * d50->Z / mediaWhite.Z)};
    cmsCIELab lab;
    cmsXYZ2Lab(d50, &lab, &xyz);
    const auto word = [](double share) {
        return static_cast<cmsUInt16Number>(std::lround(65535.0 * std::clamp(share, 0.0, 1.0)));
    };
    const auto ab = [&word](double v) { return word(((v + 128.0) / 255.0 + 0.5) / rangeOfAb); };
    return {word(lab.L / 100.0 / rangeOfL), ab(lab.a), ab(lab.b)};
}

cmsStage* tableOf(const ChartModel& model, const cmsCIEXYZ& mediaWhite)
{
    std::vector<cmsUInt32Number> counts;
    for (const std::vector<double>& line : model.nodes())
        counts.push_back(static_cast<cmsUInt32Number>(line.size()));
    std::vector<cmsUInt16Number> table;
    for (const ChartModel::Values& value : model.values()) {
        const auto words = encoded(value, mediaWhite);
        table.insert(table.end(), words.begin(), words.end());
    }
    return cmsStageAllocCLut16bitGranular(nullptr, counts.data(), static_cast<cmsUInt32Number>(counts.size()),
                                          3, table.data());
}

cmsStage* curvesOf(const ChartModel& model)
{
    std::vector<Curve> curves;
    std::vector<cmsToneCurve*> addresses;
    for (const std::vector<double>& line : model.nodes()) {
        curves.push_back(curveOf(line));
        if (!curves.back())
            return nullptr;
        addresses.push_back(curves.back().get());
    }
    return cmsStageAllocToneCurves(nullptr, static_cast<cmsUInt32Number>(addresses.size()), addresses.data());
}

Pipeline pipelineOf(const ChartModel& model, const cmsCIEXYZ& mediaWhite)
{
    constexpr double matrix[] = {rangeOfL, 0, 0, 0, rangeOfAb, 0, 0, 0, rangeOfAb};
    constexpr double offset[] = {0, -0.5, -0.5};
    Pipeline pipeline(cmsPipelineAlloc(nullptr, static_cast<cmsUInt32Number>(model.nodes().size()), 3));
    if (!pipeline)
        return {};
    bool done = true;
    for (cmsStage* stage :
         {curvesOf(model), tableOf(model, mediaWhite), cmsStageAllocToneCurves(nullptr, 3, nullptr),
          cmsStageAllocMatrix(nullptr, 3, 3, matrix, offset), cmsStageAllocToneCurves(nullptr, 3, nullptr)})
        done = stage && cmsPipelineInsertStage(pipeline.get(), cmsAT_END, stage) && done;
    return done ? std::move(pipeline) : Pipeline();
}

/// The adaptation from @p white to D50, with the linear Bradford transform.
std::array<double, 9> adaptationFrom(const std::array<double, 3>& white)
{
    const cmsCIEXYZ from{white[0] / white[1], 1.0, white[2] / white[1]};
    std::array<double, 9> matrix{};
    for (std::size_t column = 0; column < 3; ++column) {
        const cmsCIEXYZ unit{column == 0 ? 1.0 : 0.0, column == 1 ? 1.0 : 0.0, column == 2 ? 1.0 : 0.0};
        cmsCIEXYZ image;
        cmsAdaptToIlluminant(&image, &from, cmsD50_XYZ(), &unit);
        matrix[column] = image.X;
        matrix[column + 3] = image.Y;
        matrix[column + 6] = image.Z;
    }
    return matrix;
}

bool describe(cmsHPROFILE profile, const QString& title)
{
    const std::unique_ptr<cmsMLU, decltype(&cmsMLUfree)> text(cmsMLUalloc(nullptr, 1), cmsMLUfree);
    return text && cmsMLUsetASCII(text.get(), "en", "US", title.toLatin1().constData()) &&
           cmsWriteTag(profile, cmsSigProfileDescriptionTag, text.get());
}

QByteArray profileOf(const DeviceChart& chart, const ChartModel& model, const QString& title)
{
    const LittleCms::Profile profile(cmsCreateProfilePlaceholder(nullptr));
    const cmsCIEXYZ mediaWhite =
        chart.isDisplay ? *cmsD50_XYZ() : cmsCIEXYZ{chart.white[0], chart.white[1], chart.white[2]};
    const Pipeline pipeline = pipelineOf(model, mediaWhite);
    if (!profile || !pipeline)
        return {};
    cmsSetProfileVersion(profile.get(), 4.3);
    cmsSetDeviceClass(profile.get(), chart.isDisplay ? cmsSigDisplayClass : cmsSigOutputClass);
    cmsSetColorSpace(profile.get(), chart.channels == 3 ? cmsSigRgbData : cmsSigCmykData);
    cmsSetPCS(profile.get(), cmsSigLabData);
    const std::array<double, 9> adaptation = adaptationFrom(chart.white);
    cmsUInt32Number size = 0;
    if (!describe(profile.get(), title) ||
        !cmsWriteTag(profile.get(), cmsSigMediaWhitePointTag, &mediaWhite) ||
        (chart.isDisplay && !cmsWriteTag(profile.get(), cmsSigChromaticAdaptationTag, adaptation.data())) ||
        !cmsWriteTag(profile.get(), cmsSigAToB1Tag, pipeline.get()) ||
        !cmsLinkTag(profile.get(), cmsSigAToB0Tag, cmsSigAToB1Tag) ||
        !cmsLinkTag(profile.get(), cmsSigAToB2Tag, cmsSigAToB1Tag) ||
        !cmsSaveProfileToMem(profile.get(), nullptr, &size))
        return {};
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    return cmsSaveProfileToMem(profile.get(), bytes.data(), &size) ? bytes : QByteArray();
}

} // namespace

Result<ChartProfile> ChartProfile::of(const PointSet& set, const KVCompletionProtocolPtr& task)
{
    const Result<DeviceChart> chart = DeviceChart::of(set);
    if (!chart)
        return failure(chart.error());
    const ChartModel model(ChartModel::nodesOf(*chart), chart->patches, nullptr, task);
    ChartProfile result{{}, ChartFacts::of(*chart, model, task), std::make_shared<const DeviceChart>(*chart)};
    if (InputGate::isCancelled(task))
        return failure(KVProblemCode::Cancelled);
    result.bytes = profileOf(*chart, model, result.facts.title());
    if (result.bytes.isEmpty())
        return failure(KVProblemCode::OutOfMemory);
    return result;
}
