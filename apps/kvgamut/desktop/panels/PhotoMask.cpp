// SPDX-License-Identifier: Apache-2.0
#include "PhotoMask.h"

#include "desktop/models/Threads.h"
#include "model/checks/PhotoMarks.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QFutureWatcher>
#include <QtCore/QLocale>
#include <QtGui/QPainter>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace {

/// Runs on a worker.
Result<QImage> maskOf(const QString& file, const KVGamut::GamutObject& gamut, float tolerance,
                      const KVCompletionProtocolPtr& work)
{
    return PhotoFile::open(file, work).and_then([&](PhotoFile photo) {
        return PhotoMarks::mask(photo, {}, gamut, tolerance, work);
    });
}

} // namespace

PhotoMask::PhotoMask(const PointLayer& points, int row, const GamutEntry& gamut, QWidget* parent)
    : QDialog(parent), m_file(points.set(row).file), m_words(new QLabel(tr("The picture is being made…"))),
      m_work(KVCompletionProtocol::createTask(QFileInfo(m_file).fileName()))
{
    const QString name = SafeText::shown(QFileInfo(m_file).fileName());
    setWindowTitle(tr("%1: what %2 cannot make").arg(name, gamut.title));
    setObjectName(QStringLiteral("photoMask"));
    m_words->setObjectName(QStringLiteral("photoMaskWords"));
    m_words->setTextFormat(Qt::PlainText);
    m_words->setWordWrap(true);
    m_words->setMinimumHeight(2 * m_words->fontMetrics().lineSpacing());
    auto* column = new QVBoxLayout(this);
    column->addStretch(1);
    column->addWidget(m_words);
    resize(480, 400);

    QString words = tr("Marked is what is outside %1. Grey can be made.").arg(gamut.title);
    if (const PhotoCheck* check = points.photo(row))
        words += QLatin1Char(' ') + tr("%1 % of the pixels are outside, %2 % on the edge.")
                                        .arg(QLocale().toString(100.0 * check->outside, 'f', 1),
                                             QLocale().toString(100.0 * check->edge, 'f', 1));
    auto* watcher = new QFutureWatcher<Result<QImage>>(this); // a file may answer after the window is gone
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, words] {
        m_words->setText(words);
        finish(watcher->result());
    });
    watcher->setFuture(Threads::run(*QThreadPool::globalInstance(), maskOf, m_file, gamut.gamut,
                                    points.tolerance(), m_work));
}

PhotoMask::~PhotoMask()
{
    m_work->cancel();
}

void PhotoMask::finish(const Result<QImage>& mask)
{
    m_isDone = true;
    if (mask) {
        m_picture = *mask;
        setAccessibleDescription(m_words->text());
        update();
        return;
    }
    Q_EMIT failed(Problem(mask.error()).about(m_file));
    close();
}

/// Of the picture: as large as possible above the words, in its proportions.
QRect PhotoMask::place() const
{
    const QRect area(0, 0, width(), m_words->geometry().top());
    QRect rect(QPoint(), m_picture.size().scaled(area.size(), Qt::KeepAspectRatio));
    rect.moveCenter(area.center());
    return rect;
}

void PhotoMask::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);
    if (m_picture.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place(), m_picture);
}
