#include "lmSettingSearch.h"

#include <QVector>

#include <algorithm>

namespace lmSettingSearch {

QString normalized(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text)
        if (c.isLetterOrNumber())
            result += c.toLower();
    return result;
}

namespace {

// Whether some part of text is at most one edit away from needle: the
// approximate substring search of dynamic programming, one column at a time.
bool containsWithinOneEdit(const QString &needle, const QString &text)
{
    const int m = needle.size();
    QVector<int> column(m + 1);
    for (int i = 0; i <= m; ++i)
        column[i] = i;
    if (column[m] <= 1)
        return true;
    for (const QChar c : text) {
        int diagonal = column[0]; // a match may start anywhere in text
        for (int i = 1; i <= m; ++i) {
            const int above = column[i];
            column[i] = std::min({above + 1, column[i - 1] + 1, diagonal + (needle[i - 1] == c ? 0 : 1)});
            diagonal = above;
        }
        if (column[m] <= 1)
            return true;
    }
    return false;
}

} // namespace

int score(const QString &normalizedNeedle, const QString &text)
{
    if (normalizedNeedle.isEmpty())
        return 0;
    const QString haystack = normalized(text);
    if (haystack == normalizedNeedle)
        return 4;
    if (haystack.startsWith(normalizedNeedle))
        return 3;
    if (haystack.contains(normalizedNeedle))
        return 2;
    if (normalizedNeedle.size() >= 5 && containsWithinOneEdit(normalizedNeedle, haystack))
        return 1;
    return 0;
}

} // namespace lmSettingSearch
