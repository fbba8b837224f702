// SPDX-License-Identifier: Apache-2.0
// The viewer inside a Qt Widgets application: in the middle of a main window, controls in docks around it.
//
//   example_docks [profile.icc ...] [--session FILE] [--picture FILE]
//
// With --session the view is restored from FILE and saved to it. With --picture the window closes by itself
// after it has written a picture of all of it.

#include "common/Profiles.h"
#include "common/WhenDrawn.h"
#include "docks/ViewerArea.h"

#include <KVGamutView.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStatusBar>

#include <cstdio>

namespace {

class MainWindow : public QMainWindow
{
public:
    MainWindow()
        : m_viewer(new KVGamut3DViewer), m_view(m_viewer), m_gamuts(new QListWidget),
          m_opacity(new QSlider(Qt::Horizontal)), m_progress(new QProgressBar), m_cancel(new QPushButton)
    {
        auto* area = new ViewerArea(m_viewer); // owns the viewer
        area->setMinimumSize(320, 240);
        setCentralWidget(area);
        m_viewer->setCamera({265, 160, -450}, 0, {40, 0, 0});
        addDock(Qt::LeftDockWidgetArea, QStringLiteral("Gamuts"), m_gamuts);
        addDock(Qt::RightDockWidgetArea, QStringLiteral("Look"), lookPanel());
        addProgress();

        connect(&m_view, &KVGamutView::loaded, this, [this](const QString& id) { addGamut(id); });
        connect(&m_view, &KVGamutView::failed, this, [this](const QString& id, const KVProblem& problem) {
            if (problem.code != KVProblemCode::Cancelled)
                statusBar()->showMessage(QStringLiteral("%1: %2").arg(id, problem.text()));
        });
        connect(&m_view, &KVGamutView::hovered, this, [this](const KVHit& hit) {
            if (hit.kind == KVHit::Kind::Gamut)
                statusBar()->showMessage(QStringLiteral("%1: L* %2, a* %3, b* %4")
                                             .arg(hit.id)
                                             .arg(hit.lab.x(), 0, 'f', 1)
                                             .arg(hit.lab.y(), 0, 'f', 1)
                                             .arg(hit.lab.z(), 0, 'f', 1));
            else
                statusBar()->clearMessage();
        });
        connect(m_gamuts, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
            KVGamutLook look = m_view.look(item->text());
            look.visible = item->checkState() == Qt::Checked;
            m_view.setLook(item->text(), look);
        });
    }

    void load(const Profiles& profiles)
    {
        for (const auto& [id, request] : profiles)
            m_view.load(id, request);
    }

    KVGamutView& view() { return m_view; }

    void saveSession(const QString& path) const
    {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(QJsonDocument(QJsonObject::fromVariantMap(m_view.state().toMap())).toJson());
    }

    void restoreSession(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return;
        const QVariantMap map = QJsonDocument::fromJson(file.readAll()).object().toVariantMap();
        m_view.setState(KVViewState::fromMap(map)); // looks wait for the gamuts that they belong to
    }

    /// Widgets render themselves into a picture, the viewer returns its own.
    QPixmap picture()
    {
        QPixmap all = grab();
        QPainter(&all).drawImage(centralWidget()->geometry(), m_viewer->picture());
        return all;
    }

private:
    void addDock(Qt::DockWidgetArea area, const QString& title, QWidget* content)
    {
        auto* dock = new QDockWidget(title);
        dock->setWidget(content);
        addDockWidget(area, dock);
    }

    QWidget* lookPanel()
    {
        auto* panel = new QWidget;
        auto* form = new QFormLayout(panel);

        m_opacity->setRange(0, 100);
        m_opacity->setValue(60);
        connect(m_opacity, &QSlider::valueChanged, this, [this](int percent) {
            for (const QString& id : m_viewer->gamuts())
                m_viewer->changeGamutAlpha(id, static_cast<float>(percent) / 100.0f, 200); // fades in 200 ms
        });
        form->addRow(QStringLiteral("Opacity"), m_opacity);

        auto* cut = new QSlider(Qt::Horizontal);
        cut->setRange(0, 100);
        cut->setValue(100);
        connect(cut, &QSlider::valueChanged, this,
                [this](int lightness) { m_viewer->setClipping(static_cast<float>(lightness)); });
        form->addRow(QStringLiteral("Cut above L*"), cut);

        auto* wireframe = new QCheckBox(QStringLiteral("Wireframe"));
        connect(wireframe, &QCheckBox::toggled, this, [this](bool on) {
            for (const QString& id : m_viewer->gamuts())
                m_viewer->setDisplayMode(id, on ? KVGamut3DViewer::Wireframe : KVGamut3DViewer::Smooth);
        });
        form->addRow(wireframe);

        auto* palette = new QCheckBox(QStringLiteral("Colours of the desktop"));
        connect(palette, &QCheckBox::toggled, &m_view, &KVGamutView::setThemeFollowsPalette);
        form->addRow(palette);

        auto* frame = new QPushButton(QStringLiteral("Show all"));
        connect(frame, &QPushButton::clicked, this, [this] { m_view.frame({}, 300); });
        form->addRow(frame);
        return panel;
    }

    void addProgress()
    {
        m_progress->setRange(0, 100);
        m_cancel->setText(QStringLiteral("Cancel"));
        statusBar()->addPermanentWidget(m_progress);
        statusBar()->addPermanentWidget(m_cancel);
        m_progress->hide();
        m_cancel->hide();
        connect(&m_view, &KVGamutView::loadingChanged, this, [this] {
            m_progress->setVisible(m_view.isLoading());
            m_cancel->setVisible(m_view.isLoading());
        });
        connect(&m_view, &KVGamutView::progressChanged, this, [this](const QString&, float progress) {
            m_progress->setValue(static_cast<int>(progress * 100.0f));
        });
        connect(m_cancel, &QPushButton::clicked, this, [this] {
            for (const QString& id : m_viewer->gamuts())
                m_view.cancel(id);
        });
    }

    void addGamut(const QString& id)
    {
        m_viewer->changeGamutAlpha(id, static_cast<float>(m_opacity->value()) / 100.0f, 0);
        auto* item = new QListWidgetItem(id);
        item->setToolTip(QStringLiteral("%L1 cubic dE").arg(m_viewer->volume(id), 0, 'f', 0));
        item->setCheckState(m_view.look(id).visible ? Qt::Checked : Qt::Unchecked);
        m_gamuts->addItem(item);
    }

    KVGamut3DViewer* m_viewer;
    KVGamutView m_view;
    QListWidget* m_gamuts;
    QSlider* m_opacity;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("session"),
                      QStringLiteral("Restore the view from a file and save it there."),
                      QStringLiteral("file")});
    parser.addOption(
        {QStringLiteral("picture"), QStringLiteral("Write the picture and close."), QStringLiteral("file")});
    parser.addPositionalArgument(QStringLiteral("profiles"), QStringLiteral("ICC profiles to show"));
    parser.process(application);

    MainWindow window;
    if (const auto problem = window.view().drawingProblem()) {
        std::fprintf(stderr, "The gamuts cannot be drawn: %s\n", qPrintable(problem->text()));
        return 1;
    }
    window.resize(1000, 600);
    const QString session = parser.value(QStringLiteral("session"));
    if (!session.isEmpty())
        window.restoreSession(session);
    window.show();
    window.load(profilesToShow(parser.positionalArguments()));
    QObject::connect(&window.view(), &KVGamutView::loadingChanged, [&] {
        if (window.view().isLoading() || !parser.isSet(QStringLiteral("picture")))
            return;
        whenDrawn(window.view(), [&] {
            const bool written = window.picture().save(parser.value(QStringLiteral("picture")));
            QCoreApplication::exit(written ? 0 : 1);
        });
    });
    const int exitCode = QApplication::exec();
    if (!session.isEmpty())
        window.saveSession(session);
    return exitCode;
}
