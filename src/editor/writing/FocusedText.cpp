// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/FocusedText.h"

#include "text/store/TextStore.h"

#include <QTextBoundaryFinder>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// No sentence is longer, to either side of the caret.
constexpr qsizetype longestHalf = 4000;

/// Whether the point before the blanks before `boundary` is that of a title or an initial, "Dr." or
/// "J.", which ends no sentence though a capital follows.
bool isAbbreviated(QStringView text, qsizetype boundary)
{
    static const QStringList titles{u"Mr"_s, u"Mrs"_s, u"Ms"_s,  u"Dr"_s,  u"Prof"_s,
                                    u"St"_s, u"Rev"_s, u"Mme"_s, u"Mlle"_s};
    const QStringView before = text.left(boundary).trimmed();
    if (!before.endsWith(u'.'))
        return false;
    qsizetype start = before.size() - 1;
    while (start > 0 && before[start - 1].isLetter())
        --start;
    const QStringView word = before.mid(start).chopped(1);
    const bool isInitial = word.size() == 1 && word[0].isUpper() && word != u"I";
    return isInitial || titles.contains(word);
}

TextRange focusedAt(const TextStore& store, qsizetype position, FocusGranularity granularity)
{
    const TextRange paragraph = store.paragraphRange(position);
    if (granularity == FocusGranularity::paragraph)
        return paragraph;
    const qsizetype from = std::max(paragraph.location, position - longestHalf);
    const qsizetype to = std::min(paragraph.end(), position + longestHalf);
    TextRange sentence = sentenceAt(store.text(TextRange::between(from, to)), position - from);
    sentence.location += from;
    return sentence;
}

} // namespace

TextRange sentenceAt(const QString& text, qsizetype position)
{
    if (text.isEmpty())
        return {};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Sentence, text);
    finder.setPosition(std::min(position, text.size() - 1));
    qsizetype start = finder.isAtBoundary() ? finder.position() : finder.toPreviousBoundary();
    while (start > 0 && isAbbreviated(text, start))
        start = finder.toPreviousBoundary();
    start = std::max<qsizetype>(start, 0);
    finder.setPosition(std::min(position, text.size() - 1));
    qsizetype end = finder.toNextBoundary();
    while (end > 0 && end < text.size() && isAbbreviated(text, end))
        end = finder.toNextBoundary();
    return TextRange::between(start, end < 0 ? text.size() : end);
}

std::optional<TextRange> focusedTextRange(const TextStore& store, TextSelection selection,
                                          FocusGranularity granularity)
{
    const TextRange selected = selection.range();
    if (selected.end() > store.length())
        return std::nullopt;
    const TextRange first = focusedAt(store, selected.location, granularity);
    if (selected.isEmpty())
        return first;
    const TextRange last = focusedAt(store, selected.end() - 1, granularity);
    return TextRange::between(first.location, last.end());
}

} // namespace orvane
