// SPDX-License-Identifier: Apache-2.0
#include "GamutInformation.h"

#include "desktop/language/ShownWords.h"
#include "model/inputs/ProfileFacts.h"
#include "model/points/Lab.h"
#include "model/reports/GamutWords.h"
#include "model/text/SafeText.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

namespace {

using Row = GamutInformation::Row;

QString number(double value, int decimals = 0)
{
    return QLocale().toString(value, 'f', decimals);
}

/// What profiles say of themselves may contain anything.
QString shownText(const QString& text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines)
        line = SafeText::shown(line);
    return lines.join(QLatin1Char('\n'));
}

QList<Row> profileRows(const GamutSource& source)
{
    QList<Row> rows;
    if (const KVProfilePtr profile = source.profile()) {
        const ProfileFacts facts = ProfileFacts::of(profile->bytes);
        rows.append({GamutInformation::tr("Description"), facts.description});
        rows.append({GamutInformation::tr("Class"), facts.deviceClass});
        rows.append(
            {GamutInformation::tr("Device colours"),
             GamutInformation::tr("%1, %n channels", nullptr, facts.channels).arg(facts.deviceSpace)});
        rows.append({GamutInformation::tr("Version"), facts.version});
        rows.append({GamutInformation::tr("Intents"), facts.intents.join(QStringLiteral(", "))});
        rows.append({GamutInformation::tr("Copyright"), facts.copyright});
    }
    if (!source.savedProfile().isEmpty())
        rows.append({GamutInformation::tr("Saved of"), source.savedProfile()});
    return rows;
}

QList<Row> gamutRows(const GamutEntry& entry)
{
    const KVGamut::Report report = entry.gamut.report();
    const QString cubic = QString::fromUtf8(" \xCE\x94"
                                            "E\xC2\xB3");
    QList<Row> rows{
        {GamutInformation::tr("Computed with"), ShownWords::basis(entry.computedWith, entry.gamut.method())},
        {GamutInformation::tr("Conversion to Lab"), ShownWords::conversion(report)},
        {GamutInformation::tr("Volume"),
         number(report.volume) + QStringLiteral(" ± ") + number(report.volumeUncertainty) + cubic},
        {GamutInformation::tr("Volume of the surface"), number(report.surfaceVolume) + cubic},
        {GamutInformation::tr("White"), ShownWords::lab(vectorOf(report.white))},
        {GamutInformation::tr("Black"), ShownWords::lab(vectorOf(report.black))},
        {GamutInformation::tr("Method"), GamutWords::method(report.method)},
    };
    if (report.gridPoints > 0)
        rows.append({GamutInformation::tr("Grid"), number(report.gridPoints)});
    rows.append({GamutInformation::tr("Triangles"), number(report.faceCount)});
    if (report.foldShare > 0.0)
        rows.append({GamutInformation::tr("Folded share"),
                     number(report.foldShare * 100.0, 2) + QStringLiteral(" %")});
    if (report.seconds > 0.0)
        rows.append({GamutInformation::tr("Time"), number(report.seconds, 2) + QStringLiteral(" s")});
    return rows;
}

} // namespace

QList<Row> GamutInformation::rowsOf(const GamutEntry& entry, const std::optional<GamutSource>& source)
{
    QList<Row> rows;
    if (source)
        rows += profileRows(*source);
    const bool isFile = QFileInfo(entry.input).isAbsolute();
    const qsizetype place = rows.isEmpty() ? 0 : 1; // the description stands first
    rows.insert(place, {tr("Name"), entry.title});
    if (isFile)
        rows.insert(place + 1, {tr("File"), QDir::toNativeSeparators(entry.input)});
    if (source)
        rows.append({tr("Kind"), source->kind()});
    if (entry.hasGamut())
        rows += gamutRows(entry);
    if (source && !source->notes().isEmpty())
        rows.append({tr("Notes"), source->notes().join(QLatin1Char('\n'))});
    rows.removeIf([](const Row& row) { return row.second.isEmpty(); });
    for (auto& [title, value] : rows)
        value = shownText(value);
    return rows;
}

GamutInformation::GamutInformation(const GamutEntry& entry, const std::optional<GamutSource>& source,
                                   QWidget* parent)
    : QDialog(parent), m_rows(rowsOf(entry, source))
{
    setWindowTitle(tr("Information about %1").arg(entry.title));
    auto* content = new QWidget;
    auto* form = new QFormLayout(content);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const auto& [title, value] : std::as_const(m_rows)) {
        auto* label = new QLabel(value);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        label->setAccessibleName(title);
        form->addRow(title, label);
    }
    auto* scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("copyInformation"));
    connect(copy, &QPushButton::clicked, this, &GamutInformation::copy);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(scroll);
    column->addWidget(buttons);
    resize(560, 480);
}

void GamutInformation::copy() const
{
    QStringList lines;
    for (const auto& [title, value] : m_rows)
        lines.append(title + QLatin1Char('\t') +
                     QString(value).replace(QLatin1Char('\n'), QStringLiteral("; ")));
    QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}
