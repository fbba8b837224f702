// SPDX-License-Identifier: Apache-2.0
#include "PictureWriters.h"

#include "model/inputs/BuiltInProfiles.h"

QByteArray PictureWriters::textOf(const PictureNote& note)
{
    QStringList lines{PictureNote::software()};
    if (!note.command.isEmpty())
        lines.append(note.command);
    return (lines + note.profiles).join(QLatin1Char('\n')).toUtf8();
}

QByteArray PictureWriters::xmpOf(const PictureNote& note)
{
    return "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>"
           "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
           "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
           "<rdf:Description rdf:about=\"\" xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" "
           "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmp:CreatorTool=\"" +
           PictureNote::software().toHtmlEscaped().toUtf8() +
           "\"><dc:description><rdf:Alt><rdf:li xml:lang=\"x-default\">" +
           QString::fromUtf8(textOf(note)).toHtmlEscaped().toUtf8() +
           "</rdf:li></rdf:Alt></dc:description></rdf:Description></rdf:RDF></x:xmpmeta>"
           "<?xpacket end=\"w\"?>";
}

QByteArray PictureWriters::profile()
{
    return BuiltInProfiles::profile(QStringLiteral("sRGB"));
}

int PictureWriters::channelsOf(const QImage& picture)
{
    return picture.hasAlphaChannel() ? 4 : 3;
}

void PictureWriters::copyRow(const QImage& picture, int y, uchar* to)
{
    const auto* pixels = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    const bool alpha = picture.hasAlphaChannel();
    for (int x = 0; x < picture.width(); ++x) {
        *to++ = static_cast<uchar>(qRed(pixels[x]));
        *to++ = static_cast<uchar>(qGreen(pixels[x]));
        *to++ = static_cast<uchar>(qBlue(pixels[x]));
        if (alpha)
            *to++ = static_cast<uchar>(qAlpha(pixels[x]));
    }
}
