// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/Graphemes.h"

#include "text/store/TextStore.h"

#include <QTextBoundaryFinder>

namespace orvane {

namespace {

/// Below this nothing joins what stands before or behind it.
constexpr char16_t firstThatJoins = 0x300;
constexpr qsizetype usualWindow = 32;

bool mayBeJoined(QChar before, QChar after)
{
    return before.unicode() >= firstThatJoins || after.unicode() >= firstThatJoins;
}

/// Half of a flag's letter: flags are told apart only by counting from the first.
bool isRegionalHalf(QChar c)
{
    return c.unicode() == 0xd83c || (c.unicode() >= 0xdde6 && c.unicode() <= 0xddff);
}

/// Both boundaries round a position that is not at an end of the text.
TextRange graphemeAround(QStringView text, qsizetype position)
{
    for (qsizetype window = usualWindow;; window *= 4) {
        qsizetype from = std::max<qsizetype>(0, position - window);
        while (from > 0 && (isRegionalHalf(text[from]) || text[from].isLowSurrogate()))
            --from;
        const qsizetype to = std::min(text.size(), position + window);
        const QStringView part = text.sliced(from, to - from);
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, part.data(), part.size());
        finder.setPosition(position - from);
        if (finder.isAtBoundary())
            return {position, 0};
        const qsizetype end = finder.toNextBoundary();
        const qsizetype start = finder.toPreviousBoundary();
        const bool isWhole = (start > 0 || from == 0) && (end < part.size() || to == text.size());
        if (isWhole)
            return TextRange::between(from + std::max<qsizetype>(start, 0),
                                      end < 0 ? to : from + end);
    }
}

TextRange graphemeAround(const TextStore& store, qsizetype position)
{
    if (position <= 0 || position >= store.length() ||
        !mayBeJoined(store.characterAt(position - 1), store.characterAt(position)))
        return {position, 0};
    const TextRange paragraph = store.paragraphRange(position);
    if (position == paragraph.location)
        return {position, 0};
    for (qsizetype window = 4 * usualWindow;; window *= 4) {
        qsizetype from = std::max(paragraph.location, position - window);
        while (from > paragraph.location && isRegionalHalf(store.characterAt(from)))
            --from;
        const qsizetype to = std::min(paragraph.end(), position + window);
        TextRange found = graphemeAround(store.text(TextRange::between(from, to)), position - from);
        found.location += from;
        const bool isWhole =
            found.isEmpty() || ((found.location > from || from == paragraph.location) &&
                                (found.end() < to || to == paragraph.end()));
        if (isWhole)
            return found;
    }
}

} // namespace

bool isGraphemeBoundary(QStringView text, qsizetype position)
{
    return position <= 0 || position >= text.size() ||
           !mayBeJoined(text[position - 1], text[position]) ||
           graphemeAround(text, position).isEmpty();
}

qsizetype graphemeStart(QStringView text, qsizetype position)
{
    return isGraphemeBoundary(text, position) ? position : graphemeAround(text, position).location;
}

qsizetype graphemeEnd(QStringView text, qsizetype position)
{
    return isGraphemeBoundary(text, position) ? position : graphemeAround(text, position).end();
}

bool isGraphemeBoundary(const TextStore& store, qsizetype position)
{
    return graphemeAround(store, position).isEmpty();
}

TextSelection aroundWholeGraphemes(const TextStore& store, TextSelection selection)
{
    const TextRange at = graphemeAround(store, selection.position);
    if (selection.isEmpty())
        return TextSelection::caret(at.end());
    const TextRange anchor = graphemeAround(store, selection.anchor);
    if (selection.anchor < selection.position)
        return {anchor.location, at.end()};
    return {anchor.end(), at.location};
}

} // namespace orvane
