// SPDX-License-Identifier: Apache-2.0
// The viewer inside a Qt Widgets application: in the middle of a main window, controls in docks around it.
//
//   example_docks [profile.icc ...] [--picture FILE]
//
// With --picture the window closes by itself once a picture of all of it is written.

#include "common/Profiles.h"
#include "common/WhenDrawn.h"

#include <KVGamut3DViewer.h>

#include <QtCore/QCommandLineParser>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QSlider>

namespace {

class MainWindow : public QMainWindow
{
public:
    MainWindow()
        // A window in a widget layout: the container widget owns the viewer from here on.
        : m_viewer(new KVGamut3DViewer), m_gamuts(new QListWidget), m_opacity(new QSlider(Qt::Horizontal))
    {
        setCentralWidget(createWindowContainer(m_viewer, this));
        centralWidget()->setMinimumSize(320, 240);
        m_viewer->setCamera({265, 160, -450}, 0, {40, 0, 0});
        addDock(Qt::LeftDockWidgetArea, QStringLiteral("Gamuts"), m_gamuts);
        addDock(Qt::RightDockWidgetArea, QStringLiteral("Look"), lookPanel());

        connect(m_gamuts, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
            m_viewer->setGamutVisible(item->text(), item->checkState() == Qt::Checked);
        });
    }

    /// Loads all @p profiles; @p done is called when each of them has reported back.
    void show(const Profiles& profiles, const std::function<void()>& done)
    {
        QMainWindow::show();
        m_waiting = profiles.size();
        for (const auto& [name, params] : profiles)
            m_viewer->load(name, params, [this, done](const QString& id, bool loaded) {
                if (loaded)
                    addGamut(id);
                if (--m_waiting == 0)
                    done();
            });
    }

    KVGamut3DViewer& viewer() { return *m_viewer; }

    /// All of the window. Widgets paint themselves into a picture; what the viewer shows it answers itself.
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
                m_viewer->changeGamutAlpha(id, percent / 100.0f, 200); // fades in 200 ms
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
        return panel;
    }

    void addGamut(const QString& id)
    {
        m_viewer->setGamutAmbientStrength(id, 0.55f);
        m_viewer->changeGamutAlpha(id, m_opacity->value() / 100.0f, 0);
        auto* item = new QListWidgetItem(id);
        item->setToolTip(QStringLiteral("%L1 cubic dE").arg(m_viewer->volume(id), 0, 'f', 0));
        item->setCheckState(Qt::Checked);
        m_gamuts->addItem(item);
    }

    KVGamut3DViewer* m_viewer;
    QListWidget* m_gamuts;
    QSlider* m_opacity;
    std::size_t m_waiting = 0;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(
        {QStringLiteral("picture"), QStringLiteral("Write the picture and close."), QStringLiteral("file")});
    parser.addPositionalArgument(QStringLiteral("profiles"), QStringLiteral("ICC profiles to show"));
    parser.process(application);

    MainWindow window;
    window.resize(1000, 600);
    window.show(profilesToShow(parser.positionalArguments()), [&] {
        if (!parser.isSet(QStringLiteral("picture")))
            return;
        whenDrawn(window.viewer(), [&] {
            const bool written = window.picture().save(parser.value(QStringLiteral("picture")));
            QCoreApplication::exit(written ? 0 : 1);
        });
    });
    return QApplication::exec();
}
