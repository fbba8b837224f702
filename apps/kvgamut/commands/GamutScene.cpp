// SPDX-License-Identifier: Apache-2.0
#include "GamutScene.h"

#include "commands/process/Say.h"
#include "commands/process/Steps.h"
#include "model/pictures/GamutLines.h"
#include "model/pictures/PictureFile.h"
#include "model/reports/GamutWords.h"
#include "model/text/GamutTitles.h"
#include "model/text/SafeText.h"

#include <QtCore/QEventLoop>
#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace {

constexpr float besideBodyOpacity = 0.15f; // of the gamuts that a body was made of
constexpr float lineWidth = 0.6f;          // of gamuts that are drawn as lines

QString volumeText(double volume)
{
    const QLocale english(QLocale::English, QLocale::UnitedStates); // with a comma after each three digits
    const QString unit = QString::fromUtf8(" \xCE\x94"
                                           "E\xC2\xB3");
    return english.toString(qlonglong(std::llround(volume))) + unit;
}

} // namespace

GamutScene::GamutScene(KVGamutView& view, const ProfileOptions& profiles, const LookOptions& look,
                       const AnnotationOptions& annotations)
    : m_view(view), m_profiles(profiles), m_look(look), m_annotations(annotations)
{
    m_look.applyTo(m_view);
}

void GamutScene::load(const PointOptions& reading)
{
    m_reading = reading;
    open();
    applyLooks();
    QEventLoop loop;
    const auto ended = [this, &loop] {
        if (count(Waiting) == 0)
            loop.quit();
    };
    for (qsizetype i = 0; i < m_gamuts.size(); ++i)
        if (m_gamuts[i].state == Waiting)
            start(i, ended);
    if (count(Waiting) > 0)
        loop.exec();
}

void GamutScene::open()
{
    for (const QString& name : m_profiles.profiles) {
        QElapsedTimer clock;
        clock.start();
        const Result<GamutSource> source = GamutSource::open(name, {}, m_reading);
        Steps::read(name, source, clock);
        // numbered, since the same profile may be named twice
        const QString id = QStringLiteral("%1 %2").arg(m_gamuts.size() + 1).arg(name);
        m_gamuts.append({id, source, source ? Waiting : Failed});
        if (!source)
            say(source.error());
    }
}

void GamutScene::start(qsizetype position, const std::function<void()>& ended)
{
    const Gamut& gamut = m_gamuts[position];
    const GamutSource& source = *gamut.source;
    const auto done = [this, position, ended](const std::optional<KVProblem>& problem) {
        m_gamuts[position].state = problem ? Failed : Shown;
        if (problem) {
            say(Problem(*problem).about(m_gamuts[position].source->name()));
            applyLooks(); // another gamut may now be the first
        } else {
            const Gamut& shown = m_gamuts[position];
            Steps::computed(shown.source->name(), m_view.gamut(shown.id).report());
        }
        ended();
    };
    if (!source.profile())
        m_view.show(gamut.id, source.givenGamut(), &m_context, done);
    else
        m_view.load(gamut.id,
                    KVLoadRequest::fromProfile(source.profile(), source.settings(m_profiles.settings)),
                    &m_context, done);
}

int GamutScene::count(State state) const
{
    return static_cast<int>(std::count_if(m_gamuts.cbegin(), m_gamuts.cend(),
                                          [state](const Gamut& gamut) { return gamut.state == state; }));
}

KVGamut::GamutObject GamutScene::firstGamut() const
{
    for (const Gamut& gamut : m_gamuts)
        if (gamut.state == Shown)
            return m_view.gamut(gamut.id);
    return {};
}

QStringList GamutScene::profileLines() const
{
    QStringList lines;
    for (const Gamut& gamut : m_gamuts)
        if (gamut.state == Shown)
            lines.append(
                PictureNote::profileLine(SafeText::shown(gamut.source->name()), gamut.source->hash()));
    return lines;
}

void GamutScene::applyLooks()
{
    bool isFirst = true;
    for (qsizetype i = 0; i < m_gamuts.size(); ++i) {
        if (m_gamuts[i].state == Failed)
            continue;
        m_view.setLook(m_gamuts[i].id, m_look.lookOf(i, isFirst));
        isFirst = false;
    }
}

// --- What explains the picture --------------------------------------------------------------------

QList<GamutScene::Explained> GamutScene::explained() const
{
    const QStringList titles = gamutTitles(m_profiles.profiles);
    QList<Explained> all;
    QList<KVGamut::GamutObject> gamuts;
    for (qsizetype i = 0; i < m_gamuts.size(); ++i) {
        if (m_gamuts[i].state != Shown)
            continue;
        gamuts.append(m_view.gamut(m_gamuts[i].id));
        const QColor chosen = m_look.colors.value(i);
        all.append({i, gamuts.last(), titles.value(i),
                    chosen.isValid() ? chosen : m_annotations.style->key(all.size()), std::nullopt});
    }
    const bool areLines = m_annotations.lines;
    const bool areFaint = m_annotations.part.body.has_value();
    if (!areLines && !areFaint && (!m_look.opacities.isEmpty() || !m_look.modes.isEmpty()))
        return all;
    const QList<BodyLook> looks = bodyLooks(gamuts);
    for (qsizetype i = 0; i < all.size(); ++i)
        all[i].look = areLines ? BodyLook::Lines : areFaint ? BodyLook::Translucent : looks[i];
    return all;
}

void GamutScene::explain()
{
    KVAnnotations annotations = m_annotations.annotations();
    annotations.scales = annotations.scales && m_look.state.axes;
    const QList<Explained> all = explained();
    for (const Explained& gamut : all) {
        showBody(gamut);
        if (m_annotations.legend)
            annotations.legend.append(entryOf(gamut));
    }
    m_view.setAnnotations(annotations);
}

void GamutScene::showBody(const Explained& gamut)
{
    const QString& id = m_gamuts[gamut.position].id;
    KVGamutLook look = m_view.look(id);
    if (m_annotations.legend)
        look.outlineColor = gamut.key;
    if (gamut.look) {
        const float translucent =
            m_annotations.part.body ? besideBodyOpacity : KVGamutLook::translucentOpacity;
        look.opacity = gamut.look == BodyLook::Translucent ? translucent : m_look.look.opacity;
        look.surface = look.surface && gamut.look != BodyLook::Lines;
        static const QMap<BodyLook, QString> words{{BodyLook::Solid, QStringLiteral("solid")},
                                                   {BodyLook::Translucent, QStringLiteral("translucent")},
                                                   {BodyLook::Lines, QStringLiteral("lines")}};
        tell(gamut.title + QStringLiteral(" is drawn as: ") + words.value(*gamut.look));
    }
    m_view.setLook(id, look);
    if (gamut.look != BodyLook::Lines || !m_look.look.surface)
        return;
    QList<std::pair<KVGamut3DViewer::ColoredPosition, KVGamut3DViewer::ColoredPosition>> lines;
    const QList<LabSegment> pieces = gamutLines(gamut.gamut.mesh());
    // Every other piece first: consecutive pieces that touch are joined, with spikes where they turn sharply.
    for (const qsizetype first : {0, 1})
        for (qsizetype i = first; i < pieces.size(); i += 2) {
            const auto& [from, to] = pieces[i];
            if (m_look.state.clipping && std::max(from.L, to.L) > *m_look.state.clipping)
                continue;
            lines.append({{gamut.key, {from.L, from.a, from.b}}, {gamut.key, {to.L, to.a, to.b}}});
        }
    m_view.viewer()->addSegmentSet(id, lines);
    m_view.viewer()->setSegmentSetWidth(id, lineWidth); // of an existing set, when it is filled again
    m_view.viewer()->addSegmentSet(id, lines);
}

KVLegendEntry GamutScene::entryOf(const Explained& gamut) const
{
    const KVGamut::Report report = gamut.gamut.report();
    return {m_gamuts[gamut.position].id, gamut.title,
            (GamutWords::hasIntent(report) ? GamutWords::intent(report) : GamutWords::method(report.method)) +
                QStringLiteral(", ") + volumeText(report.volume),
            gamut.key};
}

bool GamutScene::showPart()
{
    const BodyOptions& options = m_annotations.part;
    if (!options.body)
        return true;
    const QList<Explained> all = explained();
    if (all.size() < 2)
        return false; // it is said which one is missing
    const QStringList titles{all[0].title, all[1].title};
    const auto part = options.of(all[0].gamut, all[1].gamut, titles);
    if (!part) {
        say(part.error());
        return false;
    }
    const QString id = QStringLiteral("body"); // those of gamuts begin with a number
    const QColor key = m_annotations.style->key(all.size());
    KVGamutLook look = m_look.lookOf(0, true);
    look.outlineColor = key;
    m_view.setLook(id, look);
    if (!showAndWait(id, *part, {}, {}))
        return false;
    if (m_annotations.legend) {
        KVAnnotations annotations = m_view.annotations();
        annotations.legend.append({id, options.titleOf(titles), volumeText(part->report().volume), key});
        m_view.setAnnotations(annotations);
    }
    return true;
}

// --- Where colours are lost -----------------------------------------------------------------------

std::optional<GamutScene::PointLoss> GamutScene::showLoss(const std::vector<KVGamut::LabPoint>& points)
{
    const LossOptions& options = m_annotations.loss;
    const bool withSurfaces = !options.other.isEmpty();
    if (!withSurfaces && points.empty())
        return PointLoss();
    const auto other =
        withSurfaces
            ? GamutSource::open(options.other, {}, m_reading).and_then([this](const GamutSource& source) {
                  return source.compute(m_profiles.settings);
              })
            : Result<KVGamut::GamutObject>(firstGamut());
    if (!other) {
        say(other.error());
        return {};
    }
    PointLoss ofPoints{lossOf(points, *other, options.metric), {}};
    std::vector<float> all = ofPoints.losses;
    QMap<QString, std::vector<float>> losses;
    for (const Gamut& gamut : m_gamuts) {
        if (gamut.state != Shown || !withSurfaces)
            continue;
        const auto loss = lossOnSurface(m_view.gamut(gamut.id).mesh(), *other, options.metric);
        all.insert(all.end(), loss.begin(), loss.end());
        losses.insert(gamut.id, loss);
    }
    ofPoints.scale = options.scaleOf(all);
    if (!showLosses(losses, ofPoints.scale))
        return {};
    if (m_annotations.legend)
        addScaleBar(ofPoints.scale);
    return ofPoints;
}

bool GamutScene::showLosses(const QMap<QString, std::vector<float>>& losses, const LossScale& scale)
{
    for (auto loss = losses.cbegin(); loss != losses.cend(); ++loss)
        if (!showColored(loss.key(), *loss, scale))
            return false;
    return true;
}

bool GamutScene::showColored(const QString& id, const std::vector<float>& values, const LossScale& scale)
{
    // High enough for the colours to be compared with those of the bar, low enough to show the shape.
    constexpr float ambient = 0.85f;
    KVGamutLook look = m_view.look(id);
    if (look.ambientStrength == KVGamutLook().ambientStrength)
        look.ambientStrength = ambient;
    const bool isShown = showAndWait(id, m_view.gamut(id), values, scale.stops());
    m_view.setLook(id, look);
    return isShown;
}

/// Prints why it cannot be shown. @return whether it is shown
bool GamutScene::showAndWait(const QString& id, const KVGamut::GamutObject& gamut,
                             const std::vector<float>& values, const QList<std::pair<float, QRgb>>& stops)
{
    std::optional<KVProblem> failure;
    QEventLoop loop;
    bool isDone = false;
    m_view.showValues(id, gamut, values, stops, &m_context, [&](const std::optional<KVProblem>& problem) {
        failure = problem;
        isDone = true;
        loop.quit();
    });
    if (!isDone)
        loop.exec();
    if (failure)
        say(Problem(*failure).about(id));
    return !failure;
}

void GamutScene::addScaleBar(const LossScale& scale)
{
    const LossOptions& options = m_annotations.loss;
    const QString metric = options.metric == ColourMetric::Ciede2000 ? QStringLiteral("CIEDE2000")
                                                                     : QString::fromUtf8("\xCE\x94"
                                                                                         "E*76");
    KVAnnotations annotations = m_view.annotations();
    const QString other =
        options.other.isEmpty() ? explained().value(0).title : gamutTitles({options.other}).value(0);
    annotations.scaleBar = {metric + QStringLiteral(" outside ") + other, scale.colors(), 0.0f,
                            scale.largest};
    m_view.setAnnotations(annotations);
}
