// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/LetterCase.h"

#include <QTextBoundaryFinder>

namespace orvane {

namespace {

/// One character with the marks that stand on it, as a word begins with it.
QString capital(const QString& character, const QLocale& language)
{
    const char32_t first = character.toUcs4().first();
    const char32_t title = QChar::toTitleCase(first);
    const QString upper = language.toUpper(character);
    // Digraphs have a form for titles; ligatures fall apart into two letters.
    if (title != QChar::toUpper(first)) {
        const qsizetype length = QChar::requiresSurrogates(first) ? 2 : 1;
        return QString::fromUcs4(&title, 1) + character.mid(length);
    }
    const qsizetype length = upper.front().isHighSurrogate() ? 2 : 1;
    return upper.left(length) + language.toLower(upper.mid(length));
}

QString capitalized(const QString& text, const QLocale& language)
{
    QString result;
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    qsizetype done = 0;
    for (qsizetype from = 0; from >= 0 && from < text.size();) {
        const bool begins = words.boundaryReasons() & QTextBoundaryFinder::StartOfItem;
        const qsizetype next = words.toNextBoundary();
        const qsizetype to = next < 0 ? text.size() : next;
        if (begins) {
            characters.setPosition(from);
            const qsizetype rest = characters.toNextBoundary();
            result += text.mid(done, from - done) + capital(text.mid(from, rest - from), language) +
                      language.toLower(text.mid(from, to - from))
                          .mid(language.toLower(text.mid(from, rest - from)).size());
            done = to;
        }
        from = next;
    }
    return result + text.mid(done);
}

} // namespace

QString inCase(const QString& text, LetterCase letterCase, const QLocale& language)
{
    switch (letterCase) {
    case LetterCase::upper:
        return language.toUpper(text);
    case LetterCase::lower:
        return language.toLower(text);
    case LetterCase::capitalized:
        break;
    }
    return capitalized(text, language);
}

} // namespace orvane
