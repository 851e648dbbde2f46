// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/SpelledWords.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace orvane {

namespace {

constexpr qsizetype longestWord = 64;

bool isWrittenWithoutSpaces(QChar::Script script)
{
    switch (script) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Thai:
    case QChar::Script_Lao:
    case QChar::Script_Khmer:
    case QChar::Script_Myanmar:
    case QChar::Script_Tibetan:
        return true;
    default:
        return false;
    }
}

bool isPartOfWord(QChar c)
{
    return c.isLetter() || c.isMark() || c == u'\'' || c == u'\u2019' || c == u'\u00ad' ||
           c == u'\u200c' || c == u'\u200d' || c == u'\u00b7';
}

bool isJudged(QStringView word)
{
    if (word.size() < 2 || word.size() > longestWord)
        return false;
    int letters = 0;
    bool hasLower = false;
    for (const QChar c : word) {
        if (!isPartOfWord(c) || isWrittenWithoutSpaces(c.script()))
            return false;
        letters += c.isLetter() ? 1 : 0;
        hasLower = hasLower || (c.isLetter() && !c.isUpper());
    }
    return letters > 1 && hasLower;
}

bool looksLikeAddress(QStringView token)
{
    return token.contains(u'@') || token.contains(u"://") ||
           token.startsWith(u"www.", Qt::CaseInsensitive) || token.contains(u'\\');
}

/// The whitespace-separated pieces of `text` that are addresses.
QList<TextRange> addresses(QStringView text)
{
    QList<TextRange> found;
    if (!looksLikeAddress(text) && !text.contains(u"www.", Qt::CaseInsensitive))
        return found;
    for (qsizetype from = 0; from < text.size();) {
        qsizetype to = from;
        while (to < text.size() && !text[to].isSpace())
            ++to;
        if (looksLikeAddress(text.sliced(from, to - from)))
            found.append(TextRange::between(from, to));
        from = to + 1;
    }
    return found;
}

} // namespace

QList<TextRange> spelledWords(QStringView text)
{
    QList<TextRange> words;
    const QList<TextRange> skipped = addresses(text);
    auto skip = skipped.begin();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text.data(), text.size());
    for (qsizetype from = 0; from >= 0 && from < text.size();) {
        qsizetype to = finder.toNextBoundary();
        if (to < 0)
            break;
        const TextRange word = TextRange::between(from, to);
        from = to;
        while (skip != skipped.end() && skip->end() <= word.location)
            ++skip;
        const bool isInAddress = skip != skipped.end() && skip->location < word.end();
        if (!isInAddress && isJudged(text.sliced(word.location, word.length)))
            words.append(word);
    }
    return words;
}

} // namespace orvane
