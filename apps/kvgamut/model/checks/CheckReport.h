// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ColorCheck.h"
#include "PhotoCheck.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QImage>

/// The results of checks as a page for people: the answer first, photos with what is lost marked, colours
/// with swatches. Equal results give equal bytes. Colours outside sRGB are shown by sRGB colours.
struct CheckReport
{
    struct Photo
    {
        QString name, profile, intent;
        bool pass = false;
        PhotoCheck check;
        qint64 pixels = 0;
        QImage mask; ///< as PhotoMarks::mask() gives it; shown smaller. May be null
    };
    struct Color
    {
        QString name, profile, intent;
        bool pass = false;
        KVGamut::LabPoint lab;
        ColorCheck check;
    };

    QString answer;     ///< one line: "photos: 1 of 2 fit; ..."
    QStringList inputs; ///< a line for each profile: PictureNote::profileLine()
    double tolerance = 1.0;
    QList<Photo> photos;
    QList<Color> colors;

    /// A self-contained HTML page: pictures are part of it, and no text of a file becomes markup.
    QByteArray html() const;
    /// The same as one page of PDF, 210 mm wide and as high as needed. Needs a QGuiApplication.
    QByteArray pdf() const;

private:
    QString page(const QStringList& pictures) const;
    QList<QImage> pictures() const;
};
