// SPDX-License-Identifier: Apache-2.0
#include "support/FakeVelmora.h"

#include <QtCore/QFile>
#include <QtCore/QScopeGuard>
#include <QtCore/QSharedData>

#include <algorithm>
#include <bit>
#include <mutex>

namespace {

using fakevelmora::Gamut;
using fakevelmora::InitCall;
using fakevelmora::Node;

struct Record
{
    QList<InitCall> inits;
    QStringList profileCalls;
    int open = 0;
    QList<QHash<QString, QVariant>> deserialized;
    QList<QList<float>> planes;
    QList<QList<float>> insidePoints;
    QStringList comparisons;
    QHash<int, Gamut> saved;

    std::function<std::optional<Gamut>(const InitCall&)> init;
    std::function<Gamut(const QHash<QString, QVariant>&)> deserialize;
    std::function<QList<float>(const QList<float>&)> lab2Rgb;
    std::function<QList<QList<QList<float>>>(const QList<QList<Node>>&)> ring;
    std::function<bool(const QList<float>&)> isInside;
    std::array<float, 18> comparison{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18};
};

std::mutex mutex;

Record& record()
{
    static Record instance;
    return instance;
}

KVProfile* open(const QByteArray& bytes)
{
    if (!bytes.startsWith("profile"))
        return nullptr;
    ++record().open;
    return new KVProfile{bytes};
}

/// A copy of the current behaviour, so that it can run without the lock.
template <typename Member>
auto behaviour(Member member)
{
    const std::lock_guard lock(mutex);
    return record().*member;
}

} // namespace

// --- Control --------------------------------------------------------------------------------------

KVHull::Node fakevelmora::node(const QList<float>& lab)
{
    return Node{{}, lab};
}

fakevelmora::Gamut fakevelmora::tetrahedron(const QString& name, float volume)
{
    const Node black = node({0.0f, 0.0f, 0.0f});
    const Node red = node({50.0f, 60.0f, 10.0f});
    const Node blue = node({40.0f, -20.0f, -70.0f});
    const Node white = node({100.0f, 5.0f, 8.0f});
    Gamut gamut;
    gamut.name = name;
    gamut.faces = {{black, red, blue}, {black, white, red}, {black, blue, white}, {red, white, blue}};
    gamut.outline = {{black, red}, {red, blue}, {blue, black}};
    gamut.reference = {2.0f, 1.0f, -1.0f};
    gamut.primaries = {{{20.0f, 30.0f, 5.0f}, {50.0f, 60.0f, 10.0f}}, {{40.0f, -20.0f, -70.0f}}};
    gamut.volume = volume;
    return gamut;
}

void fakevelmora::InitCall::waitForCancel() const
{
    while (!isCancelled())
        QThread::yieldCurrentThread();
}

void fakevelmora::reset()
{
    const std::lock_guard lock(mutex);
    record() = Record();
}

void fakevelmora::onInit(std::function<std::optional<Gamut>(const InitCall&)> f)
{
    const std::lock_guard lock(mutex);
    record().init = std::move(f);
}

void fakevelmora::onDeserialize(std::function<Gamut(const QHash<QString, QVariant>&)> f)
{
    const std::lock_guard lock(mutex);
    record().deserialize = std::move(f);
}

void fakevelmora::onLab2Rgb(std::function<QList<float>(const QList<float>&)> f)
{
    const std::lock_guard lock(mutex);
    record().lab2Rgb = std::move(f);
}

QList<float> fakevelmora::defaultRgb(const QList<float>& lab)
{
    QList<float> rgb;
    for (qsizetype i = 0; i < lab.size(); ++i)
        rgb.append(i == 0 ? lab[i] * 2.0f : lab[i] + 128.0f);
    return rgb;
}

void fakevelmora::onRing(std::function<QList<QList<QList<float>>>(const QList<QList<Node>>&)> f)
{
    const std::lock_guard lock(mutex);
    record().ring = std::move(f);
}

void fakevelmora::onIsInside(std::function<bool(const QList<float>&)> f)
{
    const std::lock_guard lock(mutex);
    record().isInside = std::move(f);
}

void fakevelmora::setComparison(const std::array<float, 18>& floats)
{
    const std::lock_guard lock(mutex);
    record().comparison = floats;
}

QList<InitCall> fakevelmora::initCalls()
{
    return behaviour(&Record::inits);
}

QStringList fakevelmora::profileCalls()
{
    return behaviour(&Record::profileCalls);
}

int fakevelmora::openProfiles()
{
    return behaviour(&Record::open);
}

QList<QHash<QString, QVariant>> fakevelmora::deserialized()
{
    return behaviour(&Record::deserialized);
}

QList<QList<float>> fakevelmora::planes()
{
    return behaviour(&Record::planes);
}

QList<QList<float>> fakevelmora::insidePoints()
{
    return behaviour(&Record::insidePoints);
}

QStringList fakevelmora::comparisons()
{
    return behaviour(&Record::comparisons);
}

// --- The engine -----------------------------------------------------------------------------------

KVProfile* KVProfileCreateWithPath(const char* path)
{
    const std::lock_guard lock(mutex);
    record().profileCalls.append(QLatin1String("path:") + QString::fromUtf8(path));
    QFile file(QString::fromUtf8(path));
    return file.open(QIODevice::ReadOnly) ? open(file.readAll()) : nullptr;
}

KVProfile* KVProfileCreateWithData(const void* data, int size)
{
    const std::lock_guard lock(mutex);
    record().profileCalls.append(QLatin1String("data:") + QString::number(size));
    return open(QByteArray(static_cast<const char*>(data), size));
}

std::optional<KVProblem> KVProfileProblem()
{
    return KVProblem{KVProblemCode::NotAProfile, {}, {}}; // the only problem that this engine reports
}

void KVProfileRelease(KVProfile* profile)
{
    if (!profile)
        return;
    const std::lock_guard lock(mutex);
    record().profileCalls.append(QLatin1String("release:") + QString::fromUtf8(profile->bytes));
    --record().open;
    delete profile;
}

namespace {

/// The faces as an indexed mesh. Missing components and missing nodes are 0.
KVGamut::Mesh meshOf(const Gamut& gamut)
{
    KVGamut::Mesh mesh;
    const auto vertexAt = [&mesh](const QList<float>& lab) {
        const KVGamut::LabPoint p{lab.value(0), lab.value(1), lab.value(2)};
        const auto at = std::find(mesh.lab.begin(), mesh.lab.end(), p);
        const auto index = static_cast<int>(at - mesh.lab.begin());
        if (at == mesh.lab.end())
            mesh.lab.push_back(p);
        return index;
    };
    for (const auto& face : gamut.faces)
        mesh.triangles.push_back(
            {vertexAt(face.value(0).lab), vertexAt(face.value(1).lab), vertexAt(face.value(2).lab)});
    return mesh;
}

} // namespace

class KVGamut::GamutData : public QSharedData
{
public:
    explicit GamutData(Gamut g) : gamut(std::move(g)), mesh(meshOf(gamut)) {}

    const Gamut gamut;
    const Mesh mesh;
};

namespace KVGamut {

/// For init() with settings, on this thread.
static thread_local Adaptation requestedAdaptation = Adaptation::Full;

GamutObject::GamutObject() = default;
GamutObject::GamutObject(const GamutObject&) = default;
GamutObject::GamutObject(GamutObject&&) noexcept = default;
GamutObject& GamutObject::operator=(const GamutObject&) = default;
GamutObject& GamutObject::operator=(GamutObject&&) noexcept = default;
GamutObject::~GamutObject() = default;

bool GamutObject::init(KVProfilePtr profile, KVVMRenderType intent, bool blackPointCompensation,
                       bool withDecoration, float maxEdge, int gridPoints, int refinements,
                       KVCompletionProtocolPtr* protocol)
{
    InitCall call;
    call.profile = profile ? profile->bytes : QByteArray();
    call.intent = intent;
    call.blackPointCompensation = blackPointCompensation;
    call.withDecoration = withDecoration;
    call.maxEdge = maxEdge;
    call.gridPoints = gridPoints;
    call.adaptation = requestedAdaptation;
    call.refinements = refinements;
    call.hasProtocolPointer = protocol != nullptr;
    if (protocol)
        call.protocol = *protocol;
    if (call.protocol)
        call.taskName = call.protocol->name();
    call.thread = QThread::currentThread();
    {
        const std::lock_guard lock(mutex);
        InitCall kept = call;
        kept.protocol.reset(); // a record must not keep a finished computation listed
        record().inits.append(kept);
    }
    const auto f = behaviour(&Record::init);
    const std::optional<Gamut> gamut =
        f ? f(call) : fakevelmora::tetrahedron(QString::fromUtf8(call.profile));
    d = gamut ? new GamutData(*gamut) : nullptr;
    return gamut.has_value();
}

bool GamutObject::init(KVProfilePtr profile, const Settings& settings, KVCompletionProtocolPtr* protocol)
{
    requestedAdaptation = settings.adaptation;
    const auto usual = qScopeGuard([] { requestedAdaptation = Adaptation::Full; });
    return init(profile, settings.intent, settings.blackPointCompensation, true, Settings::defaultMaxEdge,
                settings.gridPoints, Settings::defaultMaxRefinements, protocol);
}

QHash<QString, QVariant> GamutObject::serialize() const
{
    if (!d)
        return {};
    const std::lock_guard lock(mutex);
    const int key = static_cast<int>(record().saved.size()) + 1;
    record().saved.insert(key, d->gamut);
    return {{QStringLiteral("Gamut"), QStringLiteral("saved")}, {QStringLiteral("Number"), key}};
}

void GamutObject::deserialize(const QHash<QString, QVariant>& hash)
{
    deserialize(hash, nullptr);
}

void GamutObject::deserialize(const QHash<QString, QVariant>& hash, KVCompletionProtocolPtr*)
{
    {
        const std::lock_guard lock(mutex);
        record().deserialized.append(hash);
    }
    if (const auto f = behaviour(&Record::deserialize)) {
        d = new GamutData(f(hash));
        return;
    }
    const std::lock_guard lock(mutex);
    const auto saved = record().saved.constFind(hash.value(QStringLiteral("Number")).toInt());
    d = saved == record().saved.constEnd() ? nullptr : new GamutData(*saved);
}

const Mesh& GamutObject::mesh() const
{
    static const Mesh empty;
    return d ? d->mesh : empty;
}

QList<QList<KVHull::Node>> GamutObject::faces() const
{
    return d ? d->gamut.faces : QList<QList<KVHull::Node>>();
}

int GamutObject::faceCount() const
{
    return static_cast<int>(faces().size());
}

float GamutObject::volume() const
{
    return d ? d->gamut.volume : 0.0f;
}

QList<QList<KVHull::Node>> GamutObject::outline() const
{
    return d ? d->gamut.outline : QList<QList<KVHull::Node>>();
}

QList<float> GamutObject::referenceLab() const
{
    return d ? d->gamut.reference : QList<float>();
}

QList<QList<QList<float>>> GamutObject::primaries() const
{
    return d ? d->gamut.primaries : QList<QList<QList<float>>>();
}

bool GamutObject::isInside(const float* lab) const
{
    const QList<float> point{lab[0], lab[1], lab[2]};
    {
        const std::lock_guard lock(mutex);
        record().insidePoints.append(point);
    }
    const auto f = behaviour(&Record::isInside);
    return f && f(point);
}

Comparison GamutObject::compare(const GamutObject& other) const
{
    const std::lock_guard lock(mutex);
    record().comparisons.append((d ? d->gamut.name : QString()) + QLatin1Char('/') +
                                (other.d ? other.d->gamut.name : QString()));
    return std::bit_cast<Comparison>(record().comparison);
}

std::optional<KVProblem> GamutObject::problem() const
{
    if (d)
        return {};
    return KVProblem{KVProblemCode::NoVolume, {}, {}};
}

std::vector<RingPiece> computeRing(const float* plane, const Mesh& mesh)
{
    QList<QList<KVHull::Node>> faces;
    for (const Mesh::Triangle& t : mesh.triangles) {
        QList<KVHull::Node> face;
        for (int v : t) {
            const LabPoint& p = mesh.lab[static_cast<std::size_t>(v)];
            face.append(fakevelmora::node({p.L, p.a, p.b}));
        }
        faces.append(face);
    }
    std::vector<RingPiece> pieces;
    const auto pointOf = [](const QList<float>& lab) {
        return LabPoint{lab.value(0), lab.value(1), lab.value(2)};
    };
    for (const auto& piece : computeRing(plane, faces))
        pieces.push_back({pointOf(piece.value(0)), pointOf(piece.value(1))});
    return pieces;
}

std::vector<SectionLoop> sectionLoops(const float*, const Mesh&)
{
    return {};
}

QList<QList<QList<float>>> computeRing(const float* plane, const QList<QList<KVHull::Node>>& faces)
{
    {
        const std::lock_guard lock(mutex);
        record().planes.append({plane[0], plane[1], plane[2], plane[3]});
    }
    const auto f = behaviour(&Record::ring);
    return f ? f(faces) : QList<QList<QList<float>>>();
}

} // namespace KVGamut

QList<float> KVColorConversionHelper::KVHLab2RGB(const QList<float>& lab)
{
    const auto f = behaviour(&Record::lab2Rgb);
    return f ? f(lab) : fakevelmora::defaultRgb(lab);
}

void KVColorConversionHelper::KVHLab2RGB(std::span<const KVGamut::LabPoint> lab,
                                         std::span<std::array<float, 3>> rgb)
{
    for (std::size_t i = 0; i < std::min(lab.size(), rgb.size()); ++i) {
        const QList<float> color = KVHLab2RGB({lab[i].L, lab[i].a, lab[i].b});
        for (std::size_t k = 0; k < 3; ++k)
            rgb[i][k] = color.value(static_cast<qsizetype>(k));
    }
}
