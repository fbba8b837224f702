// SPDX-License-Identifier: Apache-2.0
#include "History.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

using State = History::State;

constexpr int maxSteps = 100;

class HistoryWords
{
    Q_DECLARE_TR_FUNCTIONS(History)
};

const GamutEntry* find(const State& state, const QString& id)
{
    const auto found = std::find_if(state.gamuts.cbegin(), state.gamuts.cend(),
                                    [&id](const GamutEntry& entry) { return entry.id == id; });
    return found == state.gamuts.cend() ? nullptr : &*found;
}

/// What the user chose.
KVGamutLook chosenLook(const GamutEntry& entry)
{
    KVGamutLook look = entry.look;
    if (entry.automaticOpacity)
        look.opacity = 1.0f;
    return look;
}

bool isSameLook(const GamutEntry& p, const GamutEntry& q)
{
    return p.automaticOpacity == q.automaticOpacity && chosenLook(p) == chosenLook(q);
}

/// Gamuts of @p state that @p other does not have.
QList<const GamutEntry*> onlyIn(const State& state, const State& other)
{
    QList<const GamutEntry*> found;
    for (const GamutEntry& entry : state.gamuts)
        if (!find(other, entry.id))
            found.append(&entry);
    return found;
}

QStringList onlyIn(QStringList files, const QStringList& others)
{
    files.removeIf([&others](const QString& file) { return others.contains(file); });
    return files;
}

/// One change, in words; nullopt if there is none of its kind.
using Change = std::optional<QString>;

Change gamutsAdded(const State& before, const State& after)
{
    const auto added = onlyIn(after, before);
    if (added.isEmpty())
        return {};
    return added.size() == 1 ? HistoryWords::tr("Add %1").arg(added.first()->title)
                             : HistoryWords::tr("Add %1 gamuts").arg(added.size());
}

Change gamutsRemoved(const State& before, const State& after)
{
    const auto removed = onlyIn(before, after);
    if (removed.isEmpty())
        return {};
    return removed.size() == 1 ? HistoryWords::tr("Remove %1").arg(removed.first()->title)
                               : HistoryWords::tr("Remove %1 gamuts").arg(removed.size());
}

Change pointsChanged(const State& before, const State& after)
{
    const QStringList added = onlyIn(after.points, before.points),
                      removed = onlyIn(before.points, after.points);
    if (added.isEmpty() && removed.isEmpty())
        return {};
    if (added.size() + removed.size() > 1)
        return HistoryWords::tr("Change points");
    return added.isEmpty() ? HistoryWords::tr("Remove %1").arg(QFileInfo(removed.first()).fileName())
                           : HistoryWords::tr("Add %1").arg(QFileInfo(added.first()).fileName());
}

Change settingsChanged(const State& before, const State& after)
{
    for (const GamutEntry& entry : after.gamuts)
        if (const GamutEntry* old = find(before, entry.id); old && old->settings != entry.settings)
            return HistoryWords::tr("Settings of %1").arg(entry.title);
    return {};
}

Change looksChanged(const State& before, const State& after)
{
    for (const GamutEntry& entry : after.gamuts) {
        const GamutEntry* old = find(before, entry.id);
        if (!old || isSameLook(*old, entry))
            continue;
        if (old->look.visible != entry.look.visible)
            return (entry.look.visible ? HistoryWords::tr("Show %1") : HistoryWords::tr("Hide %1"))
                .arg(entry.title);
        return HistoryWords::tr("Look of %1").arg(entry.title);
    }
    return {};
}

Change toleranceChanged(const State& before, const State& after)
{
    return before.tolerance == after.tolerance ? Change() : Change(HistoryWords::tr("Edge of points"));
}

/// What happened between two states; nullopt if nothing did.
Change changeBetween(const State& before, const State& after)
{
    QStringList changes;
    for (const auto kind :
         {gamutsRemoved, gamutsAdded, pointsChanged, settingsChanged, looksChanged, toleranceChanged})
        if (const Change change = kind(before, after))
            changes.append(*change);
    if (changes.isEmpty())
        return {};
    if (changes.size() == 1)
        return changes.first();
    return after.gamuts.isEmpty() && after.points.isEmpty() ? HistoryWords::tr("Close everything")
                                                            : HistoryWords::tr("Several changes");
}

/// @p state without what @p now no longer has: inputs that could not be opened.
State within(State state, const State& now)
{
    state.gamuts.removeIf([&now](const GamutEntry& entry) { return !find(now, entry.id); });
    state.points.removeIf([&now](const QString& file) { return !now.points.contains(file); });
    return state;
}

/// The gamut of which only one value of the look that has a slider differs; empty otherwise.
QString sliderChange(const State& before, const State& after)
{
    if (gamutsAdded(before, after) || gamutsRemoved(before, after) || pointsChanged(before, after) ||
        settingsChanged(before, after) || toleranceChanged(before, after))
        return {};
    QString id;
    for (const GamutEntry& entry : after.gamuts) {
        const GamutEntry* old = find(before, entry.id);
        if (isSameLook(*old, entry))
            continue;
        KVGamutLook look = entry.look;
        look.opacity = old->look.opacity;
        const bool isOpacity = look == old->look;
        look = entry.look;
        look.ambientStrength = old->look.ambientStrength;
        const bool isAmbient = look == old->look;
        if (!id.isEmpty() || !(isOpacity || isAmbient))
            return {};
        id = (isOpacity ? QLatin1String("opacity ") : QLatin1String("ambient ")) + entry.id;
    }
    return id;
}

/// A change from one state to another.
class Step : public QUndoCommand
{
public:
    Step(History& history, const State& before, const State& after, const QString& text)
        : QUndoCommand(text), m_history(history), m_before(before), m_after(after),
          m_slider(sliderChange(before, after))
    {
    }

    void undo() override { m_history.restore(m_before); }
    void redo() override
    {
        if (m_isDone) // the first time, the change has been made already
            m_history.restore(m_after);
        m_isDone = true;
    }
    int id() const override { return m_slider.isEmpty() ? -1 : 1; }
    /// The movements of one slider are one step.
    bool mergeWith(const QUndoCommand* next) override
    {
        const auto* step = static_cast<const Step*>(next);
        if (step->m_slider != m_slider)
            return false;
        m_after = step->m_after;
        return true;
    }

private:
    History& m_history;
    State m_before;
    State m_after;
    QString m_slider;
    bool m_isDone = false;
};

} // namespace

History::History(GamutListModel& gamuts, PointLayer& points, QObject* parent)
    : QObject(parent), m_gamuts(gamuts), m_points(points)
{
    m_steps.setUndoLimit(maxSteps);
    m_last = present();
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &History::record);
    connect(&gamuts, &QAbstractItemModel::rowsInserted, this, &History::recordSoon);
    connect(&gamuts, &QAbstractItemModel::rowsRemoved, this, &History::recordSoon);
    connect(&gamuts, &QAbstractItemModel::dataChanged, this, &History::recordSoon);
    connect(&points, &QAbstractItemModel::rowsInserted, this, &History::recordSoon);
    connect(&points, &QAbstractItemModel::rowsRemoved, this, &History::recordSoon);
    connect(&points, &QAbstractItemModel::dataChanged, this, &History::recordSoon);
    connect(&points, &QAbstractItemModel::modelReset, this, &History::recordSoon);
    connect(&points, &PointLayer::pointsChanged, this, &History::recordSoon);
}

void History::recordSoon()
{
    m_soon.start(0);
}

/// Of what is not shown yet. A gamut that is computed anew is shown meanwhile.
bool History::isLoading() const
{
    const QList<GamutEntry>& entries = m_gamuts.entries();
    return !m_points.isComplete() || std::any_of(entries.begin(), entries.end(), [](const GamutEntry& entry) {
        return entry.loading && (!entry.hasGamut() || entry.settings != entry.computedWith);
    });
}

void History::record()
{
    if (isLoading())
        return; // the end of the load is a change, too
    const State now = present();
    if (m_unchanged) { // what was changed while it was loaded is a step of its own
        takeStep(within(*m_unchanged, now));
        m_unchanged.reset();
        m_steps.setClean();
    }
    takeStep(now);
    Q_EMIT recorded();
}

void History::takeStep(const State& now)
{
    const Change change = changeBetween(m_last, now);
    const State before = std::exchange(m_last, now);
    if (change)
        m_steps.push(new Step(*this, before, now, *change));
}

void History::setUnchanged()
{
    m_unchanged = present();
    recordSoon();
}

bool History::isUnchanged() const
{
    const State now = present();
    if (m_unchanged)
        return !changeBetween(within(*m_unchanged, now), now);
    return m_steps.isClean() && !changeBetween(m_last, now);
}

History::State History::present() const
{
    State state{m_document, m_gamuts.entries(), m_gamuts.activeRow(), m_points.files(), m_points.tolerance()};
    for (GamutEntry& entry : state.gamuts) {
        entry.gamut = {};
        entry.revision = 0;
        entry.loading = true;
        entry.progress = 0.0f;
    }
    return state;
}

void History::restore(const State& state)
{
    m_gamuts.restore(state.gamuts, state.active);
    const QStringList shown = m_points.files();
    for (qsizetype row = shown.size() - 1; row >= 0; --row)
        if (!state.points.contains(shown[row]))
            m_points.remove(static_cast<int>(row));
    for (const QString& file : onlyIn(state.points, shown))
        m_points.open(file);
    m_points.setTolerance(state.tolerance);
    m_document = state.document;
    m_unchanged.reset();
    m_last = state;
    Q_EMIT restored();
}
