// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/ColorChecks.h"
#include "desktop/panels/Inspector.h"

#include <KVGamutView.h>

#include <QtCore/QObject>

#include <optional>

class ColorsPanel;
class FindingPanel;
class SlicePanel;

/// The colour that the user looks at: a place on a surface, a point, a row of the table of colours, or the
/// place of the keyboard cursor. Shows it in the panel, in the view and in the section, and follows changes:
/// what is said of a gamut is of its present surface, and ends with the gamut.
class FindingControl : public QObject
{
    Q_OBJECT
public:
    /// What shows the colour. Must outlive the control, as must the models.
    struct Parts
    {
        KVGamutView* view;
        FindingPanel* panel;
        ColorsPanel* colors;
        SlicePanel* section;
    };
    FindingControl(const GamutListModel& gamuts, const PointLayer& points, const ColorChecks& checks,
                   Inspector::ProfileOf profileOf, const Parts& parts, QObject* parent = nullptr);

    /// Shows what @p clicked hit; nothing if it ends a drag.
    void inspect(const KVHit& clicked);
    /// Shows a colour that need not be on a surface.
    void showPlace(const QVector3D& lab);
    /// Shows the nearest point, if one is close to @p lab, else the nearest place on the surface of the
    /// active gamut.
    void pickNear(const QVector3D& lab);
    void forget();
    /// As text; empty if there is none.
    QString text() const;

Q_SIGNALS:
    void changed(); ///< another colour, another text, or none

private:
    void showChosen(std::optional<qsizetype> color);
    std::optional<QVector3D> nearestOf(qsizetype color) const;
    void show(const Inspector::Finding& finding, const std::optional<QVector3D>& nearest);
    void showHit();
    void update();
    void followSurface();

    const GamutListModel& m_gamuts;
    const PointLayer& m_points;
    const ColorChecks& m_checks;
    Inspector m_inspector;
    Parts m_parts;

    // at most one of these has a value
    std::optional<KVHit> m_hit;
    std::optional<QVector3D> m_place;
    /// The row of the table of colours whose colour is shown.
    struct Chosen
    {
        qsizetype color = 0;
        QString text;
        std::optional<QVector3D> nearest;
        bool operator==(const Chosen&) const = default;
    };
    std::optional<Chosen> m_chosen;
    quint64 m_revision = 0; ///< of the gamut whose surface was hit
    QString m_text;
};
