// SPDX-License-Identifier: Apache-2.0
#include "Comparing.h"
#include "GamutBody.h"
#include "GamutData.h"
#include "GivenGamut.h"
#include "Serialize.h"
#include <engine/base/ListOf.h>
#include <engine/base/VectorRegisters.h>
#include <engine/surface/GamutBuilder.h>

#include <QtCore/QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <optional>
#include <utility>

namespace KVGamut {

GamutObject::GamutObject() = default;
GamutObject::GamutObject(const GamutObject& other) = default;
GamutObject::GamutObject(GamutObject&& other) noexcept = default;
GamutObject& GamutObject::operator=(const GamutObject& other) = default;
GamutObject& GamutObject::operator=(GamutObject&& other) noexcept = default;
GamutObject::~GamutObject() = default;

namespace {

using SharedData = QSharedDataPointer<const GamutData>;

velmora::Result<SharedData> computed(const KVProfilePtr& profile, const Settings& settings,
                                     const velmora::GamutRequest& request, const velmora::Task& task)
{
    if (!profile)
        return velmora::failure(KVProblemCode::NoProfile);
    QElapsedTimer clock;
    clock.start();
    const auto transform = velmora::DeviceTransform::create(profile->bytes, settings, task);
    if (!transform)
        return velmora::failure(transform);
    auto record = velmora::buildGamut(**transform, request, task);
    if (!record)
        return velmora::failure(record);
    record->intent = settings.intent;
    record->blackPointCompensation = settings.blackPointCompensation;
    record->conversion = (*transform)->conversion();
    record->seconds = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
    const SharedData data(new GamutData(std::move(*record), task));
    data->outline(task);
    if (task.isCancelled())
        return velmora::failure(KVProblemCode::Cancelled);
    task.setProgress(1.0);
    return data;
}

// Containers and libraries report exhausted memory by an exception; the interface reports it as a problem.
template <typename Make>
velmora::Result<SharedData> orOutOfMemory(const Make& make)
{
    try {
        return make();
    } catch (const std::bad_alloc&) {
        return velmora::failure(KVProblemCode::OutOfMemory);
    }
}

velmora::Result<SharedData> computedOrProblem(const KVProfilePtr& profile, const Settings& settings,
                                              const velmora::GamutRequest& request,
                                              KVCompletionProtocolPtr* protocol)
{
    const velmora::Task task(protocol ? *protocol : KVCompletionProtocolPtr());
    return orOutOfMemory([&] { return computed(profile, settings, request, task); });
}

std::optional<KVProblem> problemOf(const velmora::Result<SharedData>& data)
{
    return data ? std::nullopt : std::optional(data.error());
}

} // namespace

// The profile is copied: the caller may release its own handle while the surface is computed.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool GamutObject::init(KVProfilePtr profile, KVVMRenderType intent, bool blackPointCompensation,
                       bool withDecoration, float maxEdge, int gridPoints, int refinements,
                       KVCompletionProtocolPtr* protocol)
{
    constexpr int maxRefinements = 4;
    const velmora::GamutRequest request{
        .withDecoration = withDecoration,
        // NaN disables refinement.
        .maxEdge = std::isnan(maxEdge) ? std::numeric_limits<double>::infinity() : double(maxEdge),
        .gridPoints = gridPoints,
        .refinements = std::clamp(refinements, 0, maxRefinements)};
    const auto data =
        computedOrProblem(profile, {intent, blackPointCompensation, gridPoints}, request, protocol);
    d = data.value_or(SharedData());
    m_problem = problemOf(data);
    return data.has_value();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool GamutObject::init(KVProfilePtr profile, const Settings& settings, KVCompletionProtocolPtr* protocol)
{
    return init(std::move(profile), settings, Construction::Accurate, protocol);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool GamutObject::init(KVProfilePtr profile, const Settings& settings, Construction construction,
                       KVCompletionProtocolPtr* protocol)
{
    const bool isAccurate = construction == Construction::Accurate;
    const velmora::GamutRequest request{.gridPoints = settings.gridPoints,
                                        .refinements = isAccurate ? Settings::defaultMaxRefinements : 0,
                                        .construction = construction};
    const auto data = computedOrProblem(profile, settings, request, protocol);
    d = data.value_or(SharedData());
    m_problem = problemOf(data);
    return data.has_value();
}

bool GamutObject::initWithSurface(const Mesh& surface, double volumeUncertainty,
                                  KVCompletionProtocolPtr* protocol)
{
    const velmora::Task task(protocol ? *protocol : KVCompletionProtocolPtr());
    // NaN is no estimate
    const double uncertainty = volumeUncertainty > 0.0 ? volumeUncertainty : 0.0;
    const auto data = orOutOfMemory([&] { return velmora::surfaceData(surface, uncertainty, task); });
    d = data.value_or(SharedData());
    m_problem = problemOf(data);
    return data.has_value();
}

bool GamutObject::initWithColors(std::span<const LabPoint> colors, double colorUncertainty,
                                 KVCompletionProtocolPtr* protocol)
{
    const velmora::Task task(protocol ? *protocol : KVCompletionProtocolPtr());
    const double uncertainty = colorUncertainty > 0.0 ? colorUncertainty : 0.0;
    const auto data = orOutOfMemory([&] { return velmora::hullData(colors, uncertainty, task); });
    d = data.value_or(SharedData());
    m_problem = problemOf(data);
    return data.has_value();
}

QHash<QString, QVariant> GamutObject::serialize() const
{
    return d ? velmora::serialized(d.constData()->record) : QHash<QString, QVariant>();
}

void GamutObject::deserialize(const QHash<QString, QVariant>& hash)
{
    deserialize(hash, nullptr);
}

void GamutObject::deserialize(const QHash<QString, QVariant>& hash, KVCompletionProtocolPtr* protocol)
{
    const velmora::Task task(protocol ? *protocol : KVCompletionProtocolPtr());
    const bool withOutline = protocol && *protocol; // outline() cannot be cancelled
    const auto data = orOutOfMemory([&]() -> velmora::Result<SharedData> {
        auto record = velmora::deserialized(hash, task);
        if (!record)
            return velmora::failure(record);
        SharedData restored(new GamutData(std::move(*record), task));
        if (withOutline)
            restored.constData()->outline(task);
        if (task.isCancelled())
            return velmora::failure(KVProblemCode::Cancelled);
        return restored;
    });
    d = data.value_or(SharedData());
    m_problem = problemOf(data);
}

const Mesh& GamutObject::mesh() const
{
    static const Mesh empty;
    return d ? d.constData()->record.mesh : empty;
}

QList<QList<KVHull::Node>> GamutObject::faces() const
{
    return d ? d.constData()->faces() : QList<QList<KVHull::Node>>();
}

int GamutObject::faceCount() const
{
    return d ? static_cast<int>(d.constData()->record.mesh.triangles.size()) : 0;
}

float GamutObject::volume() const
{
    return d ? static_cast<float>(d.constData()->record.volume) : 0.0f;
}

QList<QList<KVHull::Node>> GamutObject::outline() const
{
    return d ? d.constData()->outline() : QList<QList<KVHull::Node>>();
}

QList<float> GamutObject::referenceLab() const
{
    if (!d)
        return {};
    const LabPoint& origin = d.constData()->record.origin;
    return velmora::listOf({origin.L, origin.a, origin.b});
}

QList<QList<QList<float>>> GamutObject::primaries() const
{
    QList<QList<QList<float>>> groups;
    if (!d)
        return groups;
    for (const velmora::Ramp& ramp : d.constData()->record.primaries) {
        QList<QList<float>> group;
        for (const LabPoint& p : ramp)
            group.append(velmora::listOf({p.L, p.a, p.b}));
        groups.append(group);
    }
    return groups;
}

LabPoint GamutObject::whitePoint() const
{
    return d ? d.constData()->record.white : LabPoint();
}

LabPoint GamutObject::blackPoint() const
{
    return d ? d.constData()->record.black : LabPoint();
}

bool GamutObject::isInside(const float* lab) const
{
    return d && lab && d.constData()->index().isInside({lab[0], lab[1], lab[2]});
}

namespace {

Nearest noNearest()
{
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    return {std::numeric_limits<float>::infinity(), {nan, nan, nan}};
}

// The colour, or nullopt if it is not one.
std::optional<velmora::Vec3> colourOf(const float* lab)
{
    if (!lab || !velmora::isFinite({lab[0], lab[1], lab[2]}))
        return {};
    return velmora::Vec3{lab[0], lab[1], lab[2]};
}

Nearest answer(const GamutData& data, velmora::Vec3 x, velmora::Vec3 point, double distance)
{
    const auto size = static_cast<float>(distance);
    return {data.index().isInside(x) ? -size : size,
            {static_cast<float>(point.L), static_cast<float>(point.a), static_cast<float>(point.b)}};
}

Nearest nearestByCiede2000In(const GamutData& data, velmora::Vec3 x)
{
    velmora::clearUpperVectorRegisters();
    const velmora::Vec3 p = data.lchIndex().nearestByCiede2000(x, data.nearestIndex().nearest(x));
    return answer(data, x, p, velmora::length(velmora::ciede2000Residual(x, p)));
}

} // namespace

Nearest GamutObject::nearest(const float* lab) const
{
    const auto x = colourOf(lab);
    if (!d || !x)
        return noNearest();
    const velmora::Vec3 p = d.constData()->nearestIndex().nearest(*x);
    return answer(*d.constData(), *x, p, velmora::length(p - *x));
}

Nearest GamutObject::nearestByCiede2000(const float* lab) const
{
    const auto x = colourOf(lab);
    return d && x ? nearestByCiede2000In(*d.constData(), *x) : noNearest();
}

std::vector<Nearest> GamutObject::nearestByCiede2000(std::span<const LabPoint> lab,
                                                     KVCompletionProtocolPtr* protocol) const
{
    const velmora::Task task(protocol ? *protocol : KVCompletionProtocolPtr());
    std::vector<Nearest> all;
    all.reserve(lab.size());
    constexpr std::size_t stepsBetweenReports = 64;
    for (std::size_t i = 0; i < lab.size(); ++i) {
        if (task.isCancelled())
            return {};
        all.push_back(nearestByCiede2000(&lab[i].L));
        if (i % stepsBetweenReports == 0)
            task.setProgress(static_cast<double>(i) / static_cast<double>(lab.size()));
    }
    task.setProgress(1.0);
    return all;
}

Nearest GamutObject::nearestAtHue(const float* lab) const
{
    const auto x = colourOf(lab);
    const auto p = d && x ? d.constData()->lchIndex().nearestAtHue(*x) : std::nullopt;
    return p ? answer(*d.constData(), *x, *p, velmora::length(*p - *x)) : noNearest();
}

double ciede2000(const LabPoint& first, const LabPoint& second)
{
    return velmora::length(velmora::ciede2000Residual(velmora::toVec3(first), velmora::toVec3(second)));
}

Comparison GamutObject::compare(const GamutObject& other) const
{
    Comparison c = velmora::compared(d.constData(), other.d.constData(), {}).values;
    c.whiteFirst = whitePoint();
    c.blackFirst = blackPoint();
    c.whiteSecond = other.whitePoint();
    c.blackSecond = other.blackPoint();
    return c;
}

ComparisonReport GamutObject::compareWithUncertainty(const GamutObject& other,
                                                     KVCompletionProtocolPtr* protocol) const
{
    const velmora::Task task(protocol ? *protocol : KVCompletionProtocolPtr());
    ComparisonReport report;
    try {
        report = velmora::compared(d.constData(), other.d.constData(), task);
    } catch (const std::bad_alloc&) {
        report.problem = KVProblem{KVProblemCode::OutOfMemory, {}, {}};
    }
    report.values.whiteFirst = whitePoint();
    report.values.blackFirst = blackPoint();
    report.values.whiteSecond = other.whitePoint();
    report.values.blackSecond = other.blackPoint();
    return report;
}

GamutObject GamutObject::body(const GamutObject& other, Body body, KVCompletionProtocolPtr* protocol) const
{
    const velmora::Task task(protocol ? *protocol : KVCompletionProtocolPtr());
    GamutObject result;
    if (!d)
        return result;
    const auto data = orOutOfMemory([&] { return velmora::bodyData(*d, other.d.constData(), body, task); });
    result.d = data.value_or(SharedData());
    result.m_problem = problemOf(data);
    return result;
}

Method GamutObject::method() const
{
    return d ? d.constData()->record.method : Method::None;
}

std::optional<KVProblem> GamutObject::problem() const
{
    return m_problem;
}

Report GamutObject::report() const
{
    Report r;
    r.problem = m_problem;
    if (!d)
        return r;
    const velmora::GamutRecord& record = d.constData()->record;
    r.method = record.method;
    r.intent = record.intent;
    r.blackPointCompensation = record.blackPointCompensation;
    r.channels = record.mesh.channels;
    r.gridPoints = record.gridPoints;
    r.faceCount = faceCount();
    r.volume = record.volume;
    r.surfaceVolume = d.constData()->surfaceVolume;
    r.volumeUncertainty = record.volumeUncertainty;
    r.foldShare = record.foldShare;
    r.white = record.white;
    r.black = record.black;
    r.conversion = record.conversion;
    r.seconds = record.seconds;
    return r;
}

} // namespace KVGamut
