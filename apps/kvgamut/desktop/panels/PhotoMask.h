// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/models/PointLayer.h"

#include <QtGui/QImage>
#include <QtWidgets/QDialog>

class QLabel;

/// A window that shows a photo with what a gamut cannot make marked, as `kvgamut check --mask` writes it. The
/// picture is made in the background; closing the window cancels that.
class PhotoMask : public QDialog
{
    Q_OBJECT
public:
    /// Of the photo in @p row of @p points for the gamut @p gamut, which has been computed.
    PhotoMask(const PointLayer& points, int row, const GamutEntry& gamut, QWidget* parent);
    ~PhotoMask() override;

    bool isComplete() const { return m_isDone; }
    /// Null until it is complete, or if it could not be made.
    const QImage& picture() const { return m_picture; }

Q_SIGNALS:
    void failed(const Problem& problem);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void finish(const Result<QImage>& mask);
    QRect place() const;

    QString m_file;
    QLabel* m_words;
    QImage m_picture;
    KVCompletionProtocolPtr m_work;
    bool m_isDone = false;
};
