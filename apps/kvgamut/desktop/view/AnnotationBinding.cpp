// SPDX-License-Identifier: Apache-2.0
#include "AnnotationBinding.h"

#include "desktop/language/ShownWords.h"

#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace {

/// For example "relative colorimetric, 833,121 ΔE³".
QString detailsOf(const GamutEntry& entry)
{
    const QString volume = QLocale().toString(qlonglong(std::llround(entry.gamut.volume())));
    return ShownWords::basis(entry.computedWith, entry.gamut.method()) + QStringLiteral(", ") + volume +
           QString::fromUtf8(" \xCE\x94"
                             "E\xC2\xB3");
}

} // namespace

AnnotationBinding::AnnotationBinding(GamutListModel& model, KVGamutView& view, QObject* parent)
    : QObject(parent), m_model(model), m_view(view)
{
    connect(&model, &QAbstractItemModel::dataChanged, this, &AnnotationBinding::update);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &AnnotationBinding::update);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, &AnnotationBinding::update);
    connect(&model, &GamutListModel::activeRowChanged, this, &AnnotationBinding::update);
    connect(&view, &KVGamutView::themeChanged, this, &AnnotationBinding::update);
}

void AnnotationBinding::setShown(bool shown)
{
    m_shown = shown;
    update();
}

void AnnotationBinding::setPresenting(bool presenting)
{
    m_presenting = presenting;
    update();
}

void AnnotationBinding::update()
{
    const KVAnnotations complete = annotations();
    m_view.setAnnotations(m_shown || m_presenting ? complete : KVAnnotations());
    Q_EMIT described(wordsOf(complete));
}

QString AnnotationBinding::wordsOf(const KVAnnotations& annotations)
{
    QStringList words;
    for (const auto& gamut : annotations.legend)
        words.append(tr("%1: %2").arg(gamut.name, gamut.details));
    return words.isEmpty() ? tr("No gamut is shown") : words.join(QStringLiteral("; "));
}

KVAnnotations AnnotationBinding::annotations() const
{
    constexpr float presentedScale = 1.75f;
    KVAnnotations annotations;
    annotations.textScale = m_presenting ? presentedScale : 1.0f;
    for (int row = 0; row < m_model.rowCount(); ++row) {
        const GamutEntry& entry = m_model.at(row);
        if (!entry.hasGamut() || !m_model.isSeen(row))
            continue;
        annotations.legend.append(
            {entry.id, entry.title, detailsOf(entry), m_model.signColor(row, m_view.theme().background)});
        if (row == m_model.activeRow())
            annotations.highlight = entry.id;
    }
    if (annotations.legend.size() < 2)
        annotations.highlight.clear();
    annotations.scales = m_view.viewer() && m_view.viewer()->displayAxes() && !annotations.legend.isEmpty();
    return annotations;
}
