// SPDX-License-Identifier: Apache-2.0
#include "NearWord.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace {

constexpr qsizetype maxLength = 64;   // of words that are compared; the time is quadratic
constexpr qsizetype minEndLength = 2; // of a beginning or an end
constexpr int notNear = std::numeric_limits<int>::max();

QString lettersOf(const QString& word)
{
    QString letters;
    for (const QChar c : word.left(maxLength))
        if (c.isLetterOrNumber())
            letters.append(c.toLower());
    return letters;
}

/// The smallest number of edits that make @p b of @p a: optimal string alignment.
int editDistance(const QString& a, const QString& b)
{
    const auto width = static_cast<std::size_t>(b.size()) + 1;
    std::vector<int> beforeLast(width), last(width), row(width);
    for (std::size_t j = 0; j < width; ++j)
        row[j] = static_cast<int>(j);
    for (qsizetype i = 0; i < a.size(); ++i) {
        beforeLast = std::exchange(last, row);
        row[0] = static_cast<int>(i) + 1;
        for (qsizetype j = 0; j < b.size(); ++j) {
            const auto k = static_cast<std::size_t>(j) + 1;
            row[k] = std::min({last[k] + 1, row[k - 1] + 1, last[k - 1] + (a[i] == b[j] ? 0 : 1)});
            if (i > 0 && j > 0 && a[i] == b[j - 1] && a[i - 1] == b[j])
                row[k] = std::min(row[k], beforeLast[k - 2] + 1);
        }
    }
    return row.back();
}

bool isEndOf(const QString& part, const QString& whole)
{
    return part.size() >= minEndLength && (whole.startsWith(part) || whole.endsWith(part));
}

/// The number of edits, or @c notNear.
int distance(const QString& word, const QString& known)
{
    if (word.isEmpty() || known.isEmpty())
        return notNear;
    const int edits = editDistance(word, known);
    if (edits <= std::max<qsizetype>(1, word.size() / 3) && edits < known.size())
        return edits;
    const bool isLonger = isEndOf(known, word) && 2 * known.size() >= word.size();
    return isLonger || isEndOf(word, known) ? edits : notNear;
}

} // namespace

QString nearWord(const QString& word, const QStringList& known)
{
    const QString letters = lettersOf(word);
    QString nearest;
    int least = notNear;
    for (const QString& candidate : known) {
        const int edits = distance(letters, lettersOf(candidate));
        if (edits < least) {
            least = edits;
            nearest = candidate;
        }
    }
    return nearest;
}
