// SPDX-License-Identifier: Apache-2.0
#include "GamutPanel.h"

#include "desktop/language/ShownWords.h"

#include <QtCore/QEvent>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QAction>
#include <QtGui/QPainter>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

namespace {

using KVGamut::Adaptation;

// The range of the field; the value below its minimum means the engine's default.
constexpr int minGridPoints = 3;
constexpr int maxGridPoints = 129;
constexpr int automaticGrid = minGridPoints - 1;
constexpr int percent = 100;

QSlider* makeShareSlider(const QString& name, const QString& words)
{
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(name);
    slider->setAccessibleName(words);
    slider->setRange(0, percent);
    slider->setPageStep(10);
    return slider;
}

/// Scrolls its content if there is no room for all of it.
class ScrolledDetails : public QScrollArea
{
public:
    explicit ScrolledDetails(QWidget* content)
    {
        setWidget(content);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    }

    QSize sizeHint() const override { return widget()->sizeHint(); }
    /// The size hint follows that of the content.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == widget() && event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
    QSize minimumSizeHint() const override
    {
        const int line = fontMetrics().lineSpacing();
        return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(), 4 * line};
    }
};

/// Lets names be shortened to the width of the list, and keeps the key colour of a selected gamut as it is.
class NarrowNames : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        QPixmap swatch(option->decorationSize);
        const auto& model = static_cast<const GamutListModel&>(*index.model());
        swatch.fill(model.swatch(index.row()));
        option->icon = QIcon(swatch);
        option->icon.addPixmap(swatch, QIcon::Selected); // otherwise the style would tint it
    }

public:
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }
};

QCheckBox* makeCheckBox(const QString& name, const QString& words)
{
    auto* box = new QCheckBox(words);
    box->setObjectName(name);
    return box;
}

} // namespace

GamutPanel::GamutPanel(GamutListModel& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_list(new QListView), m_details(new QWidget)
{
    m_list->setObjectName(QStringLiteral("gamutList"));
    m_list->setAccessibleName(tr("Gamuts"));
    m_list->setModel(&model);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setItemDelegate(new NarrowNames(m_list));
    auto* remove = new QAction(tr("Remove gamut"), m_list);
    remove->setShortcut(QKeySequence::Delete);
    remove->setShortcutContext(Qt::WidgetShortcut);
    connect(remove, &QAction::triggered, this, [this] {
        if (m_list->currentIndex().isValid())
            Q_EMIT removeRequested(m_list->currentIndex().row());
    });
    m_list->addAction(remove);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto* details = new QVBoxLayout(m_details);
    details->setContentsMargins(0, 0, 0, 0);
    details->addWidget(makeComputation());
    details->addWidget(makeAppearance());
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_list, 1);
    column->addWidget(new ScrolledDetails(m_details));
    m_list->setMinimumHeight(m_list->fontMetrics().lineSpacing() * 5);

    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { m_model.setActiveRow(current.row()); });
    connect(&model, &GamutListModel::activeRowChanged, this, &GamutPanel::showActive);
    connect(&model, &QAbstractItemModel::dataChanged, this, &GamutPanel::showActive);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &GamutPanel::showActive);
    showActive();
}

QWidget* GamutPanel::makeComputation()
{
    m_intent = new QComboBox;
    m_intent->setObjectName(QStringLiteral("intent"));
    for (const KVVMRenderType intent : {KVVMRenderPerceptual, KVVMRenderRelativeColorimetric,
                                        KVVMRenderSaturation, KVVMRenderAbsoluteColorimetric})
        m_intent->addItem(ShownWords::intent(intent), static_cast<int>(intent));
    m_blackPoint = makeCheckBox(QStringLiteral("blackPoint"), tr("&Black point compensation"));
    m_blackPoint->setToolTip(tr("No effect with the absolute intent"));
    m_grid = new QSpinBox;
    m_grid->setObjectName(QStringLiteral("grid"));
    m_grid->setRange(automaticGrid, maxGridPoints);
    m_grid->setSpecialValueText(tr("automatic"));
    m_grid->setKeyboardTracking(false); // report the number only when it is complete
    m_grid->setToolTip(tr("Samples along each device axis"));

    makeAdaptation();

    auto* group = new QGroupBox(tr("Computed with"));
    auto* form = new QFormLayout(group);
    form->addRow(tr("&Intent"), m_intent);
    form->addRow(m_blackPoint);
    form->addRow(tr("Adaptatio&n"), m_adaptation);
    form->addRow(tr("G&rid"), m_grid);
    form->addRow(m_conversion);

    connect(m_intent, &QComboBox::currentIndexChanged, this, [this] {
        changeSettings([this](KVGamut::Settings& s) {
            s.intent = static_cast<KVVMRenderType>(m_intent->currentData().toInt());
        });
    });
    connect(m_blackPoint, &QCheckBox::toggled, this, [this](bool on) {
        changeSettings([on](KVGamut::Settings& s) { s.blackPointCompensation = on; });
    });
    connect(m_grid, &QSpinBox::valueChanged, this, [this](int value) {
        changeSettings([value](KVGamut::Settings& s) { s.gridPoints = value == automaticGrid ? -1 : value; });
    });
    return group;
}

/// And the label that says what came of all settings.
void GamutPanel::makeAdaptation()
{
    m_adaptation = new QComboBox;
    m_adaptation->setObjectName(QStringLiteral("adaptation"));
    m_adaptation->setToolTip(tr("Adaptation of a display's colours to D50; only with the absolute intent"));
    for (const Adaptation adaptation : {Adaptation::Full, Adaptation::None, Adaptation::NoneD65})
        m_adaptation->addItem(ShownWords::adaptation(adaptation), static_cast<int>(adaptation));
    m_conversion = new QLabel;
    m_conversion->setObjectName(QStringLiteral("conversion"));
    m_conversion->setTextFormat(Qt::PlainText);
    m_conversion->setWordWrap(true);
    m_conversion->setTextInteractionFlags(Qt::TextSelectableByMouse);
    connect(m_adaptation, &QComboBox::currentIndexChanged, this, [this] {
        changeSettings([this](KVGamut::Settings& s) {
            s.adaptation = static_cast<Adaptation>(m_adaptation->currentData().toInt());
        });
    });
}

QWidget* GamutPanel::makeAppearance()
{
    m_mode = new QComboBox;
    m_mode->setObjectName(QStringLiteral("mode"));
    m_mode->addItem(tr("Smooth"), KVGamut3DViewer::Smooth);
    m_mode->addItem(tr("Flat"), KVGamut3DViewer::Flat);
    m_mode->addItem(tr("Wireframe"), KVGamut3DViewer::Wireframe);
    m_opacity = makeShareSlider(QStringLiteral("opacity"), tr("Opacity"));
    m_ambient = makeShareSlider(QStringLiteral("ambient"), tr("Light from everywhere"));
    m_ambient->setToolTip(tr("Right: pure colours. Left: the light models the surface."));
    m_color = new QToolButton;
    m_color->setObjectName(QStringLiteral("color"));
    m_color->setText(tr("&Choose…"));
    m_color->setAccessibleDescription(tr("Colour of the gamut"));
    m_color->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_ownColors = new QToolButton;
    m_ownColors->setObjectName(QStringLiteral("ownColors"));
    m_ownColors->setText(tr("&Own colours"));
    m_surface = makeCheckBox(QStringLiteral("surface"), tr("&Surface"));
    m_projection = makeCheckBox(QStringLiteral("projection"), tr("Pro&jection"));
    m_primaries = makeCheckBox(QStringLiteral("primaries"), tr("&Primaries"));

    auto* colors = new QHBoxLayout;
    colors->addWidget(m_color);
    colors->addWidget(m_ownColors);
    colors->addStretch();
    auto* group = new QGroupBox(tr("Shown as"));
    auto* form = new QFormLayout(group);
    form->addRow(tr("&Mode"), m_mode);
    form->addRow(tr("Opacit&y"), m_opacity);
    form->addRow(tr("P&urity"), m_ambient);
    form->addRow(tr("Colour"), colors);
    form->addRow(m_surface);
    form->addRow(m_projection);
    form->addRow(m_primaries);

    connect(m_mode, &QComboBox::currentIndexChanged, this, [this] {
        changeLook([this](KVGamutLook& l) {
            l.mode = static_cast<KVGamut3DViewer::DisplayMode>(m_mode->currentData().toInt());
        });
    });
    connect(m_opacity, &QSlider::valueChanged, this, [this](int value) {
        changeLook([value](KVGamutLook& l) { l.opacity = static_cast<float>(value) / percent; });
    });
    connect(m_ambient, &QSlider::valueChanged, this, [this](int value) {
        changeLook([value](KVGamutLook& l) { l.ambientStrength = static_cast<float>(value) / percent; });
    });
    connect(m_color, &QToolButton::clicked, this, &GamutPanel::chooseColor);
    connect(m_ownColors, &QToolButton::clicked, this,
            [this] { changeLook([](KVGamutLook& l) { l.color = QColor(); }); });
    connect(m_surface, &QCheckBox::toggled, this,
            [this](bool on) { changeLook([on](KVGamutLook& l) { l.surface = on; }); });
    connect(m_projection, &QCheckBox::toggled, this,
            [this](bool on) { changeLook([on](KVGamutLook& l) { l.projection = on; }); });
    connect(m_primaries, &QCheckBox::toggled, this,
            [this](bool on) { changeLook([on](KVGamutLook& l) { l.primaries = on; }); });
    return group;
}

void GamutPanel::addCommands(const QList<QAction*>& commands)
{
    m_list->addActions(commands);
}

void GamutPanel::chooseColor()
{
    if (m_model.activeRow() < 0)
        return;
    const QColor color =
        QColorDialog::getColor(m_model.signColor(m_model.activeRow()), this, tr("Colour of the gamut"));
    if (color.isValid())
        changeLook([color](KVGamutLook& l) { l.color = color; });
}

void GamutPanel::showActive()
{
    const QScopedValueRollback<bool> showing(m_showing, true);
    const int row = m_model.activeRow();
    m_details->setEnabled(row >= 0);
    if (row < 0 || row >= m_model.rowCount())
        return;
    m_list->setCurrentIndex(m_model.index(row));
    const GamutEntry& entry = m_model.at(row);
    m_intent->setCurrentIndex(m_intent->findData(static_cast<int>(entry.settings.intent)));
    m_blackPoint->setChecked(entry.settings.blackPointCompensation);
    m_blackPoint->setEnabled(entry.settings.intent != KVVMRenderAbsoluteColorimetric);
    m_adaptation->setCurrentIndex(m_adaptation->findData(static_cast<int>(entry.settings.adaptation)));
    m_adaptation->setEnabled(entry.settings.intent == KVVMRenderAbsoluteColorimetric);
    m_conversion->setText(ShownWords::conversion(entry.gamut.report()));
    showGrid(entry);
    m_grid->setValue(entry.settings.gridPoints < minGridPoints ? automaticGrid : entry.settings.gridPoints);
    const int mode = entry.look.mode == KVGamut3DViewer::Solid ? KVGamut3DViewer::Smooth : entry.look.mode;
    m_mode->setCurrentIndex(m_mode->findData(mode));
    m_opacity->setValue(qRound(entry.look.opacity * percent));
    m_ambient->setValue(qRound(entry.look.ambientStrength * percent));
    m_ownColors->setEnabled(entry.look.color.isValid());
    m_surface->setChecked(entry.look.surface);
    m_projection->setChecked(entry.look.projection);
    m_primaries->setChecked(entry.look.primaries);
    paintColorButton();
}

/// The engine chooses the grid, or uses a coarser one than was asked for.
void GamutPanel::showGrid(const GamutEntry& entry)
{
    const int used = entry.hasGamut() ? entry.gamut.report().gridPoints : 0;
    const QString automatic = tr("automatic");
    const bool isOther = used > 0 && used != entry.computedWith.gridPoints;
    m_grid->setSpecialValueText(used > 0 ? QStringLiteral("%1 (%2)").arg(automatic).arg(used) : automatic);
    m_grid->setSuffix(isOther ? QLatin1Char(' ') + tr("(%1 used)").arg(used) : QString());
}

void GamutPanel::paintColorButton()
{
    QPixmap swatch(m_color->iconSize());
    swatch.fill(m_model.swatch(m_model.activeRow()));
    m_color->setIcon(swatch);
}

void GamutPanel::changeLook(const std::function<void(KVGamutLook&)>& change)
{
    if (!m_showing)
        m_model.changeActiveLook(change);
}

void GamutPanel::changeSettings(const std::function<void(KVGamut::Settings&)>& change)
{
    if (!m_showing)
        m_model.changeActiveSettings(change);
}
