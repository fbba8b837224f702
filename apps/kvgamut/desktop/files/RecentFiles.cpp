// SPDX-License-Identifier: Apache-2.0
#include "RecentFiles.h"

#include "SettingsFile.h"
#include "model/inputs/FileName.h"

// One name on each line, with the bytes of the system, of which percent signs and control characters are
// written as %25, %0A...

namespace {

constexpr qsizetype maxCount = 9; // each has a shortcut with a digit

QString recentFileName()
{
    return QStringLiteral("recent-files");
}

QByteArray lineOf(const QString& file)
{
    QByteArray line;
    for (const char c : FileName::encoded(file)) {
        const bool isControl = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        if (isControl || c == '%')
            line += '%' + QByteArray(1, c).toHex().toUpper();
        else
            line += c;
    }
    return line + '\n';
}

/// The first lines of @p content.
QStringList filesOf(const QByteArray& content)
{
    QStringList files;
    for (qsizetype at = 0; at < content.size() && files.size() < maxCount;) {
        const qsizetype end = content.indexOf('\n', at);
        const QByteArray line = content.mid(at, end < 0 ? -1 : end - at);
        files.append(FileName::decoded(QByteArray::fromPercentEncoding(line)));
        at += line.size() + 1;
    }
    return files;
}

void write(const QStringList& files)
{
    QByteArray content;
    for (const QString& file : files)
        content += lineOf(file);
    SettingsFile::write(recentFileName(), content);
}

} // namespace

QStringList RecentFiles::list()
{
    QStringList files = filesOf(SettingsFile::read(recentFileName()));
    files.removeDuplicates();
    files.removeIf([](const QString& file) { return !FileName::exists(file); });
    return files;
}

void RecentFiles::add(const QString& file)
{
    QStringList files = list();
    files.removeAll(file);
    files.prepend(file);
    write(files.mid(0, maxCount));
}

void RecentFiles::clear()
{
    write({});
}
