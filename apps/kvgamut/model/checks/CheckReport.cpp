// SPDX-License-Identifier: Apache-2.0
#include "CheckReport.h"

#include "model/pictures/PictureNote.h"
#include "model/pictures/PictureWriters.h"
#include "model/pictures/VectorFile.h"
#include "model/text/SafeText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtGui/QPainter>
#include <QtGui/QTextDocument>

#include <algorithm>
#include <cmath>

namespace {

QString safe(const QString& text)
{
    return SafeText::shown(text).toHtmlEscaped();
}

/// A file without its folders, which the end of the page has.
QString fileName(const QString& path)
{
    return safe(QFileInfo(path).fileName());
}

QString number(double value, int decimals = 2)
{
    return QString::number(value, 'f', decimals);
}

QString percent(double share)
{
    return number(share * 100.0) + QStringLiteral("&nbsp;%");
}

QString cell(const QString& html)
{
    return QStringLiteral("<td>%1</td>").arg(html);
}

QString headings(const QStringList& titles)
{
    QString row;
    for (const QString& title : titles)
        row += QStringLiteral("<th align=\"left\">%1</th>").arg(title);
    return QStringLiteral("<tr>%1</tr>\n").arg(row);
}

QString swatch(const KVGamut::LabPoint& lab)
{
    if (!std::isfinite(lab.L))
        return cell({});
    return QStringLiteral("<td bgcolor=\"%1\" width=\"48\">&nbsp;</td>").arg(screenColor(lab).name());
}

QString labText(const KVGamut::LabPoint& lab)
{
    return std::isfinite(lab.L)
               ? QStringLiteral("%1&nbsp;%2&nbsp;%3")
                     .arg(number(double(lab.L), 1), number(double(lab.a), 1), number(double(lab.b), 1))
               : QString();
}

QString zoneText(Side zone)
{
    switch (zone) {
    case Side::Inside:
        return QStringLiteral("inside");
    case Side::Edge:
        return QStringLiteral("edge");
    case Side::Outside:
        break;
    }
    return QStringLiteral("outside");
}

QString passText(bool pass)
{
    return pass ? QStringLiteral("yes") : QStringLiteral("<b>no</b>");
}

QString deviceText(const std::vector<double>& device)
{
    QStringList values;
    for (const double value : device)
        values.append(QString::number(std::lround(value)));
    return values.join(QStringLiteral("&nbsp;"));
}

QString rowOf(const CheckReport::Photo& photo, const QString& picture)
{
    const PhotoCheck& check = photo.check;
    QString row;
    for (const QString& text : {fileName(photo.name), passText(photo.pass),
                                fileName(photo.profile) + QStringLiteral(", ") + photo.intent,
                                percent(check.inside), percent(check.edge), percent(check.outside),
                                number(check.de00.mean), number(check.de00.p95), number(check.de00.max)})
        row += cell(text);
    row = QStringLiteral("<tr>%1</tr>\n").arg(row);
    if (!picture.isEmpty())
        row += QStringLiteral(
                   "<tr><td colspan=\"9\"><img src=\"%1\" alt=\"%2: the pixels outside in red\"></td></tr>\n")
                   .arg(picture, fileName(photo.name));
    return row;
}

QString rowOf(const CheckReport::Color& color)
{
    const ColorCheck& check = color.check;
    return QStringLiteral("<tr>") + swatch(color.lab) + swatch(check.nearest) + swatch(check.made) +
           cell(safe(color.name)) + cell(passText(color.pass)) +
           cell(fileName(color.profile) + QStringLiteral(", ") + color.intent) + cell(zoneText(check.zone)) +
           cell(labText(color.lab)) + cell(number(check.de00)) + cell(number(check.de76)) +
           cell(labText(check.nearest)) + cell(deviceText(check.device)) + cell(deviceText(check.inverted)) +
           QStringLiteral("</tr>\n");
}

const QString table =
    QStringLiteral("<table cellpadding=\"4\" cellspacing=\"0\" border=\"0\">\n%1</table>\n");

} // namespace

QString CheckReport::page(const QStringList& pictures) const
{
    QString body = QStringLiteral("<h1>%1</h1>\n").arg(safe(answer));
    if (!photos.isEmpty()) {
        QString rows = headings({QStringLiteral("Photo"), QStringLiteral("Fits"), QStringLiteral("Gamut"),
                                 QStringLiteral("Inside"), QStringLiteral("Edge"), QStringLiteral("Outside"),
                                 QStringLiteral("dE00 mean"), QStringLiteral("95 %"), QStringLiteral("Max")});
        for (qsizetype i = 0; i < photos.size(); ++i)
            rows += rowOf(photos[i], pictures.value(i));
        body += table.arg(rows);
    }
    if (!colors.isEmpty()) {
        QString rows = headings({QStringLiteral("Colour"), QStringLiteral("Nearest"), QStringLiteral("Made"),
                                 QStringLiteral("Name"), QStringLiteral("Pass"), QStringLiteral("Gamut"),
                                 QStringLiteral("Zone"), QStringLiteral("L* a* b*"), QStringLiteral("dE00"),
                                 QStringLiteral("dE76"), QStringLiteral("Nearest L* a* b*"),
                                 QStringLiteral("Device %"), QStringLiteral("Inverted %")});
        for (const Color& color : colors)
            rows += rowOf(color);
        body += table.arg(rows);
    }
    body += QStringLiteral(
                "<p>Differences are to the nearest colour of the gamut: dE00 is CIEDE2000. Edge: within "
                "%1. Nearest: the colour of the gamut with the smallest dE00. Made: what the profile "
                "makes of the colour with the device values. Inverted: device values found by "
                "inverting the profile. Colours that the screen cannot show are shown by others.</p>\n")
                .arg(number(tolerance, 1));
    body += QStringLiteral("<p>%1").arg(safe(PictureNote::software()));
    for (const QString& input : inputs)
        body += QStringLiteral("<br>%1").arg(safe(input));
    return body + QStringLiteral("</p>\n");
}

QList<QImage> CheckReport::pictures() const
{
    constexpr int maxSide = 640;
    QList<QImage> shown;
    for (const Photo& photo : photos) {
        const bool isLarge = std::max(photo.mask.width(), photo.mask.height()) > maxSide;
        shown.append(isLarge
                         ? photo.mask.scaled(maxSide, maxSide, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                         : photo.mask);
    }
    return shown;
}

QByteArray CheckReport::html() const
{
    QStringList sources;
    for (const QImage& picture : pictures()) {
        const QImage::Format format =
            picture.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
        sources.append(picture.isNull()
                           ? QString()
                           : QStringLiteral("data:image/png;base64,") +
                                 QString::fromLatin1(
                                     PictureWriters::png(picture.convertToFormat(format), {}).toBase64()));
    }
    return QStringLiteral(
               "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
               "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src "
               "data:; style-src 'unsafe-inline'\">\n"
               "<meta name=\"viewport\" content=\"width=device-width\">\n<title>%1</title>\n"
               "<style>body{font-family:sans-serif;margin:2em;color:#111;background:#fff}"
               "h1{font-size:1.4em}table{border-collapse:collapse;margin:1em 0}"
               "td,th{padding:.25em .5em;border-bottom:1px solid #ccc;vertical-align:top}"
               "img{max-width:100%}</style>\n</head>\n<body>\n")
               .arg(safe(answer))
               .toUtf8() +
           page(sources).toUtf8() + "</body>\n</html>\n";
}

QByteArray CheckReport::pdf() const
{
    constexpr int width = 794, margin = 40, minHeight = 1123; // A4 in points of 1/96 inch
    QTextDocument document;
    QStringList sources;
    const QList<QImage> shown = pictures();
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const QString name = QStringLiteral("picture%1").arg(i);
        sources.append(shown[i].isNull() ? QString() : name);
        document.addResource(QTextDocument::ImageResource, QUrl(name), shown[i]);
    }
    QFont font(QStringLiteral("sans-serif"));
    font.setPixelSize(10);
    document.setDefaultFont(font);
    document.setDefaultStyleSheet(QStringLiteral("h1{font-size:16px}"));
    document.setHtml(page(sources));
    document.setTextWidth(width - 2 * margin);
    const int height =
        std::max(minHeight, static_cast<int>(std::ceil(document.size().height())) + 2 * margin);
    const VectorFile::Page paper{QSize(width, height), answer, QString()};
    return VectorFile::pdf(paper, [&document](QPainter& painter, const QRectF& area) {
        painter.scale(area.width() / width, area.width() / width);
        painter.translate(margin, margin);
        document.drawContents(&painter);
    });
}
