// SPDX-License-Identifier: Apache-2.0
#include "HelpPages.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QObject>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>

namespace {

class HelpWords
{
    Q_DECLARE_TR_FUNCTIONS(HelpPages)
};

QDialog* dialogOf(const QString& title, QWidget* content, QWidget* parent)
{
    auto* dialog = new QDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* column = new QVBoxLayout(dialog);
    column->addWidget(content);
    column->addWidget(buttons);
    return dialog;
}

} // namespace

QDialog* HelpPages::about(const QString& drawing, QWidget* parent)
{
    QStringList lines{
        QStringLiteral("kvgamut ") + QCoreApplication::applicationVersion(),
        HelpWords::tr("Shows and compares colour gamuts in CIE L*a*b*."),
        QString(),
        HelpWords::tr("Licence: %1").arg(QStringLiteral("Apache-2.0")),
        HelpWords::tr("Made with Qt %1").arg(QLatin1String(qVersion())),
        HelpWords::tr("Nothing leaves this computer: the program uses no network."),
    };
    if (!drawing.isEmpty())
        lines.append(drawing);
    auto* text = new QLabel(lines.join(QLatin1Char('\n')));
    text->setObjectName(QStringLiteral("aboutText"));
    text->setTextFormat(Qt::PlainText);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QDialog* dialog = dialogOf(HelpWords::tr("About kvgamut"), text, parent);
    dialog->setObjectName(QStringLiteral("about"));
    return dialog;
}

QDialog* HelpPages::tour(QWidget* parent)
{
    auto* browser = new QTextBrowser;
    browser->setObjectName(QStringLiteral("tourText"));
    browser->setAccessibleName(HelpWords::tr("Tour"));
    browser->setOpenLinks(false); // its pages are files of the documentation
    QFile file(QStringLiteral(":/help/TOUR.md"));
    if (file.open(QIODevice::ReadOnly))
        browser->setMarkdown(QString::fromUtf8(file.readAll()));
    QDialog* dialog = dialogOf(HelpWords::tr("Tour"), browser, parent);
    dialog->setObjectName(QStringLiteral("tourDialog"));
    dialog->resize(720, 640);
    return dialog;
}
