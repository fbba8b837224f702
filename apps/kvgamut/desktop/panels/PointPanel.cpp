// SPDX-License-Identifier: Apache-2.0
#include "PointPanel.h"

#include <QtGui/QAction>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

PointPanel::PointPanel(PointLayer& points, QWidget* parent)
    : QWidget(parent), m_points(points), m_list(new QTreeView), m_tolerance(new QDoubleSpinBox)
{
    m_list->setObjectName(QStringLiteral("pointFiles"));
    m_list->setAccessibleName(tr("Files of points"));
    m_list->setModel(&points);
    m_list->setRootIsDecorated(false);
    m_list->setIconSize(QSize(9, 9));
    m_list->setMinimumHeight(m_list->fontMetrics().height() * 3); // titles and a file
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(PointLayer::File, QHeaderView::Stretch);
    makeActions();

    m_tolerance->setObjectName(QStringLiteral("tolerance"));
    m_tolerance->setRange(0.0, 100.0);
    m_tolerance->setDecimals(1);
    m_tolerance->setSingleStep(0.5);
    m_tolerance->setPrefix(QStringLiteral("± "));
    m_tolerance->setSuffix(QStringLiteral(" ΔE"));
    m_tolerance->setToolTip(tr("Colours no farther from the active gamut's surface than this are its edge"));
    auto* open = new QPushButton(tr("&Add points…"));
    open->setObjectName(QStringLiteral("addPoints"));
    connect(open, &QPushButton::clicked, this, &PointPanel::openRequested);

    auto* form = new QFormLayout;
    form->addRow(tr("E&dge"), m_tolerance);
    auto* row = new QHBoxLayout;
    row->addLayout(form);
    row->addStretch();
    row->addWidget(open);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_list, 1);
    column->addLayout(row);

    showTolerance();
    connect(m_tolerance, &QDoubleSpinBox::valueChanged, this,
            [this](double value) { m_points.setTolerance(static_cast<float>(value)); });
}

void PointPanel::makeActions()
{
    auto* mask = new QAction(tr("Show what is lost of the photo"), m_list);
    mask->setObjectName(QStringLiteral("photoMask"));
    mask->setShortcut(QKeySequence(QStringLiteral("Ctrl+M")));
    auto* remove = new QAction(tr("Remove points"), m_list);
    remove->setShortcut(QKeySequence::Delete);
    for (QAction* action : {mask, remove})
        action->setShortcutContext(Qt::WidgetShortcut);
    connect(mask, &QAction::triggered, this, [this] {
        const int row = m_list->currentIndex().row();
        if (row >= 0 && m_points.set(row).photo)
            Q_EMIT maskRequested(row);
    });
    connect(remove, &QAction::triggered, this, [this] {
        if (m_list->currentIndex().isValid())
            m_points.remove(m_list->currentIndex().row());
    });
    m_list->addActions({mask, remove});
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void PointPanel::showTolerance()
{
    m_tolerance->setValue(static_cast<double>(m_points.tolerance()));
}
